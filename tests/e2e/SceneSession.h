#pragma once
// One scene file loaded into an emulated host with the built module: the scene's composition,
// the effect on its layer, the scene's parameter values, ready to render.

#include <string>

#include "host/Host.h"
#include "host/PixelWorld.h"
#include "host/Scene.h"

namespace e2e {

class SceneSession {
public:
    // Loads tests/e2e/scenes/<name> and the module.
    explicit SceneSession(const std::string& name, host::HostOptions options = host::HostOptions());

    host::Host& host() { return host_; }
    host::Scene& scene() { return scene_; }

    // Sets a parameter by display name: numbers for sliders, angles, popups and checkboxes.
    void set(const std::string& name, double value);
    // A point parameter, full-resolution layer pixels.
    void setPoint(const std::string& name, double x, double y);
    // A layer parameter by the layer's displayed name; empty for none.
    void setLayer(const std::string& name, const std::string& layer);

    // Renders the scene's frame at the given depth and downsample.
    host::RenderResult render(short bit_depth = 32, int downsample = 1);

private:
    void applyParameters();

    host::Host host_;
    host::Scene scene_;
};

// Output pixel (x, y) as floats, 8-bit and 16-bit white becoming 1.
PF_PixelFloat pixelAt(const host::RenderResult& result, int x, int y);

}  // namespace e2e
