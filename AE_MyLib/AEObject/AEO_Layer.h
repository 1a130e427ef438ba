#pragma once

// A layer of a composition, and its camera and light specialisations.

#include "AE_MyLib/AEObject/AEO_Base.h"
#include "AE_MyLib/AEObject/AEO_InData.h"
#include "AE_MyLib/AEObject/AEO_String.h"

namespace AEO {

class Layer : public ObjectBase {
public:
    // plugin_id is needed only by the name getters.
    Layer(const InData& in_data, AEGP_LayerH layer, AEGP_PluginID plugin_id = 0);

    AEGP_LayerH handle() const { return _layer; }

    AEGP_CompH GetParentComp();
    AEGP_ItemH GetSourceItem();           // null for cameras and lights
    AEGP_ObjectType GetObjectType();      // AEGP_ObjectType_NONE when skipped
    AEGP_LayerFlags GetFlags();
    A_Time GetInPoint(AEGP_LTimeMode time_mode);
    A_Time GetDuration(AEGP_LTimeMode time_mode);
    // Layer-to-world matrix at a composition time, row-vector convention (row 3 = translation).
    A_Matrix4 GetToWorldXform(const A_Time& comp_time);

    // The value of one of the layer's built-in streams; all zero when skipped.
    AEGP_StreamVal2 GetStreamValue(AEGP_LayerStream stream, AEGP_LTimeMode time_mode,
                                   const A_Time& time, A_Boolean pre_expression,
                                   AEGP_StreamType* type = nullptr);
    A_FpLong GetCastsShadows(const A_Time& time, AEGP_LTimeMode time_mode, A_Boolean pre_expression);

    // The layer's own name (empty when it shows its source's) and its source's name, UTF-16.
    String<char16_t> getLayerName();
    String<char16_t> getSourceName();
    // The layer's own name as UTF-8.
    String<char> getLayerNameLocalized();
    void SetName(const unsigned short* utf16_name);
    void SetName(const String<char16_t>& name);

    // The layer with a given id in this layer's composition: the end of the route from a layer
    // parameter's stream value (layer_id) to the layer the user chose.
    AEGP_LayerH GetLayerFromLayerID(AEGP_LayerIDVal id);

protected:
    A_FpLong oneD(AEGP_LayerStream stream, const A_Time& time, AEGP_LTimeMode time_mode,
                  A_Boolean pre_expression);

    const InData* _in_data;
    AEGP_LayerH _layer;
    AEGP_PluginID _plugin_id;

private:
    // Reads one of the two names: which = 0 the layer's own, 1 its source's.
    String<char16_t> readName(int which);
    void copyMemHandle(AEGP_MemHandle handle, String<char16_t>& out);

    Suite<AEGP_LayerSuite6> _layer_suite;
    Suite<AEGP_StreamSuite4> _stream_suite;
    Suite<AEGP_MemorySuite1> _memory_suite;
};

// Camera settings, read with the time mode and pre-expression flag the caller gives (the effect
// passes composition time and false, so expressions on them are honoured).
class CameraLayer : public Layer {
public:
    CameraLayer(const InData& in_data, AEGP_LayerH layer, AEGP_PluginID plugin_id = 0);

    A_FpLong GetZoom(const A_Time& time, AEGP_LTimeMode time_mode, A_Boolean pre_expression);
    A_FpLong GetDepthOfField(const A_Time& time, AEGP_LTimeMode time_mode, A_Boolean pre_expression);
    A_FpLong GetFocusDistance(const A_Time& time, AEGP_LTimeMode time_mode, A_Boolean pre_expression);
    A_FpLong GetAperture(const A_Time& time, AEGP_LTimeMode time_mode, A_Boolean pre_expression);
    A_FpLong GetBlurLevel(const A_Time& time, AEGP_LTimeMode time_mode, A_Boolean pre_expression);
    AEGP_CameraType GetCameraType();  // AEGP_CameraType_NONE when skipped

private:
    Suite<AEGP_CameraSuite2> _camera_suite;
};

// Light settings, in the host's units (percent, degrees, pixels).
class LightLayer : public Layer {
public:
    LightLayer(const InData& in_data, AEGP_LayerH layer, AEGP_PluginID plugin_id = 0);

    A_FpLong GetIntensity(const A_Time& time, AEGP_LTimeMode time_mode, A_Boolean pre_expression);
    AEGP_ColorVal GetColor(const A_Time& time, AEGP_LTimeMode time_mode, A_Boolean pre_expression);
    A_FpLong GetConeAngle(const A_Time& time, AEGP_LTimeMode time_mode, A_Boolean pre_expression);
    A_FpLong GetConeFeather(const A_Time& time, AEGP_LTimeMode time_mode, A_Boolean pre_expression);
    A_FpLong GetShadowDarkenss(const A_Time& time, AEGP_LTimeMode time_mode, A_Boolean pre_expression);
    A_FpLong GetShadowDiffusion(const A_Time& time, AEGP_LTimeMode time_mode, A_Boolean pre_expression);
    AEGP_LightType GetLightType();  // AEGP_LightType_NONE when skipped

private:
    Suite<AEGP_LightSuite2> _light_suite;
};

}  // namespace AEO
