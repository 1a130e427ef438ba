#include "cli/Progress.h"

#include <algorithm>
#include <cmath>
#include <sstream>

namespace cli {

namespace {

std::string seconds2(double s) {
    char buffer[32];
    std::snprintf(buffer, sizeof buffer, "%.2f s", s);
    return buffer;
}

}  // namespace

std::string clockTime(double seconds) {
    const long total = std::lround(std::max(0.0, seconds));
    const long h = total / 3600, m = (total / 60) % 60, s = total % 60;
    char buffer[32];
    if (h > 0)
        std::snprintf(buffer, sizeof buffer, "%ld:%02ld:%02ld", h, m, s);
    else
        std::snprintf(buffer, sizeof buffer, "%ld:%02ld", m, s);
    return buffer;
}

std::string timingSummary(const std::vector<FrameTime>& times) {
    if (times.empty()) return "";
    double total = 0;
    for (const FrameTime& t : times) total += t.seconds;
    std::ostringstream out;
    if (times.size() == 1) {
        out << "1 frame in " << seconds2(total);
        return out.str();
    }
    auto by_time = [](const FrameTime& a, const FrameTime& b) { return a.seconds < b.seconds; };
    const FrameTime& fastest = *std::min_element(times.begin(), times.end(), by_time);
    const FrameTime& slowest = *std::max_element(times.begin(), times.end(), by_time);
    out << times.size() << " frames in " << seconds2(total) << ": " << seconds2(total / times.size())
        << " per frame (min " << seconds2(fastest.seconds) << " frame " << fastest.frame << ", max "
        << seconds2(slowest.seconds) << " frame " << slowest.frame << ")";
    return out.str();
}

std::string progressLine(std::size_t done, std::size_t total, int next_frame, double elapsed_seconds) {
    const int width = static_cast<int>(std::to_string(total).size());
    char head[64];
    std::snprintf(head, sizeof head, "[%*zu/%zu] %3d%%", width, done, total,
                  total ? static_cast<int>(100 * done / total) : 100);
    std::string line = std::string(head) + "  frame " + std::to_string(next_frame) + "  elapsed " +
                       clockTime(elapsed_seconds);
    if (done > 0) line += "  left " + clockTime(elapsed_seconds / done * (total - done));
    return line;
}

Progress::Progress(std::size_t total_frames, bool live, std::FILE* stream)
    : total_(total_frames), live_(live), stream_(stream), start_(Clock::now()), last_done_(start_) {}

double Progress::since(Clock::time_point t) const {
    return std::chrono::duration<double>(Clock::now() - t).count();
}

void Progress::beginFrame(int frame) {
    if (!live_) return;
    std::fprintf(stream_, "\r\033[K%s", progressLine(times_.size(), total_, frame, since(start_)).c_str());
    std::fflush(stream_);
    line_shown_ = true;
}

void Progress::endFrame(int frame) {
    times_.push_back(FrameTime{frame, since(last_done_)});
    last_done_ = Clock::now();
}

void Progress::clear() {
    if (!line_shown_) return;
    std::fprintf(stream_, "\r\033[K");
    std::fflush(stream_);
    line_shown_ = false;
}

}  // namespace cli
