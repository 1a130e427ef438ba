#pragma once
// Turns the scene's render settings and the command line into the list of frames to render and
// the file each one is written to.

#include "cli/Options.h"

#include <string>
#include <vector>

namespace cli {

struct FrameJob {
    int frame = 0;        // frame number (composition time × frame rate, rounded)
    double seconds = 0;   // composition time rendered
    std::string path;     // output file
};

struct JobPlan {
    std::vector<FrameJob> jobs;
    int bit_depth = 8;
    int downsample = 1;
};

// What the plan needs to know about the scene.
struct SceneTiming {
    double frame_rate = 25;
    double duration = 1;          // seconds
    bool has_frames = false;      // the scene names a frame range rather than one time
    double time = 0;              // its single time, seconds
    int first_frame = 0;
    int last_frame = 0;
    int bit_depth = 8;
    int downsample = 1;
};

// True when `pattern` holds a run of '#' standing for the frame number.
bool hasFramePattern(const std::string& pattern);

// Replaces the last run of '#' by the frame number, zero-padded to the run's length
// ("out.####.png", 7 -> "out.0007.png"); a longer number is written in full.
std::string expandFramePattern(const std::string& pattern, int frame);

// The output name used when none is given: `stem`.png (or .exr at 32 bits), with ".####"
// before the extension when several frames are rendered.
std::string defaultOutputName(const std::string& stem, int bit_depth, bool several_frames);

// Frames to render and their files. Throws CliError (bad input) for frames outside the
// composition, several frames without a #### pattern, or an extension that does not fit the
// bit depth.
JobPlan planJobs(const SceneTiming& scene, const Options& options, const std::string& default_stem);

}  // namespace cli
