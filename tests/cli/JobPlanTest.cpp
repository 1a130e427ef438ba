#include <gtest/gtest.h>

#include <sstream>

#include "cli/CliError.h"
#include "cli/JobPlan.h"

namespace {

using cli::CliError;
using cli::JobPlan;
using cli::Options;
using cli::SceneTiming;

// 10 fps for 2 seconds: frames 0-19; the scene itself asks for one frame at 0.5 s.
SceneTiming tenFpsTwoSeconds() {
    SceneTiming t;
    t.frame_rate = 10;
    t.duration = 2;
    t.time = 0.5;
    return t;
}

// The last run of hashes becomes the zero-padded frame number; default names follow the bit
// depth and the frame count.
TEST(FramePattern, ExpandsTheLastRunOfHashesAndNamesByDepth) {
    const std::pair<std::string, std::string> expansions[] = {
        {cli::expandFramePattern("out.####.png", 7), "out.0007.png"},
        {cli::expandFramePattern("out.#.png", 7), "out.7.png"},
        {cli::expandFramePattern("out.##.png", 12345), "out.12345.png"},  // never truncated
        {cli::expandFramePattern("take#2/f.###.png", 4), "take#2/f.004.png"},
        {cli::expandFramePattern("still.png", 4), "still.png"},
        {cli::defaultOutputName("orbit", 8, false), "orbit.png"},
        {cli::defaultOutputName("orbit", 16, true), "orbit.####.png"},
        {cli::defaultOutputName("orbit", 32, false), "orbit.exr"}};
    for (const auto& [got, expected] : expansions) EXPECT_EQ(got, expected);
    EXPECT_TRUE(cli::hasFramePattern("a.#.png"));
    EXPECT_FALSE(cli::hasFramePattern("a.png"));
}

// The scene's own frames 18-19 at 16 bits, half size.
void ownRange(SceneTiming& t) {
    t.has_frames = true, t.first_frame = 18, t.last_frame = 19, t.bit_depth = 16, t.downsample = 2;
}
void endless(SceneTiming& t) { t.frame_rate = 1e7, t.duration = 1e9; }

// The plan as "frame@seconds:path ... depth/downsample", or "refused: message".
std::string planned(const SceneTiming& timing, const Options& options) {
    std::ostringstream out;
    try {
        const JobPlan plan = cli::planJobs(timing, options, "orbit");
        for (const cli::FrameJob& job : plan.jobs) out << job.frame << "@" << job.seconds << ":" << job.path << " ";
        out << plan.bit_depth << "/" << plan.downsample;
    } catch (const CliError& e) {
        out << (e.code() == cli::kExitBadInput ? "refused: " : "wrong status: ") << e.what();
    }
    return out.str();
}

TEST(JobPlanning, FramesTimesNamesAndSettings) {
    struct Row {
        const char* what;
        void (*edit)(SceneTiming&, Options&);
        const char* expected;  // the plan, or the start of a refusal and a part of its message
    };
    const Row rows[] = {
        {"the scene's time numbers its frame", [](SceneTiming&, Options&) {}, "5@0.5:orbit.png 8/1"},
        {"a range from the command line replaces the scene's choice",
         [](SceneTiming&, Options& o) { o.frames = cli::FrameRange{3, 5}, o.output = "r/f.####.png"; },
         "3@0.3:r/f.0003.png 4@0.4:r/f.0004.png 5@0.5:r/f.0005.png 8/1"},
        {"the scene's own range and settings",
         [](SceneTiming& t, Options&) { ownRange(t); },
         "18@1.8:orbit.0018.png 19@1.9:orbit.0019.png 16/2"},
        {"the scene's range with depth and downsample overridden",
         [](SceneTiming& t, Options& o) { ownRange(t), o.bit_depth = 32, o.downsample = 1; },
         "18@1.8:orbit.0018.exr 19@1.9:orbit.0019.exr 32/1"},
        {"--time, 12.5 rounding away from zero", [](SceneTiming&, Options& o) { o.time = 1.25; },
         "13@1.25:orbit.png 8/1"},
        {"frame 20 starts at the end",
         [](SceneTiming&, Options& o) { o.frames = cli::FrameRange{19, 20}, o.output = "f.####.png"; },
         "refused: frame 20 is past the end of the composition (frames 0-19)"},
        {"time at the end", [](SceneTiming&, Options& o) { o.time = 2.0; }, "refused: "},
        {"negative time", [](SceneTiming&, Options& o) { o.time = -0.1; }, "refused: "},
        {"a partial last frame is kept",
         [](SceneTiming& t, Options& o) { t.duration = 1.05, o.frames = cli::FrameRange{10, 10}; },
         "10@1:orbit.png 8/1"},
        {"after a partial last frame",
         [](SceneTiming& t, Options& o) { t.duration = 1.05, o.frames = cli::FrameRange{11, 11}; },
         "refused: "},
        // The sanitizer build checks float-to-int conversions: beyond an int, frame numbers saturate.
        {"frames of an endless composition",
         [](SceneTiming& t, Options& o) { endless(t), o.frames = cli::FrameRange{5, 5}; },
         "5@5e-07:orbit.png 8/1"},
        {"a time beyond an int of frames", [](SceneTiming& t, Options& o) { endless(t), o.time = 5e8; },
         "2147483647@5e+08:orbit.png 8/1"},
        {"several frames need a pattern",
         [](SceneTiming&, Options& o) { o.frames = cli::FrameRange{0, 1}, o.output = "still.png"; },
         "refused: output \"still.png\": 2 frames need a frame number pattern"},
        {"one frame of a range takes a plain name",
         [](SceneTiming&, Options& o) { o.frames = cli::FrameRange{1, 1}, o.output = "still.png"; },
         "1@0.1:still.png 8/1"},
        {"EXR at 8 bits", [](SceneTiming&, Options& o) { o.output = "a.exr"; }, "refused: "},
        {"EXR at 32 bits", [](SceneTiming&, Options& o) { o.output = "a.exr", o.bit_depth = 32; }, "5@0.5:a.exr 32/1"},
        {"PNG at 32 bits", [](SceneTiming&, Options& o) { o.output = "a.png", o.bit_depth = 32; }, "refused: "},
        {"upper-case PNG", [](SceneTiming&, Options& o) { o.output = "a.PNG", o.bit_depth = 16; }, "5@0.5:a.PNG 16/1"},
        {"the dot belongs to the folder",
         [](SceneTiming&, Options& o) { o.output = "dir.v2/frame", o.bit_depth = 16; },
         "refused: "},
    };
    for (const Row& row : rows) {
        SceneTiming timing = tenFpsTwoSeconds();
        Options options;
        row.edit(timing, options);
        const std::string plan = planned(timing, options);
        EXPECT_EQ(plan.rfind(row.expected, 0), 0u) << row.what << ": " << plan;
    }
}

}  // namespace
