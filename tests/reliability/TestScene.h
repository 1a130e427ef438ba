#pragma once
// A small but complete scene for whole-lifetime tests (lifetime.json): the effect on a 2D
// solid, a texture, a reflection map, a 3D null as control layer, a camera with depth of field
// and one light of every type (the spot casts shadows). Small enough that a frame costs well
// under a millisecond, so that a lifetime can be repeated thousands of times.

#include <memory>

#include "host/comp/Composition.h"
#include "host/session/Host.h"

namespace reliability {

struct SceneLayers {
    int effect = 0;
    int texture = 0;
    int reflection = 0;
    int control = 0;
};

// One host session on that scene, module not yet loaded. Only one session may exist at a time
// per process (the host's services are process-wide while a session lives).
class Session {
public:
    explicit Session(host::HostOptions options = deterministicOptions());

    // One iteration thread: fault-point numbering is then the same in every run.
    static host::HostOptions deterministicOptions();

    host::Host& host() { return host_; }
    const SceneLayers& layers() const { return layers_; }

    // The texture, reflection map and camera-driven depth-of-field values every lifetime uses.
    void chooseLayers();
    // "Depth Of Field" On (the camera has its own depth of field on) or Off.
    void setDepthOfField(bool on);

private:
    host::Host host_;
    SceneLayers layers_;
};

}  // namespace reliability
