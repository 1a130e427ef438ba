// The interface rules of the effect controls: controls greyed out by the current settings on
// every interface update, and the control-layer link installed when the user picks a layer.

#include "shell/ParamsUI.h"

#include "AEConfig.h"
#include "AE_EffectSuites.h"
#include "AE_GeneralPlug.h"
#include "AE_MyLib/AEObject/AEGP_SuiteHandler.h"
#include "AE_MyLib/AEObject/AEO_Effect.h"
#include "AE_MyLib/AEObject/AEO_InData.h"
#include "AE_MyLib/AEObject/AEO_Interface.h"
#include "AE_MyLib/AEObject/AEO_Layer.h"
#include "AE_MyLib/AEObject/AEO_String.h"
#include "shell/GlobalData.h"
#include "shell/Handlers.h"

namespace params_ui {

const char kLinkExpressionHead[] = "try{length(thisComp.layer(\"";
const char kLinkExpressionTail[] = "\").toWorld([1,1,1]));}catch(e){value;}\n";

A_long hostApiVersion(const PF_InData& in_data)
{
    return A_long(in_data.version.major) * 100 + A_long(in_data.version.minor);
}

}  // namespace params_ui

namespace {

// "Falloff" choices (1-based popup values).
enum FalloffChoice { kFalloffNone = 1, kFalloffSmooth = 2, kFalloffInverseSquareClamped = 3 };

// The id the host gave the effect at global set-up; the AEGP calls below need it.
AEGP_PluginID pluginIdOf(PF_InData* in_data)
{
    const GlobalDataAccess global(in_data);
    return global.get() ? global.get()->plugin_id() : 0;
}

// The chosen control layer as the host hands it in the parameter array during interface
// commands: the first pointer word of the layer value; null for no layer, or when this host
// does not fill it.
AEGP_LayerH layerInParams(PF_ParamDef* params[])
{
    if (!params || !params[PARAM_CONTROL_LAYER]) {
        return nullptr;
    }
    return AEO::ChosenLayerInValue(params[PARAM_CONTROL_LAYER]->u.ld);
}

// The chosen control layer (null when none is chosen). Hosts that leave the parameter array's
// layer word empty are asked through the parameter's stream; that route's first host error is
// returned.
PF_Err chosenControlLayer(const AEO::InData& in_data, PF_ParamDef* params[],
                          AEGP_PluginID plugin_id, AEGP_LayerH* layer)
{
    *layer = layerInParams(params);
    if (*layer) {
        return PF_Err_NONE;
    }
    return AEO::GetLayerOfLayerParam(in_data, plugin_id, PARAM_CONTROL_LAYER, layer);
}

// A layer that cannot be looked up counts as absent: the controls stay editable.
bool controlLayerPresent(PF_InData* in_data, PF_ParamDef* params[], AEGP_PluginID plugin_id)
{
    if (layerInParams(params)) {
        return true;
    }
    const AEO::InData wrapped(in_data);
    AEGP_LayerH layer = nullptr;
    return chosenControlLayer(wrapped, params, plugin_id, &layer) == PF_Err_NONE && layer;
}

// The stream of this instance's "dammy" parameter, with the effect handle it belongs to; both
// are disposed of, stream first, when this object dies. Host errors are gathered in err() and
// never left standing in the wrappers.
class DammyStream {
public:
    DammyStream(PF_InData* in_data, AEGP_PluginID plugin_id)
        : _interface(in_data->pica_basicP, in_data->effect_ref),
          _effect(in_data->pica_basicP, _interface, plugin_id),
          _stream(_effect, PARAM_DAMMY),
          _err(PF_Err_NONE)
    {
        collect();
    }

    ~DammyStream() { collect(); }

    DammyStream(const DammyStream&) = delete;
    DammyStream& operator=(const DammyStream&) = delete;

    bool ok() const { return _err == PF_Err_NONE; }
    PF_Err err() const { return _err; }

    void setExpression(const char* text)
    {
        if (ok()) {
            _stream.SetExpression(text);
            collect();
        }
    }

    void setDynamicFlag(AEGP_DynStreamFlags flag, A_Boolean undoable, A_Boolean set)
    {
        if (ok()) {
            _stream.SetDynamicsStreamFlag(flag, undoable, set);
            collect();
        }
    }

private:
    // Moves the wrappers' errors into _err, keeping the first.
    void collect()
    {
        const PF_Err errs[] = {_interface.take_err(), _effect.take_err(), _stream.take_err()};
        for (PF_Err e : errs) {
            if (_err == PF_Err_NONE) {
                _err = e;
            }
        }
    }

    AEO::Interface _interface;
    AEO::Effect _effect;
    AEO::Stream _stream;
    PF_Err _err;
};

// Hosts before PF_PUI_INVISIBLE was honoured show "dammy" unless its stream is hidden. The
// change is cosmetic, so it is made outside the undo history. Failures only leave the slider
// visible and are not reported.
void hideDammyOnOldHosts(PF_InData* in_data, AEGP_PluginID plugin_id)
{
    if (params_ui::hostApiVersion(*in_data) >= params_ui::kFirstApiWithInvisibleParams) {
        return;
    }
    DammyStream dammy(in_data, plugin_id);
    dammy.setDynamicFlag(AEGP_DynStreamFlag_HIDDEN, false, true);
}

// Sets or clears PF_PUI_DISABLED on the host's own parameter records and tells the host, with
// the one "PF Param Utils Suite" acquired for the whole interface update.
class ControlGreying {
public:
    ControlGreying(PF_InData* in_data, PF_ParamDef* params[], const PF_ParamUtilsSuite3* suite)
        : _effect_ref(in_data->effect_ref), _params(params), _suite(suite)
    {
    }

