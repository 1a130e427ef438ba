#pragma once

// An effect instance's AEGP handle and the streams of its parameters. Each wrapper asks the host
// for its handle itself, and only once it holds the suite that gives the handle back: a handle is
// never taken that could not be returned. The handle is disposed of when the wrapper dies, error
// or not.

#include "AE_MyLib/AEObject/AEO_Base.h"
#include "AE_MyLib/AEObject/AEO_InData.h"
#include "AE_MyLib/AEObject/AEO_Interface.h"

namespace AEO {

class Effect : public ObjectBase {
public:
    // The AEGP handle of the effect instance behind effect_interface: "AEGP Effect Suite" first,
    // then Interface::GetNewEffectForEffect. When that suite is refused no handle is taken and
    // the refusal is this object's error; an error of the interface (standing or new) is copied
    // here too, while staying in the interface for its owner to take.
    Effect(const SPBasicSuite* basic, Interface& effect_interface, AEGP_PluginID plugin_id);
    ~Effect() override;

    AEGP_EffectRefH handle() const { return _effect; }
    AEGP_PluginID plugin_id() const { return _plugin_id; }
    const SPBasicSuite* basic() const { return _basic; }

    // The stream of parameter index (0 is the input layer). Meant for AEO::Stream, which holds
    // the suite to dispose of it before asking; a caller of its own must dispose of the result.
    AEGP_StreamRefH GetNewStreamByIndex(PF_ParamIndex index);

private:
    AEGP_EffectRefH _effect;
    AEGP_PluginID _plugin_id;
    const SPBasicSuite* _basic;
    // Declared in order of acquisition, so that they are released in reverse.
    Suite<AEGP_EffectSuite3> _effect_suite;
    Suite<AEGP_StreamSuite4> _stream_suite;
};

class Stream : public ObjectBase {
public:
    // The stream of parameter index of effect: "AEGP Stream Suite" first, then
    // Effect::GetNewStreamByIndex. When that suite is refused no stream is taken and the refusal
    // is this object's error; an error of the effect (standing or new) is copied here too, while
    // staying in the effect for its owner to take.
    Stream(Effect& effect, PF_ParamIndex index);
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
    // Declared in order of acquisition, so that they are released in reverse.
    Suite<AEGP_StreamSuite4> _stream_suite;
    Suite<AEGP_DynamicStreamSuite4> _dynamic_stream_suite;
};

// The layer chosen in a layer parameter, as the host hands it inside the parameter's value: the
// first pointer word holds the layer's AEGP handle. Null for no layer, and from a host that does
// not fill the word. This is the one test of "a layer is chosen" the effect makes wherever it
// holds the value; it needs no host call, so it is safe on render threads, and it holds when the
// layer has no pixels at the value's time.
inline AEGP_LayerH ChosenLayerInValue(const PF_LayerDef& value)
{
    return static_cast<AEGP_LayerH>(value.reserved0);
}

// The layer chosen in layer parameter index of this effect instance, by the documented route:
// effect -> parameter stream -> layer id -> layer of the effect layer's composition. *layer is
// null for no layer. Returns the first host error met.
PF_Err GetLayerOfLayerParam(const InData& in_data, AEGP_PluginID plugin_id, PF_ParamIndex index,
                            AEGP_LayerH* layer);

}  // namespace AEO
