#include "cli/Options.h"

#include "cli/CliError.h"

#include <CLI/CLI.hpp>

#include <cerrno>
#include <climits>
#include <cstdlib>
#include <iostream>

namespace cli {

namespace {

// A non-negative whole number written with digits only; false for anything else.
bool parseFrameNumber(const std::string& text, int& out) {
    if (text.empty() || text.size() > 9) return false;
    for (char c : text)
        if (c < '0' || c > '9') return false;
    out = std::atoi(text.c_str());
    return true;
}

constexpr double kGiB = 1024.0 * 1024.0 * 1024.0;

const char* kDescription =
    "orbivane-render: renders frames of the Orbivane effect through the emulated After Effects\n"
    "host. Without a scene file it renders a built-in demo to orbivane-demo.png.";

const char* kExamples =
    "Examples:\n"
    "  orbivane-render                                   built-in demo -> orbivane-demo.png\n"
    "  orbivane-render examples/opening.json -o open.png\n"
    "  orbivane-render examples/opening.json --frames 0-47 -o out/open.####.png\n"
    "  orbivane-render scene.json --frame 12 --bit-depth 32 -o frame.exr\n"
    "  orbivane-render scene.json --set \"Open Parameter=0.5\" --set \"Render Side=Outside\"\n"
    "  orbivane-render scene.json --downsample 2 --threads 4 -o proxy.png\n"
    "  orbivane-render --list-params examples/opening.json\n"
    "  orbivane-render examples/lights-and-shadows.json --host-calls\n"
    "\n"
    "Exit status: 0 done, 2 bad input (arguments, scene, values, files), 3 the effect module\n"
    "could not be loaded, 4 the effect failed to render, 5 a picture could not be written,\n"
    "130 / 143 interrupted by SIGINT / SIGTERM.";

}  // namespace

FrameRange parseFrameRange(const std::string& text) {
    FrameRange range;
    const std::size_t dash = text.find('-');
    bool ok;
    if (dash == std::string::npos) {
        ok = parseFrameNumber(text, range.first);
        range.last = range.first;
    } else {
        ok = parseFrameNumber(text.substr(0, dash), range.first) &&
             parseFrameNumber(text.substr(dash + 1), range.last);
    }
    if (!ok) throw badInput("frames \"" + text + "\": expected a frame number N or a range FIRST-LAST");
    if (range.last < range.first)
        throw badInput("frames \"" + text + "\": the last frame comes before the first");
    return range;
}

void setPngCompression(const std::string& text, Options& options) {
    if (text == "fast" || text == "small") {
        options.png_level = text == "fast" ? 1 : 9;
        options.png_up_filter = text == "fast";
    } else if (text.size() == 1 && text[0] >= '0' && text[0] <= '9') {
        options.png_level = text[0] - '0';
        options.png_up_filter = false;
    } else {
        throw badInput("--png-compression \"" + text + "\": expected fast, small or a level 0-9");
    }
}

namespace {

// What CLI11 fills in before it is checked and copied into Options, with the options whose
// presence matters.
struct RawOptions {
    std::string frames, frame, png_compression;
    double time = 0;
    int bit_depth = 0, downsample = 0;
    long long max_extent = 0;
    double max_gib = 0;
    CLI::Option* output = nullptr;
    CLI::Option* frames_opt = nullptr;
    CLI::Option* frame_opt = nullptr;
    CLI::Option* time_opt = nullptr;
    CLI::Option* depth_opt = nullptr;
    CLI::Option* downsample_opt = nullptr;
    CLI::Option* png_opt = nullptr;
};

// The scene, the output and what to render of it.
void addRenderOptions(CLI::App& app, Options& o, RawOptions& raw) {
    app.add_option("scene", o.scene, "Scene file (JSON, see docs/scene-format.md); none: the demo");
    raw.output = app.add_option("-o,--output", o.output,
                   "Output file; #### is replaced by the zero-padded frame number (needed for\n"
                   "several frames). .png for 8/16 bits, .exr for 32 bits");
    raw.frames_opt = app.add_option("--frames", raw.frames, "Frame range FIRST-LAST (inclusive), e.g. 0-47");
    raw.frame_opt = app.add_option("--frame", raw.frame, "One frame number");
    raw.time_opt = app.add_option("--time", raw.time, "One frame at this composition time (seconds)");
    raw.frames_opt->excludes(raw.frame_opt)->excludes(raw.time_opt);
    raw.frame_opt->excludes(raw.time_opt);
    raw.depth_opt = app.add_option("-b,--bit-depth", raw.bit_depth, "Bits per channel: 8, 16 or 32")
                        ->check(CLI::IsMember({8, 16, 32}));
    raw.downsample_opt = app.add_option("-d,--downsample", raw.downsample, "Proxy factor: 1 full, 2 half, ...")
                             ->check(CLI::Range(1, 64));
    app.add_option("-j,--threads", o.threads, "Render threads (0: all cores)")->check(CLI::Range(0, 256));
    app.add_option("-s,--set", o.overrides,
                   "Parameter override \"Name=value\" (repeatable): numbers, on/off, popup text,\n"
                   "layer name or none, colours r,g,b (0-255), points x,y (pixels)");
}

void addInputLimitOptions(CLI::App& app, const Options& o, RawOptions& raw) {
    raw.max_extent = o.limits.max_extent;
    raw.max_gib = double(o.limits.max_bytes) / kGiB;
    app.add_option("--max-image-size", raw.max_extent,
                   "Largest width or height of an input image or composition, pixels (default 30000)")
        ->check(CLI::Range(1LL, 1LL << 30));
    app.add_option("--max-image-memory", raw.max_gib,
                   "Memory one input image may take as float RGBA, GiB (default 4)")
        ->check(CLI::Range(1.0 / 1024, 1024.0 * 1024));
}

// The module to load and the switches for what to do with it and what to print.
void addRunOptions(CLI::App& app, Options& o) {
    app.add_option("-m,--module", o.module, "Effect module (default: $ORBIVANE_MODULE, then next to\n"
                                             "this program, then the build's Orbivane.so)");
    app.add_flag("--flatten", o.flatten, "Composite over the composition's background colour");
    app.add_flag("--list-params", o.list_params, "List the effect's parameters and exit");
    app.add_flag("--about", o.about, "Show the effect's about text and exit");
    app.add_flag("-V,--version", o.version, "Show the program's and the effect's version and exit");
    app.add_flag("-q,--quiet", o.quiet, "Print nothing but errors");
    app.add_flag("--progress", o.progress, "Show the progress line even when not on a terminal");
    app.add_flag("--host-calls", o.host_calls,
                 "After rendering, list the host functions the effect called per smart command,\n"
                 "marking those After Effects refuses on render threads");
}

void addEncoderOptions(CLI::App& app, Options& o, RawOptions& raw) {
    raw.png_opt = app.add_option("--png-compression", raw.png_compression,
                                 "PNG encoding: fast (default), small (smallest files, slowest)\n"
                                 "or a zlib level 0-9");
    app.add_option("--exr-compression", o.exr_compression, "OpenEXR compression, all lossless: rle\n"
                                                           "(default, fastest), none, zips, zip, piz")
        ->check(CLI::IsMember({"none", "rle", "zips", "zip", "piz"}));
}

// Checks what was given and copies it into `o`; the input limits take effect here, before any
// input is read. Throws CliError for a bad value.
void applyRawOptions(const RawOptions& raw, Options& o) {
    if (*raw.frames_opt) o.frames = parseFrameRange(raw.frames);
    if (*raw.frame_opt) {
        o.frames = parseFrameRange(raw.frame);
        if (o.frames->first != o.frames->last)
            throw badInput("--frame takes one frame number; use --frames for a range");
    }
    if (*raw.time_opt) o.time = raw.time;
    if (*raw.depth_opt) o.bit_depth = raw.bit_depth;
    if (*raw.downsample_opt) o.downsample = raw.downsample;
    if (*raw.png_opt) setPngCompression(raw.png_compression, o);
    if (*raw.output && o.output.empty()) throw badInput("-o: the output file name is empty");
    o.limits.max_extent = raw.max_extent;
    o.limits.max_bytes = static_cast<long long>(raw.max_gib * kGiB);
    host::setInputLimits(o.limits);
}

}  // namespace

ParsedCommandLine parseCommandLine(int argc, const char* const* argv) {
    ParsedCommandLine parsed;
    Options& o = parsed.options;
    RawOptions raw;
    CLI::App app(kDescription, "orbivane-render");
    app.footer(kExamples);
    addRenderOptions(app, o, raw);
    addInputLimitOptions(app, o, raw);
    addRunOptions(app, o);
    addEncoderOptions(app, o, raw);

    try {
        app.parse(argc, argv);
        applyRawOptions(raw, o);
    } catch (const CLI::CallForHelp&) {
        std::cout << app.help();
        parsed.finished = true;
        parsed.exit_code = kExitOk;
    } catch (const CLI::ParseError& e) {
        std::cerr << "orbivane-render: " << e.what() << "\n(see orbivane-render --help)\n";
        parsed.finished = true;
        parsed.exit_code = kExitBadInput;
    } catch (const CliError& e) {
        std::cerr << "orbivane-render: " << e.what() << "\n";
        parsed.finished = true;
        parsed.exit_code = e.code();
    }
    return parsed;
}

}  // namespace cli