    PF_Err setDisabled(PF_ParamIndex index, bool disabled)
    {
        PF_ParamDef* def = _params[index];
        if (disabled) {
            def->ui_flags |= PF_PUI_DISABLED;
        } else {
            def->ui_flags &= ~PF_ParamUIFlags(PF_PUI_DISABLED);
        }
        return _suite->PF_UpdateParamUI(_effect_ref, index, def);
    }

private:
    PF_ProgPtr _effect_ref;
    PF_ParamDef** _params;
    const PF_ParamUtilsSuite3* _suite;
};

// The transform controls are greyed out while a control layer places the surface.
PF_Err applyControlLayerRule(ControlGreying& greying, bool control_layer_present)
{
    for (PF_ParamIndex index : params_ui::kLayerDrivenParams) {
        if (PF_Err err = greying.setDisabled(index, control_layer_present)) {
            return err;
        }
    }
    return PF_Err_NONE;
}

// Radius matters to every falloff but None; Distance only to Smooth.
PF_Err applyFalloffRule(ControlGreying& greying, A_long falloff)
{
    bool radius_disabled = false;
    bool distance_disabled = false;
    switch (falloff) {
        case kFalloffNone: radius_disabled = true; distance_disabled = true; break;
        case kFalloffSmooth: break;
        case kFalloffInverseSquareClamped: distance_disabled = true; break;
        default: return PF_Err_NONE;  // not a choice of ours: leave both as they are
    }
    if (PF_Err err = greying.setDisabled(PARAM_FALLOFF_RADIUS, radius_disabled)) {
        return err;
    }
    return greying.setDisabled(PARAM_FALLOFF_DISTANCE, distance_disabled);
}

// Gives a layer that shows its source's name that name as its own, since the expression finds
// layers by their own name.
void nameAfterSourceIfNameless(AEO::Layer& layer)
{
    const AEO::String<char16_t> own_name = layer.getLayerName();
    if (layer.ok() && own_name.empty()) {
        const AEO::String<char16_t> source_name = layer.getSourceName();
        layer.SetName(source_name);
    }
}

// head + the layer's name + tail, in host memory; false (and nothing usable) when the name
// cannot be read or the memory runs out.
bool buildLinkExpression(AEO::Layer& layer, AEO::String<char>& expression)
{
    const AEO::String<char> name = layer.getLayerNameLocalized();
    return layer.ok() && expression.assign(params_ui::kLinkExpressionHead) &&
           expression.append(name.c_str(), name.size()) &&
           expression.append(params_ui::kLinkExpressionTail);
}

// Installs (or, without a control layer, removes) the expression on "dammy". Every failure
// leaves the expression as it was; none is reported.
void linkControlLayer(PF_InData* in_data, PF_ParamDef* params[])
{
    const AEGP_PluginID plugin_id = pluginIdOf(in_data);
    const AEO::InData memory(in_data);
    DammyStream dammy(in_data, plugin_id);
    if (!dammy.ok()) {
        return;
    }
    AEGP_LayerH chosen = nullptr;
    if (chosenControlLayer(memory, params, plugin_id, &chosen) != PF_Err_NONE) {
        return;
    }
    if (!chosen) {
        dammy.setExpression("");
        return;
    }
    AEO::Layer layer(memory, chosen, plugin_id);
    nameAfterSourceIfNameless(layer);
    AEO::String<char> expression(&memory);
    if (layer.ok() && buildLinkExpression(layer, expression)) {
        dammy.setExpression(expression.c_str());
    }
    layer.take_err();
}

}  // namespace

PF_Err UpdataParamsUI(PF_InData* in_data, PF_OutData*, PF_ParamDef* params[], PF_LayerDef*)
{
    const AEGP_PluginID plugin_id = pluginIdOf(in_data);
    hideDammyOnOldHosts(in_data, plugin_id);

    AEGP_SuiteHandler suites(in_data->pica_basicP);
    ControlGreying greying(in_data, params, suites.ParamUtilsSuite3());
    PF_Err err = applyControlLayerRule(greying, controlLayerPresent(in_data, params, plugin_id));
    if (err == PF_Err_NONE) {
        err = applyFalloffRule(greying, params[PARAM_FALLOFF]->u.pd.value);
    }
    return err;
}

PF_Err HandleChangedParam(PF_InData* in_data, PF_OutData*, PF_ParamDef* params[], PF_LayerDef*,
                          PF_UserChangedParamExtra* extra)
{
    // "Falloff", the other supervised parameter, needs no more than the interface update.
    if (extra && extra->param_index == PARAM_CONTROL_LAYER) {
        linkControlLayer(in_data, params);
    }
    return PF_Err_NONE;
}
