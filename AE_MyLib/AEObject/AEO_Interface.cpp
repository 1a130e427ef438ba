#include "AE_MyLib/AEObject/AEO_Interface.h"

namespace AEO {

Interface::Interface(const SPBasicSuite* basic, PF_ProgPtr effect_ref)
    : _effect_ref(effect_ref), _interface_suite(basic)
{
}

AEGP_LayerH Interface::GetEffectLayer()
{
    AEGP_LayerH layer = nullptr;
    if (const AEGP_PFInterfaceSuite1* suite = usable(_interface_suite)) {
        _err = suite->AEGP_GetEffectLayer(_effect_ref, &layer);
    }
    return layer;
}

AEGP_LayerH Interface::GetEffectCamera(const A_Time& comp_time)
{
    AEGP_LayerH camera = nullptr;
    if (const AEGP_PFInterfaceSuite1* suite = usable(_interface_suite)) {
        _err = suite->AEGP_GetEffectCamera(_effect_ref, &comp_time, &camera);
    }
    return camera;
}

A_Time Interface::ConvertEffectToCompTime(A_long what_time, A_u_long time_scale)
{
    A_Time comp_time = {0, 1};
    if (const AEGP_PFInterfaceSuite1* suite = usable(_interface_suite)) {
        _err = suite->AEGP_ConvertEffectToCompTime(_effect_ref, what_time, time_scale, &comp_time);
    }
    return comp_time;
}

AEGP_EffectRefH Interface::GetNewEffectForEffect(AEGP_PluginID plugin_id)
{
    AEGP_EffectRefH effect = nullptr;
    if (const AEGP_PFInterfaceSuite1* suite = usable(_interface_suite)) {
        _err = suite->AEGP_GetNewEffectForEffect(plugin_id, _effect_ref, &effect);
    }
    return effect;
}

}  // namespace AEO
