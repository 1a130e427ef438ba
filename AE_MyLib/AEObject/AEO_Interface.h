#pragma once

// The effect instance as the host's AEGP side sees it ("AEGP PF Interface Suite" 1).

#include "AE_MyLib/AEObject/AEO_Base.h"

namespace AEO {

class Interface : public ObjectBase {
public:
    Interface(const SPBasicSuite* basic, PF_ProgPtr effect_ref);

    // The layer this effect instance is applied to (not to be disposed).
    AEGP_LayerH GetEffectLayer();
    // The composition's active camera layer at a composition time; null when there is none.
    AEGP_LayerH GetEffectCamera(const A_Time& comp_time);
    // An effect (layer) time in time_scale units as composition time.
    A_Time ConvertEffectToCompTime(A_long what_time, A_u_long time_scale);
    // The AEGP handle of this effect instance. Meant for AEO::Effect, which holds the suite to
    // dispose of it before asking; a caller of its own must dispose of the result.
    AEGP_EffectRefH GetNewEffectForEffect(AEGP_PluginID plugin_id);

private:
    PF_ProgPtr _effect_ref;
    Suite<AEGP_PFInterfaceSuite1> _interface_suite;
};

}  // namespace AEO
