#include "AE_MyLib/AEObject/AEO_Layer.h"

#include <cstring>

namespace AEO {

Layer::Layer(const InData& in_data, AEGP_LayerH layer, AEGP_PluginID plugin_id)
    : _in_data(&in_data),
      _layer(layer),
      _plugin_id(plugin_id),
      _layer_suite(in_data.pica()),
      _stream_suite(in_data.pica()),
      _memory_suite(in_data.pica())
{
}

AEGP_CompH Layer::GetParentComp()
{
    AEGP_CompH comp = nullptr;
    if (const AEGP_LayerSuite6* suite = usable(_layer_suite)) {
        _err = suite->AEGP_GetLayerParentComp(_layer, &comp);
    }
    return comp;
}

AEGP_ItemH Layer::GetSourceItem()
{
    AEGP_ItemH item = nullptr;
    if (const AEGP_LayerSuite6* suite = usable(_layer_suite)) {
        _err = suite->AEGP_GetLayerSourceItem(_layer, &item);
    }
    return item;
}

AEGP_ObjectType Layer::GetObjectType()
{
    AEGP_ObjectType type = AEGP_ObjectType_NONE;
    if (const AEGP_LayerSuite6* suite = usable(_layer_suite)) {
        _err = suite->AEGP_GetLayerObjectType(_layer, &type);
    }
    return type;
}

AEGP_LayerFlags Layer::GetFlags()
{
    AEGP_LayerFlags flags = AEGP_LayerFlag_NONE;
    if (const AEGP_LayerSuite6* suite = usable(_layer_suite)) {
        _err = suite->AEGP_GetLayerFlags(_layer, &flags);
    }
    return flags;
}

A_Time Layer::GetInPoint(AEGP_LTimeMode time_mode)
{
    A_Time in_point = {0, 1};
    if (const AEGP_LayerSuite6* suite = usable(_layer_suite)) {
        _err = suite->AEGP_GetLayerInPoint(_layer, time_mode, &in_point);
    }
    return in_point;
}

A_Time Layer::GetDuration(AEGP_LTimeMode time_mode)
{
    A_Time duration = {0, 1};
    if (const AEGP_LayerSuite6* suite = usable(_layer_suite)) {
        _err = suite->AEGP_GetLayerDuration(_layer, time_mode, &duration);
    }
    return duration;
}

A_Matrix4 Layer::GetToWorldXform(const A_Time& comp_time)
{
    A_Matrix4 transform;
    std::memset(&transform, 0, sizeof(transform));
    if (const AEGP_LayerSuite6* suite = usable(_layer_suite)) {
        _err = suite->AEGP_GetLayerToWorldXform(_layer, &comp_time, &transform);
    }
    return transform;
}

AEGP_StreamVal2 Layer::GetStreamValue(AEGP_LayerStream stream, AEGP_LTimeMode time_mode,
                                      const A_Time& time, A_Boolean pre_expression,
                                      AEGP_StreamType* type)
{
    AEGP_StreamVal2 value;
    std::memset(&value, 0, sizeof(value));
    if (const AEGP_StreamSuite4* suite = usable(_stream_suite)) {
        _err = suite->AEGP_GetLayerStreamValue(_layer, stream, time_mode, &time, pre_expression,
                                               &value, type);
    }
    return value;
}

A_FpLong Layer::oneD(AEGP_LayerStream stream, const A_Time& time, AEGP_LTimeMode time_mode,
                     A_Boolean pre_expression)
{
    return GetStreamValue(stream, time_mode, time, pre_expression).one_d;
}

A_FpLong Layer::GetCastsShadows(const A_Time& time, AEGP_LTimeMode time_mode, A_Boolean pre_expression)
{
    return oneD(AEGP_LayerStream_CASTS_SHADOWS, time, time_mode, pre_expression);
}

void Layer::copyMemHandle(AEGP_MemHandle handle, String<char16_t>& out)
{
    const AEGP_MemorySuite1* memory = usable(_memory_suite);
    if (!memory || !handle) {
        return;
    }
    void* data = nullptr;
    _err = memory->AEGP_LockMemHandle(handle, &data);
    if (_err == PF_Err_NONE && data) {
        // Copied unit by unit: the host's code units are unsigned shorts, ours char16_t.
        const A_UTF16Char* units = static_cast<const A_UTF16Char*>(data);
        for (std::size_t i = 0; units[i] != 0; ++i) {
            if (!out.append(char16_t(units[i]))) {
                _err = PF_Err_OUT_OF_MEMORY;
                break;
            }
        }
        memory->AEGP_UnlockMemHandle(handle);
    }
}

String<char16_t> Layer::readName(int which)
{
    String<char16_t> name(_in_data);
    const AEGP_LayerSuite6* layers = usable(_layer_suite);
    const AEGP_MemorySuite1* memory = usable(_memory_suite);
    if (!layers || !memory) {
        return name;
    }
    AEGP_MemHandle layer_name = nullptr;
    AEGP_MemHandle source_name = nullptr;
    _err = layers->AEGP_GetLayerName(_plugin_id, _layer, &layer_name, &source_name);
    copyMemHandle(which == 0 ? layer_name : source_name, name);
    // Both handles are ours to free, whatever happened in between.
    if (layer_name) {
        memory->AEGP_FreeMemHandle(layer_name);
    }
    if (source_name) {
        memory->AEGP_FreeMemHandle(source_name);
    }
    return name;
}

String<char16_t> Layer::getLayerName() { return readName(0); }

String<char16_t> Layer::getSourceName() { return readName(1); }

String<char> Layer::getLayerNameLocalized()
{
    String<char> narrow(_in_data);
    String<char16_t> wide = getLayerName();
    if (_err == PF_Err_NONE && !appendUtf8(narrow, wide.c_str())) {
        _err = PF_Err_OUT_OF_MEMORY;
    }
    return narrow;
}

void Layer::SetName(const unsigned short* utf16_name)
{
    if (const AEGP_LayerSuite6* suite = usable(_layer_suite)) {
        _err = suite->AEGP_SetLayerName(_layer, utf16_name);
    }
}

void Layer::SetName(const String<char16_t>& name)
{
    if (_err != PF_Err_NONE) {
        return;
    }
    // The host takes its own code-unit type; copy rather than reinterpret the characters.
    Vector<A_UTF16Char> units(_in_data);
    if (!units.reserve(name.size() + 1)) {
        _err = PF_Err_OUT_OF_MEMORY;
        return;
    }
    for (std::size_t i = 0; i < name.size(); ++i) {
        units.push_back(A_UTF16Char(name[i]));
    }
    units.push_back(0);
    SetName(units.data());
}

AEGP_LayerH Layer::GetLayerFromLayerID(AEGP_LayerIDVal id)
{
    AEGP_LayerH found = nullptr;
    const AEGP_CompH comp = GetParentComp();
    if (const AEGP_LayerSuite6* suite = usable(_layer_suite)) {
        _err = suite->AEGP_GetLayerFromLayerID(comp, id, &found);
    }
    return found;
}

// Camera --------------------------------------------------------------------------------------

CameraLayer::CameraLayer(const InData& in_data, AEGP_LayerH layer, AEGP_PluginID plugin_id)
    : Layer(in_data, layer, plugin_id), _camera_suite(in_data.pica())
{
}

A_FpLong CameraLayer::GetZoom(const A_Time& time, AEGP_LTimeMode time_mode, A_Boolean pre_expression)
{
    return oneD(AEGP_LayerStream_ZOOM, time, time_mode, pre_expression);
}

A_FpLong CameraLayer::GetDepthOfField(const A_Time& time, AEGP_LTimeMode time_mode,
                                      A_Boolean pre_expression)
{
    return oneD(AEGP_LayerStream_DEPTH_OF_FIELD, time, time_mode, pre_expression);
}

A_FpLong CameraLayer::GetFocusDistance(const A_Time& time, AEGP_LTimeMode time_mode,
                                       A_Boolean pre_expression)
{
    return oneD(AEGP_LayerStream_FOCUS_DISTANCE, time, time_mode, pre_expression);
}

A_FpLong CameraLayer::GetAperture(const A_Time& time, AEGP_LTimeMode time_mode, A_Boolean pre_expression)
{
    return oneD(AEGP_LayerStream_APERTURE, time, time_mode, pre_expression);
}

A_FpLong CameraLayer::GetBlurLevel(const A_Time& time, AEGP_LTimeMode time_mode, A_Boolean pre_expression)
{
    return oneD(AEGP_LayerStream_BLUR_LEVEL, time, time_mode, pre_expression);
}

AEGP_CameraType CameraLayer::GetCameraType()
{
    AEGP_CameraType type = AEGP_CameraType(AEGP_CameraType_NONE);
    if (const AEGP_CameraSuite2* suite = usable(_camera_suite)) {
        _err = suite->AEGP_GetCameraType(_layer, &type);
    }
    return type;
}

// Light ---------------------------------------------------------------------------------------

LightLayer::LightLayer(const InData& in_data, AEGP_LayerH layer, AEGP_PluginID plugin_id)
    : Layer(in_data, layer, plugin_id), _light_suite(in_data.pica())
{
}

A_FpLong LightLayer::GetIntensity(const A_Time& time, AEGP_LTimeMode time_mode, A_Boolean pre_expression)
{
    return oneD(AEGP_LayerStream_INTENSITY, time, time_mode, pre_expression);
}

AEGP_ColorVal LightLayer::GetColor(const A_Time& time, AEGP_LTimeMode time_mode, A_Boolean pre_expression)
{
    return GetStreamValue(AEGP_LayerStream_COLOR, time_mode, time, pre_expression).color;
}

A_FpLong LightLayer::GetConeAngle(const A_Time& time, AEGP_LTimeMode time_mode, A_Boolean pre_expression)
{
    return oneD(AEGP_LayerStream_CONE_ANGLE, time, time_mode, pre_expression);
}

A_FpLong LightLayer::GetConeFeather(const A_Time& time, AEGP_LTimeMode time_mode, A_Boolean pre_expression)
{
    return oneD(AEGP_LayerStream_CONE_FEATHER, time, time_mode, pre_expression);
}

A_FpLong LightLayer::GetShadowDarkenss(const A_Time& time, AEGP_LTimeMode time_mode,
                                       A_Boolean pre_expression)
{
    return oneD(AEGP_LayerStream_SHADOW_DARKNESS, time, time_mode, pre_expression);
}

A_FpLong LightLayer::GetShadowDiffusion(const A_Time& time, AEGP_LTimeMode time_mode,
                                        A_Boolean pre_expression)
{
    return oneD(AEGP_LayerStream_SHADOW_DIFFUSION, time, time_mode, pre_expression);
}

AEGP_LightType LightLayer::GetLightType()
{
    AEGP_LightType type = AEGP_LightType(AEGP_LightType_NONE);
    if (const AEGP_LightSuite2* suite = usable(_light_suite)) {
        _err = suite->AEGP_GetLightType(_layer, &type);
    }
    return type;
}

}  // namespace AEO
