#pragma once

// The built module applied to a layer of a small composition in an emulated host, for the
// tests of the interface rules. Layers, top to bottom:
//   "Surface"  the solid the effect is applied to;
//   "Rig"      a 3D null;
//   (no name)  a solid showing its source's name "Pivot Solid".

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "AE_Effect.h"
#include "AE_GeneralPlug.h"
#include "host/comp/Composition.h"
#include "host/session/Host.h"

namespace ui_test {

class UiSession {
public:
    explicit UiSession(host::HostOptions options = host::HostOptions());
    ~UiSession();
    UiSession(const UiSession&) = delete;
    UiSession& operator=(const UiSession&) = delete;

    // The user picks a control layer (0 for none) in the effect controls.
    PF_Err chooseControlLayer(int layer_id);
    // The user picks a "Falloff" item (1-based).
    PF_Err chooseFalloff(int choice);

    // Whether the host shows the control greyed out.
    bool disabled(PF_ParamIndex index);
    // The expression on an effect parameter's stream; nothing when it has none.
    std::optional<std::string> expression(PF_ParamIndex index);
    AEGP_DynStreamFlags dynamicFlags(PF_ParamIndex index);

    // The names of the host functions one action calls, in order.
    template <class Action>
    std::vector<std::string> callsOf(Action action)
    {
        session.faults().reset();
        session.faults().set_recording(true);
        action();
        std::vector<std::string> calls = session.faults().recorded_calls();
        session.faults().set_recording(false);
        session.faults().reset();
        return calls;
    }

    host::Host session;
    std::shared_ptr<host::Composition> comp;
    int surface_id = 0;
    int rig_id = 0;
    int nameless_id = 0;
};

// Host options that hand the chosen layer over in the parameter array, or not (the effect then
// asks the parameter's stream); and the test-name suffix for each way.
host::HostOptions withLayerInParams(bool layer_in_params);
std::string layerHandOverName(const ::testing::TestParamInfo<bool>& info);

// Positions (1-based, as the fault injector counts calls) of every call named `name`.
std::vector<std::size_t> positionsOf(const std::vector<std::string>& calls, const std::string& name);

}  // namespace ui_test
