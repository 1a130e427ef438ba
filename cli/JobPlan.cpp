#include "cli/JobPlan.h"

#include "cli/CliError.h"
#include "host/comp/Composition.h"

#include <cctype>
#include <climits>
#include <cmath>
#include <sstream>

namespace cli {

namespace {

std::string lowerExtension(const std::string& path) {
    const std::size_t slash = path.find_last_of('/');
    const std::size_t dot = path.find_last_of('.');
    if (dot == std::string::npos || (slash != std::string::npos && dot < slash)) return "";
    std::string ext = path.substr(dot);
    for (char& c : ext) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return ext;
}

void checkExtension(const std::string& path, int bit_depth) {
    const std::string ext = lowerExtension(path);
    if (bit_depth == 32 && ext != ".exr")
        throw badInput("output \"" + path + "\": 32-bit frames are written as OpenEXR; name the file .exr");
    if (bit_depth != 32 && ext != ".png")
        throw badInput("output \"" + path + "\": " + std::to_string(bit_depth) +
                       "-bit frames are written as PNG; name the file .png (or use --bit-depth 32 for .exr)");
}

// Last frame that starts inside the composition, counted as the scene reader counts it.
int lastFrameOf(const SceneTiming& scene) { return host::lastFrameOf(scene.duration, scene.frame_rate); }

// The frame shown at `seconds`, saturated rather than overflowing the int.
int frameAt(double seconds, double frame_rate) {
    const double frame = std::round(seconds * frame_rate);
    if (!(frame > double(INT_MIN))) return frame > 0 ? INT_MAX : INT_MIN;  // also NaN
    return frame >= double(INT_MAX) ? INT_MAX : static_cast<int>(frame);
}

std::vector<FrameJob> framesOf(int first, int last, double frame_rate) {
    std::vector<FrameJob> jobs;
    for (int f = first; f <= last; ++f) {
        FrameJob job;
        job.frame = f;
        job.seconds = f / frame_rate;
        jobs.push_back(job);
    }
    return jobs;
}

std::vector<FrameJob> selectFrames(const SceneTiming& scene, const Options& options) {
    const int last_frame = lastFrameOf(scene);
    if (options.time) {
        const double t = *options.time;
        if (!(t >= 0 && t < scene.duration)) {
            std::ostringstream msg;
            msg << "--time " << t << ": outside the composition (0 to " << scene.duration << " seconds)";
            throw badInput(msg.str());
        }
        return {FrameJob{frameAt(t, scene.frame_rate), t, ""}};
    }
    FrameRange range;
    if (options.frames) {
        range = *options.frames;
    } else if (scene.has_frames) {
        range = FrameRange{scene.first_frame, scene.last_frame};
    } else {
        return {FrameJob{frameAt(scene.time, scene.frame_rate), scene.time, ""}};
    }
    if (range.last > last_frame) {
        throw badInput("frame " + std::to_string(range.last) + " is past the end of the composition (frames 0-" +
                       std::to_string(last_frame) + ")");
    }
    return framesOf(range.first, range.last, scene.frame_rate);
}

}  // namespace

bool hasFramePattern(const std::string& pattern) { return pattern.find('#') != std::string::npos; }

std::string expandFramePattern(const std::string& pattern, int frame) {
    const std::size_t end = pattern.find_last_of('#');
    if (end == std::string::npos) return pattern;
    std::size_t begin = end;
    while (begin > 0 && pattern[begin - 1] == '#') --begin;
    const std::size_t width = end - begin + 1;
    std::string number = std::to_string(frame);
    if (number.size() < width) number.insert(0, width - number.size(), '0');
    return pattern.substr(0, begin) + number + pattern.substr(end + 1);
}

std::string defaultOutputName(const std::string& stem, int bit_depth, bool several_frames) {
    return stem + (several_frames ? ".####" : "") + (bit_depth == 32 ? ".exr" : ".png");
}

JobPlan planJobs(const SceneTiming& scene, const Options& options, const std::string& default_stem) {
    JobPlan plan;
    plan.bit_depth = options.bit_depth.value_or(scene.bit_depth);
    plan.downsample = options.downsample.value_or(scene.downsample);
    plan.jobs = selectFrames(scene, options);

    const bool several = plan.jobs.size() > 1;
    const std::string output =
        options.output.empty() ? defaultOutputName(default_stem, plan.bit_depth, several) : options.output;
    if (several && !hasFramePattern(output)) {
        throw badInput("output \"" + output + "\": " + std::to_string(plan.jobs.size()) +
                       " frames need a frame number pattern in the name, e.g. out.####.png");
    }
    checkExtension(output, plan.bit_depth);
    for (FrameJob& job : plan.jobs) job.path = expandFramePattern(output, job.frame);
    return plan;
}

}  // namespace cli
