#include "cli/RenderSession.h"

#include "cli/CliError.h"
#include "host/files/ImageIO.h"

namespace cli {

namespace {

host::HostOptions sessionOptions(int threads) {
    host::HostOptions options;
    options.threads = threads;
    options.poison = false;  // no debugging patterns in pictures meant to be looked at
    return options;
}

// Copies `rendered` (placed at `rect` in layer pixels) into `frame`.
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

// Usually the effect's output covers the layer exactly, and can be handed over as the frame.
bool coversTheLayer(const RenderedFrame& rendered) {
    const host::RenderResult& result = rendered.result;
    const PF_EffectWorld& world = result.output->get();
    return result.result_rect.left == 0 && result.result_rect.top == 0 && world.width == rendered.width &&
           world.height == rendered.height;
}

// The effect's output when it can be written as the frame as it stands.
const host::OwnedWorld* outputAsTheFrame(const RenderedFrame& rendered) {
    const host::RenderResult& result = rendered.result;
    return result.rendered && result.output && coversTheLayer(rendered) ? result.output.get() : nullptr;
}

}  // namespace

std::string describeError(A_long err) { return "error " + std::to_string(err) + " (" + host::errorName(err) + ")"; }

RenderSession::RenderSession(host::Scene scene, const std::string& module_path, int threads) {
    try {
        session_ = std::make_unique<host::Session>(std::move(scene), module_path, sessionOptions(threads));
    } catch (const host::SceneError& e) {
        throw badInput(e.what());
    } catch (const host::ImageIOError& e) {
        throw badInput(e.what());
    } catch (const host::HostError& e) {
        throw CliError(kExitModuleFailed, "cannot load the effect module " + module_path + ": " + e.what());
    }
}

RenderedFrame RenderSession::render(double seconds, int bit_depth, int downsample) {
    host::Host& h = host();
    const PF_RationalScale scale{1, static_cast<A_u_long>(downsample)};
    const PF_LRect bounds = h.layer_bounds(h.effect_layer_id(), scale, scale);
    RenderedFrame frame;
    frame.width = bounds.right - bounds.left;
    frame.height = bounds.bottom - bounds.top;
    try {
        h.set_time(seconds);
        frame.result = session_->render(seconds, static_cast<short>(bit_depth), downsample);
        calls_.add(frame.result.calls);
    } catch (const std::exception& e) {
        throw CliError(kExitRenderFailed, std::string("the render failed: ") + e.what());
    }
    const host::RenderResult& result = frame.result;
    if (result.err != PF_Err_NONE) {
        std::string message = "the effect returned " + describeError(result.err);
        if (!result.return_msg.empty()) message += ": " + result.return_msg;
        throw CliError(kExitRenderFailed, message);
    }
    return frame;
}

host::Image toImage(const RenderedFrame& rendered) {
    const host::RenderResult& result = rendered.result;
    if (!result.rendered || !result.output) return host::Image(rendered.width, rendered.height);
    host::Image image = host::worldToImage(result.output->get(), result.output->format());
    if (coversTheLayer(rendered)) return image;
    host::Image frame(rendered.width, rendered.height);
    place(image, result.result_rect, frame);
    return frame;
}

std::optional<host::FloatWorldFrame> toFloatWorld(const RenderedFrame& rendered) {
    const host::OwnedWorld* output = outputAsTheFrame(rendered);
    if (!output || output->format() != PF_PixelFormat_ARGB128) return std::nullopt;
    return host::FloatWorldFrame{&output->get()};
}

std::optional<host::QuantisedImage> toQuantised(const RenderedFrame& rendered, int bits) {
    const host::OwnedWorld* output = outputAsTheFrame(rendered);
    if (!output || output->format() == PF_PixelFormat_ARGB128) return std::nullopt;
    return host::worldToQuantised(output->get(), output->format(), bits);
}

}  // namespace cli
