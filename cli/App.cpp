#include "cli/App.h"

#include "cli/CallTable.h"
#include "cli/CliError.h"
#include "cli/DemoScene.h"
#include "cli/FrameLoop.h"
#include "cli/Interrupt.h"
#include "cli/JobPlan.h"
#include "cli/ModuleLocator.h"
#include "cli/ParamListing.h"
#include "cli/ParamOverride.h"
#include "cli/Progress.h"
#include "cli/RenderSession.h"
#include "host/comp/Composition.h"
#include "host/pixels/Image.h"

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <memory>
#include <new>
#include <thread>
#include <unistd.h>

#ifndef ORBIVANE_BUILT_MODULE
#define ORBIVANE_BUILT_MODULE ""
#endif
#ifndef ORBIVANE_VERSION
#define ORBIVANE_VERSION "unknown"
#endif

namespace cli {

namespace {

constexpr const char* kProgram = "orbivane-render";

host::Scene readScene(const Options& options) {
    if (options.scene.empty()) return demoScene();
    try {
        return host::load_scene(options.scene);
    } catch (const host::SceneError& e) {
        throw badInput(e.what());
    }
}

SceneTiming timingOf(const host::Scene& scene) {
    SceneTiming t;
    t.frame_rate = scene.composition->frame_rate();
    t.duration = scene.composition->duration();
    t.has_frames = scene.render.has_frames;
    t.time = scene.render.time;
    t.first_frame = scene.render.first_frame;
    t.last_frame = scene.render.last_frame;
    t.bit_depth = scene.render.bit_depth;
    t.downsample = scene.render.downsample;
    return t;
}

std::string stemOf(const Options& options) {
    if (options.scene.empty()) return "orbivane-demo";
    return std::filesystem::path(options.scene).stem().string();
}

std::string moduleVersion(const host::Host& host) {
    const A_u_long v = host.module_version();
    static const char* const stages[] = {"development", "alpha", "beta", "release"};
    return std::to_string(PF_Version_VERS(v)) + "." + std::to_string(PF_Version_SUBVERS(v)) + "." +
           std::to_string(PF_Version_BUGFIX(v)) + " (" + stages[PF_Version_STAGE(v) & 3] + ", build " +
           std::to_string(PF_Version_BUILD(v)) + ")";
}

host::RGBA backgroundOf(const host::Composition& comp) {
    const host::Color& c = comp.background();
    return host::RGBA{float(c.red), float(c.green), float(c.blue), 1.0f};
}

// Encoder settings; pixel conversions before encoding use as many threads as the render.
host::SaveOptions encodingOf(const Options& options) {
    host::SaveOptions encoding;
    encoding.png_level = options.png_level;
    encoding.png_up_filter = options.png_up_filter;
    encoding.exr_compression = options.exr_compression;
    encoding.threads = options.threads > 0 ? options.threads : static_cast<int>(std::thread::hardware_concurrency());
    return encoding;
}

// Renders and writes the planned frames, then says what was written (nothing on failure).
void renderAndReport(RenderSession& session, const host::Composition& comp, const JobPlan& plan,
                     const Options& options) {
    const bool terminal = isatty(fileno(stderr)) != 0;
    Progress progress(plan.jobs.size(), !options.quiet && (terminal || options.progress));
    FrameStyle style;
    style.bit_depth = plan.bit_depth;
    style.encoding = encodingOf(options);
    if (options.flatten || options.scene.empty()) style.flatten_over = backgroundOf(comp);
    // Until now a signal may end the program as usual: nothing has been written yet.
    installInterruptHandlers();
    // One thread asked for means one: the write then follows each render.
    renderFrames(session, plan, style, options.threads != 1, progress);
    progress.clear();
    if (options.quiet) return;
    if (plan.jobs.size() == 1)
        std::cout << kProgram << ": wrote " << plan.jobs.front().path << "\n";
    else
        std::cout << kProgram << ": wrote " << plan.jobs.size() << " frames, " << plan.jobs.front().path << " .. "
                  << plan.jobs.back().path << "\n";
    std::cout << kProgram << ": " << timingSummary(progress.times()) << "\n";
}

int run(const Options& options, const char* argv0) {
    ModuleSearch search;
    search.explicit_path = options.module;
    if (const char* env = std::getenv("ORBIVANE_MODULE")) search.environment = env;
    search.program_dir = programDir(argv0);
    search.built_path = ORBIVANE_BUILT_MODULE;
    const std::string module = locateModule(search);

    host::Scene scene = options.version ? demoScene() : readScene(options);
    applyOverrides(options.overrides, scene.parameters);
    const bool introspect = options.version || options.about || options.list_params;
    JobPlan plan;
    if (!introspect) plan = planJobs(timingOf(scene), options, stemOf(options));

    const std::shared_ptr<host::Composition> comp = scene.composition;
    const double list_time = options.time.value_or(scene.render.time);
    RenderSession session(std::move(scene), module, options.threads);
    if (options.version) {
        std::cout << kProgram << " " << ORBIVANE_VERSION << "\n"
                  << "effect " << session.host().effect_name() << " " << moduleVersion(session.host()) << "\n"
                  << "module " << module << "\n";
        return kExitOk;
    }
    if (options.about) {
        const PF_Err err = session.host().about();
        if (err != PF_Err_NONE) throw CliError(kExitModuleFailed, "the effect's about answer failed: " + describeError(err));
        std::cout << session.host().return_msg() << "\n";
        return kExitOk;
    }
    if (options.list_params) {
        std::cout << listParams(session.host(), list_time);
        return kExitOk;
    }
    renderAndReport(session, *comp, plan, options);
    if (options.host_calls) std::cout << formatCallTable(session.calls(), plan.jobs.size());
    return kExitOk;
}

}  // namespace

int runCommandLine(int argc, const char* const* argv) {
    ParsedCommandLine parsed = parseCommandLine(argc, argv);
    if (parsed.finished) return parsed.exit_code;
    try {
        return run(parsed.options, argc > 0 ? argv[0] : nullptr);
    } catch (const CliError& e) {
        std::cerr << kProgram << ": " << e.what() << "\n";
        return e.code();
    } catch (const host::SceneError& e) {
        std::cerr << kProgram << ": " << e.what() << "\n";
        return kExitBadInput;
    } catch (const std::bad_alloc& e) {
        // An image that does not fit says which; any other allocation at least says what ran out.
        const bool named = dynamic_cast<const host::ImageAllocationError*>(&e) != nullptr;
        std::cerr << kProgram << ": " << (named ? e.what() : "out of memory: an allocation was refused") << "\n";
        return kExitRenderFailed;
    } catch (const std::exception& e) {
        std::cerr << kProgram << ": " << e.what() << "\n";
        return kExitRenderFailed;
    }
}

}  // namespace cli
