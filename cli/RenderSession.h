#pragma once
// The scene brought up in a host::Session for rendering pictures: the session's errors turned
// into the program's exit statuses, frames as straight RGBA images, and the host calls of
// every frame rendered so far added up.

#include "host/pixels/Image.h"

#include <optional>
#include "host/comp/Scene.h"
#include "host/session/Session.h"

#include <memory>
#include <string>

namespace cli {

// A frame still in the host's pixel world (a world of its own, not reused by later frames).
struct RenderedFrame {
    host::RenderResult result;
    int width = 0;  // the layer's size at the downsample factor
    int height = 0;
};

// The frame as straight RGBA at the layer's size, transparent where the effect drew nothing.
// Needs no session, so it can run on another thread while the next frame renders.
host::Image toImage(const RenderedFrame& frame);
// The frame straight in PNG channels of `bits` (8 or 16), the same values toImage's floats
// quantise to; none when that takes the float frame (a float world, an output that does not
// cover the layer exactly, nothing rendered).
std::optional<host::QuantisedImage> toQuantised(const RenderedFrame& frame, int bits);
// The rendered float world itself, for the OpenEXR writer; none when the frame needs the float
// frame (an 8- or 16-bit world, an output that does not cover the layer exactly, nothing
// rendered).
std::optional<host::FloatWorldFrame> toFloatWorld(const RenderedFrame& frame);

class RenderSession {
public:
    // Throws CliError: bad input for the scene's values and images, module failure when the
    // module cannot be loaded or set up or refuses a change.
    RenderSession(host::Scene scene, const std::string& module_path, int threads);

    host::Host& host() { return session_->host(); }
    // The host calls of every frame rendered so far, added up.
    const host::RenderCallLog& calls() const { return calls_; }

    // One frame of the effect layer at composition time `seconds`, as the effect rendered it.
    // Throws CliError (render failure) when the effect returns an error.
    RenderedFrame render(double seconds, int bit_depth, int downsample);

private:
    std::unique_ptr<host::Session> session_;
    host::RenderCallLog calls_;
};

// "error -1 (PF_Err_...)" for messages.
std::string describeError(A_long err);

}  // namespace cli
