#pragma once
// One emulated After Effects session for a scene: the effect module loaded, the scene's
// composition and layer pixels in place, the effect applied to its layer with the scene's
// parameter values, ready to render frames.

#include "cli/LayerPixels.h"
#include "host/Host.h"
#include "host/Image.h"
#include "host/Scene.h"

#include <memory>
#include <string>

namespace cli {

class RenderSession {
public:
    // Loads `module_path` with the scene's composition and sets the parameters. Throws
    // CliError: module failure when the module cannot be loaded or set up, bad input for the
    // scene's parameters and images.
    RenderSession(const host::Scene& scene, const std::string& module_path, int threads);
    ~RenderSession();
    RenderSession(const RenderSession&) = delete;
    RenderSession& operator=(const RenderSession&) = delete;

    host::Host& host() { return *host_; }

    // Renders one frame of the effect layer at composition time `seconds`: straight RGBA, the
    // layer's size at the downsample factor, transparent where the effect drew nothing.
    // Throws CliError (render failure) when the effect returns an error.
    host::Image render(double seconds, int bit_depth, int downsample);

private:
    LayerPixels pixels_;
    std::unique_ptr<host::Host> host_;
};

// "error -1 (PF_Err_...)" for messages.
std::string describeError(A_long err);

}  // namespace cli
