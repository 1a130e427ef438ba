#pragma once
// What the user asked for on the command line, before any file is read.

#include "host/files/InputFiles.h"

#include <optional>
#include <string>
#include <vector>

namespace cli {

// An inclusive range of frame numbers.
struct FrameRange {
    int first = 0;
    int last = 0;
};

struct Options {
    std::string scene;   // scene file; empty renders the built-in demo
    std::string output;  // output file or pattern with #### for the frame number; empty: default

    std::optional<FrameRange> frames;  // --frames A-B or --frame N (replaces the scene's choice)
    std::optional<double> time;        // --time SECONDS (one frame at that time)
    std::optional<int> bit_depth;      // 8, 16 or 32
    std::optional<int> downsample;     // 1 full resolution, 2 half, ...
    int threads = 0;                   // render threads; 0: all cores
    std::vector<std::string> overrides;  // "Name=value", applied after the scene's parameters

    // Largest input image or composition (--max-image-size, --max-image-memory); put in force by
    // parseCommandLine, before any input is read.
    host::InputLimits limits;

    std::string module;  // effect module to load; empty: search the usual places
    bool flatten = false;  // composite over the composition's background instead of alpha

    bool list_params = false;
    bool about = false;
    bool version = false;
    bool quiet = false;
    bool progress = false;  // force the progress line even when stderr is not a terminal
    bool host_calls = false;  // print the host functions the effect called while rendering

    // Encoder settings: --png-compression fast (zlib level 1, Up filter), small (level 9, the
    // best filter per row) or a zlib level 0-9 (best filter per row); --exr-compression.
    int png_level = 1;
    bool png_up_filter = true;
    std::string exr_compression = "rle";
};

// Applies --png-compression's value; throws CliError (bad input) for anything else.
void setPngCompression(const std::string& text, Options& options);

// Parses "12" or "0-47" into a range; throws CliError (bad input) otherwise.
FrameRange parseFrameRange(const std::string& text);

// The result of reading the command line: either options to run with, or a finished run
// (help or version text printed, or a usage error reported) with its exit status.
struct ParsedCommandLine {
    Options options;
    bool finished = false;
    int exit_code = 0;
};

// Prints help, the version and usage errors itself (help and version to stdout, errors to
// stderr).
ParsedCommandLine parseCommandLine(int argc, const char* const* argv);

}  // namespace cli
