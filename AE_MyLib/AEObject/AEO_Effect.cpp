#include "AE_MyLib/AEObject/AEO_Effect.h"

#include <cstring>

#include "AE_MyLib/AEObject/AEO_Interface.h"
#include "AE_MyLib/AEObject/AEO_Layer.h"

namespace AEO {

Effect::Effect(const SPBasicSuite* basic, Interface& effect_interface, AEGP_PluginID plugin_id)
    : _effect(nullptr), _plugin_id(plugin_id), _basic(basic), _effect_suite(basic), _stream_suite(basic)
{
    if (!effect_interface.ok()) {
        _err = effect_interface.err();
        return;
    }
    if (!usable(_effect_suite)) {
        return;  // nothing could give the handle back: do not take it
    }
    _effect = effect_interface.GetNewEffectForEffect(plugin_id);
    _err = effect_interface.err();
}

Effect::~Effect()
{
    // Whoever holds a handle holds the suite: it was acquired before the handle was taken.
    if (_effect) {
        _effect_suite.get()->AEGP_DisposeEffect(_effect);
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

Stream::Stream(Effect& effect, PF_ParamIndex index)
    : _stream(nullptr),
      _plugin_id(effect.plugin_id()),
      _stream_suite(effect.basic()),
      _dynamic_stream_suite(effect.basic())
{
    if (!effect.ok() || !effect.handle()) {
        _err = effect.err();
        return;
    }
    if (!usable(_stream_suite)) {
        return;  // nothing could give the stream back: do not take it
    }
    _stream = effect.GetNewStreamByIndex(index);
    _err = effect.err();
}

Stream::~Stream()
{
    // Whoever holds a stream holds the suite: it was acquired before the stream was taken.
    if (_stream) {
        _stream_suite.get()->AEGP_DisposeStream(_stream);
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
    Effect effect(in_data.pica(), effect_interface, plugin_id);
    // The effect carries the interface's error as well; both objects must give theirs up.
    effect_interface.take_err();
    PF_Err err = effect.take_err();
    if (err != PF_Err_NONE) {
        return err;
    }
    Stream stream(effect, index);
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
