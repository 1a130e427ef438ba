#pragma once

// An effect instance's AEGP handle and the streams of its parameters. Both own their host
// handle and dispose of it when they die, error or not.

#include "AE_MyLib/AEObject/AEO_Base.h"
#include "AE_MyLib/AEObject/AEO_InData.h"

namespace AEO {

class Effect : public ObjectBase {
public:
    // Takes ownership of effect (null is allowed and owns nothing).
    Effect(const SPBasicSuite* basic, AEGP_EffectRefH effect, AEGP_PluginID plugin_id);
    ~Effect() override;

    AEGP_EffectRefH handle() const { return _effect; }

    // The stream of parameter index (0 is the input layer); wrap it in an AEO::Stream.
    AEGP_StreamRefH GetNewStreamByIndex(PF_ParamIndex index);

private:
    AEGP_EffectRefH _effect;
    AEGP_PluginID _plugin_id;
    Suite<AEGP_StreamSuite4> _stream_suite;
    Suite<AEGP_EffectSuite3> _effect_suite;
};

class Stream : public ObjectBase {
public:
    // Takes ownership of stream (null is allowed and owns nothing).
    Stream(const SPBasicSuite* basic, AEGP_StreamRefH stream, AEGP_PluginID plugin_id);
    ~Stream() override;

    AEGP_StreamRefH handle() const { return _stream; }

    // Installs an expression (the host copies the text); an empty text removes it.
    void SetExpression(const char* expression);
    // Sets or clears one AEGP_DynStreamFlag_... flag.
    void SetDynamicsStreamFlag(AEGP_DynStreamFlags flag, A_Boolean undoable, A_Boolean set);
    // For the stream of a layer parameter: the id of the chosen layer, AEGP_LayerIDVal_NONE for
    // none. time is in time_mode units.
    AEGP_LayerIDVal GetLayerIDValue(AEGP_LTimeMode time_mode, const A_Time& time);

private:
    AEGP_StreamRefH _stream;
    AEGP_PluginID _plugin_id;
    Suite<AEGP_StreamSuite4> _stream_suite;
    Suite<AEGP_DynamicStreamSuite4> _dynamic_stream_suite;
};

// The layer chosen in layer parameter index of this effect instance, by the documented route:
// effect -> parameter stream -> layer id -> layer of the effect layer's composition. *layer is
// null for no layer. Returns the first host error met.
PF_Err GetLayerOfLayerParam(const InData& in_data, AEGP_PluginID plugin_id, PF_ParamIndex index,
                            AEGP_LayerH* layer);

}  // namespace AEO
