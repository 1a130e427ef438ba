#include "cli/RenderSession.h"

#include "cli/CliError.h"
#include "cli/SceneParams.h"

namespace cli {

namespace {

host::HostOptions sessionOptions(int threads) {
    host::HostOptions options;
    options.threads = threads;
    options.poison = false;  // no debugging patterns in pictures meant to be looked at
    return options;
}

// Copies `world` (placed at `rect` in layer pixels) into `frame`.
void place(const host::Image& rendered, const PF_LRect& rect, host::Image& frame) {
    for (int y = 0; y < rendered.height(); ++y) {
        const int fy = rect.top + y;
        if (fy < 0 || fy >= frame.height()) continue;
        for (int x = 0; x < rendered.width(); ++x) {
            const int fx = rect.left + x;
            if (fx >= 0 && fx < frame.width()) frame.at(fx, fy) = rendered.at(x, y);
        }
    }
}

}  // namespace

std::string describeError(A_long err) { return "error " + std::to_string(err) + " (" + host::errorName(err) + ")"; }

RenderSession::RenderSession(const host::Scene& scene, const std::string& module_path, int threads)
    : host_(std::make_unique<host::Host>(sessionOptions(threads))) {
    pixels_.preload(*scene.composition);
    host_->set_composition(scene.composition, scene.effect_layer_id);
    host_->set_layer_pixel_source(pixels_.source());
    try {
        host_->load(module_path);
    } catch (const std::exception& e) {
        throw CliError(kExitModuleFailed, "cannot load the effect module " + module_path + ": " + e.what());
    }
    const PF_Err err = host_->sequence_setup();
    if (err != PF_Err_NONE)
        throw CliError(kExitModuleFailed, "the effect failed to set up: " + describeError(err));
    applySceneParameters(*host_, scene.parameters);
}

RenderSession::~RenderSession() {
    if (!host_->loaded()) return;
    try {
        host_->unload();
    } catch (const std::exception&) {
        // Ending anyway: nothing left to report to.
    }
}

host::Image RenderSession::render(double seconds, int bit_depth, int downsample) {
    const PF_RationalScale scale{1, static_cast<A_u_long>(downsample)};
    const PF_LRect bounds = host_->layer_bounds(host_->effect_layer_id(), scale, scale);
    host::Image frame(bounds.right - bounds.left, bounds.bottom - bounds.top);

    host::RenderRequest request;
    request.seconds = seconds;
    request.bitdepth = static_cast<short>(bit_depth);
    request.downsample = downsample;
    host::RenderResult result;
    try {
        host_->set_time(seconds);
        result = host_->render(request);
    } catch (const std::exception& e) {
        throw CliError(kExitRenderFailed, std::string("the render failed: ") + e.what());
    }
    if (result.err != PF_Err_NONE) {
        std::string message = "the effect returned " + describeError(result.err);
        if (!result.return_msg.empty()) message += ": " + result.return_msg;
        throw CliError(kExitRenderFailed, message);
    }
    if (result.rendered && result.output)
        place(host::worldToImage(result.output->get(), result.output->format()), result.result_rect, frame);
    return frame;
}

}  // namespace cli
