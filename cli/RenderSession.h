#pragma once
// The scene brought up in an emulated After Effects session for rendering: the module loaded,
// the scene's parameters set, and every parameter the effect supervises announced as changed,
// so its controls are in the state a user would see. Renders frames at any depth and
// downsample.

#include "host/Image.h"
#include "host/Scene.h"
#include "host/Session.h"

#include <memory>
#include <string>

namespace cli {

class RenderSession {
public:
    // Throws CliError: bad input for the scene's values and images, module failure when the
    // module cannot be loaded or set up or refuses a change.
    RenderSession(host::Scene scene, const std::string& module_path, int threads);

    host::Host& host() { return session_->host(); }

    // One frame of the effect layer at composition time `seconds`: straight RGBA, the layer's
    // size at the downsample factor, transparent where the effect drew nothing. Throws
    // CliError (render failure) when the effect returns an error.
    host::Image render(double seconds, int bit_depth, int downsample);

private:
    void announceSupervisedChanges();

    std::unique_ptr<host::Session> session_;
};

// "error -1 (PF_Err_...)" for messages.
std::string describeError(A_long err);

}  // namespace cli
