#include "AE_MyLib/AEObject/AEO_Effect.h"

#include <cstring>

#include "AE_MyLib/AEObject/AEO_Interface.h"
#include "AE_MyLib/AEObject/AEO_Layer.h"

namespace AEO {

Effect::Effect(const SPBasicSuite* basic, AEGP_EffectRefH effect, AEGP_PluginID plugin_id)
    : _effect(effect), _plugin_id(plugin_id), _stream_suite(basic), _effect_suite(basic)
{
}

Effect::~Effect()
{
    if (_effect) {
        if (const AEGP_EffectSuite3* suite = _effect_suite.acquire()) {
            suite->AEGP_DisposeEffect(_effect);
        }
    }
}

AEGP_StreamRefH Effect::GetNewStreamByIndex(PF_ParamIndex index)
{
    AEGP_StreamRefH stream = nullptr;
    if (const AEGP_StreamSuite4* suite = usable(_stream_suite)) {
        _err = suite->AEGP_GetNewEffectStreamByIndex(_plugin_id, _effect, index, &stream);
    }
    return stream;
}

Stream::Stream(const SPBasicSuite* basic, AEGP_StreamRefH stream, AEGP_PluginID plugin_id)
    : _stream(stream), _plugin_id(plugin_id), _stream_suite(basic), _dynamic_stream_suite(basic)
{
}

Stream::~Stream()
{
    if (_stream) {
        if (const AEGP_StreamSuite4* suite = _stream_suite.acquire()) {
            suite->AEGP_DisposeStream(_stream);
        }
    }
}

void Stream::SetExpression(const char* expression)
{
    if (const AEGP_StreamSuite4* suite = usable(_stream_suite)) {
        _err = suite->AEGP_SetExpression(_plugin_id, _stream, expression);
    }
}

void Stream::SetDynamicsStreamFlag(AEGP_DynStreamFlags flag, A_Boolean undoable, A_Boolean set)
{
    if (const AEGP_DynamicStreamSuite4* suite = usable(_dynamic_stream_suite)) {
        _err = suite->AEGP_SetDynamicStreamFlag(_stream, flag, undoable, set);
    }
}

AEGP_LayerIDVal Stream::GetLayerIDValue(AEGP_LTimeMode time_mode, const A_Time& time)
{
    AEGP_LayerIDVal id = AEGP_LayerIDVal_NONE;
    const AEGP_StreamSuite4* suite = usable(_stream_suite);
    if (!suite) {
        return id;
    }
    AEGP_StreamValue2 value;
    std::memset(&value, 0, sizeof(value));
    _err = suite->AEGP_GetNewStreamValue(_plugin_id, _stream, time_mode, &time, false, &value);
    if (_err == PF_Err_NONE) {
        id = value.val.layer_id;
        _err = suite->AEGP_DisposeStreamValue(&value);
    }
    return id;
}

PF_Err GetLayerOfLayerParam(const InData& in_data, AEGP_PluginID plugin_id, PF_ParamIndex index,
                            AEGP_LayerH* layer)
{
    *layer = nullptr;
    const PF_InData* host = in_data.in_data();
    if (!host) {
        return PF_Err_BAD_CALLBACK_PARAM;
    }
    Interface effect_interface(in_data.pica(), host->effect_ref);
    Effect effect(in_data.pica(), effect_interface.GetNewEffectForEffect(plugin_id), plugin_id);
    PF_Err err = effect_interface.take_err();
    if (err != PF_Err_NONE) {
        return err;
    }
    Stream stream(in_data.pica(), effect.GetNewStreamByIndex(index), plugin_id);
    const A_Time now = {host->current_time, host->time_scale};
    const AEGP_LayerIDVal id = stream.GetLayerIDValue(AEGP_LTimeMode_LayerTime, now);
    err = effect.take_err();
    const PF_Err stream_err = stream.take_err();
    if (err != PF_Err_NONE || stream_err != PF_Err_NONE) {
        return err != PF_Err_NONE ? err : stream_err;
    }
    if (id == AEGP_LayerIDVal_NONE) {
        return PF_Err_NONE;
    }
    Layer effect_layer(in_data, effect_interface.GetEffectLayer(), plugin_id);
    if ((err = effect_interface.take_err()) != PF_Err_NONE) {
        return err;
    }
    *layer = effect_layer.GetLayerFromLayerID(id);
    return effect_layer.take_err();
}

}  // namespace AEO
