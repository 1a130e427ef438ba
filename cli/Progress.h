#pragma once
// Progress and timing of a render: a one-line progress display on a terminal, and the
// per-frame time summary printed at the end.

#include <chrono>
#include <cstdio>
#include <string>
#include <vector>

namespace cli {

struct FrameTime {
    int frame = 0;
    // Wall-clock time from the previous frame's completion (or the start) to this one's: with
    // writing overlapping the next render, the times add up to the whole run.
    double seconds = 0;
};

// "3 frames in 1.50 s: 0.50 s per frame (min 0.40 s frame 2, max 0.60 s frame 1)"; for one
// frame "1 frame in 0.50 s". Empty for no frames.
std::string timingSummary(const std::vector<FrameTime>& times);

// "[ 3/48]   6%  frame 2  elapsed 0:04  left 1:02": the line shown before frame `done`+1.
std::string progressLine(std::size_t done, std::size_t total, int next_frame, double elapsed_seconds);

// "1:02", "12:00:05" for a number of seconds.
std::string clockTime(double seconds);

class Progress {
public:
    // `live`: draw the progress line (a terminal, and not --quiet); `stream` receives it.
    Progress(std::size_t total_frames, bool live, std::FILE* stream = stderr);

    // A frame starts rendering (redraws the line); a frame is complete under its final name.
    void beginFrame(int frame);
    void endFrame(int frame);
    // Clears the progress line (call before printing anything else).
    void clear();

    const std::vector<FrameTime>& times() const { return times_; }

private:
    using Clock = std::chrono::steady_clock;
    double since(Clock::time_point t) const;

    std::size_t total_;
    bool live_;
    std::FILE* stream_;
    bool line_shown_ = false;
    Clock::time_point start_;
    Clock::time_point last_done_;
    std::vector<FrameTime> times_;
};

}  // namespace cli
