#pragma once
// A scene file brought to life: the host session with the scene's composition, the module
// loaded onto the scene's effect layer, the scene's parameter values applied, the sequence set
// up, and every supervised parameter the scene sets announced to the effect as a user change
// (so its controls are in the state a user would see), ready to render the scene's frames.
// This is the one way the CLI and the end-to-end tests run a scene.
//
//     host::Session session("orbit.json", "Orbivane.so");
//     for (double t : session.times()) {
//         host::RenderResult frame = session.render(t);
//         ...
//     }

#include "host/session/Host.h"
#include "host/comp/Scene.h"

#include <memory>
#include <string>
#include <vector>

namespace host {

class Session {
public:
    // Loads the scene file, then the module. Throws SceneError for a bad scene or parameter
    // value (naming the file, the value's path and the valid range) and HostError when the
    // module is refused or refuses a supervised change.
    Session(const std::string& scene_path, const std::string& module_path, HostOptions options = HostOptions());
    // The same from a scene already read.
    Session(Scene scene, const std::string& module_path, HostOptions options = HostOptions());
    ~Session();
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

    Host& host() { return *host_; }
    const Scene& scene() const { return scene_; }

    // The composition times the scene asks for, in order.
    std::vector<double> times() const;
    // One frame at `comp_seconds` at the scene's bit depth and downsample.
    RenderResult render(double comp_seconds);
    // One frame at `comp_seconds` at another bit depth (8, 16, 32) and downsample (1, 2, ...).
    RenderResult render(double comp_seconds, short bit_depth, int downsample);

    // Changes a parameter as the user would, by display name, with the values and the errors
    // of a scene file (SceneError naming the parameter); a supervised parameter is then
    // announced to the effect (HostError when it refuses the change).
    void set(const std::string& name, const SceneValue& value);
    void set(const std::string& name, double number);
    // The value as text, read by parseParamText: "0.5", "on", "Outside", "120,45", "none".
    void set_text(const std::string& name, const std::string& text);

private:
    void start(const std::string& module_path);
    void announce_if_supervised(const SceneParameter& p);

    Scene scene_;
    std::unique_ptr<Host> host_;
};

// Sets the scene's parameter values on a host whose module has registered its parameters:
// names are display names, popups take their item text or number, layer parameters a layer's
// displayed name (null for none), colours [r, g, b] and points [x, y]. Throws SceneError
// naming the value's path for an unknown name, a value of the wrong kind or one out of range.
void applySceneParameters(Host& host, const Scene& scene);

}  // namespace host
