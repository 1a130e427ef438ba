// A minimal smart effect: param 1 "Gain" (percent) sets red, the layer param 2 "Source"
// gives green from its top-left pixel, the effect's own input gives blue. While rendering it
// also reads the scene through the AEGP suites (the camera's zoom, the lights' count and
// summed intensity) and reports them in return_msg.

#include "AE_Effect.h"
#include "AE_EffectCB.h"
#include "AE_EffectCBSuites.h"
#include "AE_GeneralPlug.h"
#include "entry.h"

#include <cstdio>

namespace {

enum { kInput = 0, kGain, kSource, kCount };

template <class Pixel>
void paint(PF_EffectWorld* out, const PF_EffectWorld* input, double gain, const PF_EffectWorld* source) {
    using Channel = decltype(Pixel{}.red);
    const double white = sizeof(Channel) == 1 ? 255 : sizeof(Channel) == 2 ? 32768 : 1;
    const Channel green = source->data ? reinterpret_cast<const Pixel*>(source->data)->red : Channel(0);
    for (A_long y = 0; y < out->height; ++y) {
        auto* row = reinterpret_cast<Pixel*>(reinterpret_cast<char*>(out->data) + y * out->rowbytes);
        const A_long in_y = y + out->origin_y - input->origin_y;
        const auto* in_row = reinterpret_cast<const Pixel*>(reinterpret_cast<const char*>(input->data) + in_y * input->rowbytes);
        for (A_long x = 0; x < out->width; ++x) {
            row[x].alpha = Channel(white);
            row[x].red = Channel(gain / 100.0 * white);
            row[x].green = green;
            row[x].blue = in_row[x + out->origin_x - input->origin_x].blue;
        }
    }
}

template <class Suite>
const Suite* acquire(PF_InData* in_data, const char* name, int version) {
    const void* suite = nullptr;
    return in_data->pica_basicP->AcquireSuite(name, version, &suite) ? nullptr : static_cast<const Suite*>(suite);
}

// One number of a layer's stream at `comp_time`, through a new stream reference.
A_Err streamValue(const AEGP_StreamSuite4* streams, AEGP_LayerH layer, AEGP_LayerStream which,
                  const A_Time& comp_time, double* value) {
    AEGP_StreamRefH stream = nullptr;
    A_Err err = streams->AEGP_GetNewLayerStream(0, layer, which, &stream);
    if (err) return err;
    AEGP_StreamValue2 v{};
    err = streams->AEGP_GetNewStreamValue(0, stream, AEGP_LTimeMode_CompTime, &comp_time, false, &v);
    if (!err) {
        *value = v.val.one_d;
        err = streams->AEGP_DisposeStreamValue(&v);
    }
    const A_Err disposed = streams->AEGP_DisposeStream(stream);
    return err ? err : disposed;
}

A_Err readScene(PF_InData* in_data, const AEGP_PFInterfaceSuite1* iface, const AEGP_LayerSuite6* layers,
                const AEGP_StreamSuite4* streams, PF_OutData* out_data) {
    A_Time comp_time{};
    A_Err err = iface->AEGP_ConvertEffectToCompTime(in_data->effect_ref, in_data->current_time,
                                                     in_data->time_scale, &comp_time);
    AEGP_LayerH camera = nullptr, self = nullptr;
    if (!err) err = iface->AEGP_GetEffectCamera(in_data->effect_ref, &comp_time, &camera);
    double zoom = 0;
    if (!err && camera) err = streamValue(streams, camera, AEGP_LayerStream_ZOOM, comp_time, &zoom);
    AEGP_CompH comp = nullptr;
    A_long count = 0;
    if (!err) err = iface->AEGP_GetEffectLayer(in_data->effect_ref, &self);
    if (!err) err = layers->AEGP_GetLayerParentComp(self, &comp);
    if (!err) err = layers->AEGP_GetCompNumLayers(comp, &count);
    int lights = 0;
    double intensity = 0;
    for (A_long i = 0; !err && i < count; ++i) {
        AEGP_LayerH layer = nullptr;
        AEGP_ObjectType type = AEGP_ObjectType_NONE;
        err = layers->AEGP_GetCompLayerByIndex(comp, i, &layer);
        if (!err) err = layers->AEGP_GetLayerObjectType(layer, &type);
        if (err || type != AEGP_ObjectType_LIGHT) continue;
        double value = 0;
        err = streamValue(streams, layer, AEGP_LayerStream_INTENSITY, comp_time, &value);
        ++lights;
        intensity += value;
    }
    if (!err)
        std::snprintf(out_data->return_msg, sizeof out_data->return_msg, "camera zoom %.1f; %d lights, intensity %.1f",
                      zoom, lights, intensity);
    return err;
}

PF_Err reportScene(PF_InData* in_data, PF_OutData* out_data) {
    auto* iface = acquire<AEGP_PFInterfaceSuite1>(in_data, kAEGPPFInterfaceSuite, kAEGPPFInterfaceSuiteVersion1);
    auto* layers = acquire<AEGP_LayerSuite6>(in_data, kAEGPLayerSuite, kAEGPLayerSuiteVersion6);
    auto* streams = acquire<AEGP_StreamSuite4>(in_data, kAEGPStreamSuite, kAEGPStreamSuiteVersion4);
    const PF_Err err = iface && layers && streams ? readScene(in_data, iface, layers, streams, out_data)
                                                  : PF_Err_BAD_CALLBACK_PARAM;
    if (iface) in_data->pica_basicP->ReleaseSuite(kAEGPPFInterfaceSuite, kAEGPPFInterfaceSuiteVersion1);
    if (layers) in_data->pica_basicP->ReleaseSuite(kAEGPLayerSuite, kAEGPLayerSuiteVersion6);
    if (streams) in_data->pica_basicP->ReleaseSuite(kAEGPStreamSuite, kAEGPStreamSuiteVersion4);
    return err;
}

PF_Err smartRender(PF_InData* in_data, PF_OutData* out_data, PF_SmartRenderExtra* extra) {
    PF_EffectWorld* input = nullptr;
    PF_EffectWorld* output = nullptr;
    PF_Err err = extra->cb->checkout_layer_pixels(in_data->effect_ref, 0, &input);
    if (!err) err = extra->cb->checkout_output(in_data->effect_ref, &output);
    if (err) return err;
    PF_ParamDef gain{}, source{};
    err = PF_CHECKOUT_PARAM(in_data, kGain, in_data->current_time, in_data->time_step, in_data->time_scale, &gain);
    if (err) return err;
    err = PF_CHECKOUT_PARAM(in_data, kSource, in_data->current_time, in_data->time_step, in_data->time_scale, &source);
    if (!err) {
        const double g = gain.u.sd.value;
        switch (extra->input->bitdepth) {
            case 8: paint<PF_Pixel>(output, input, g, &source.u.ld); break;
            case 16: paint<PF_Pixel16>(output, input, g, &source.u.ld); break;
            default: paint<PF_PixelFloat>(output, input, g, &source.u.ld); break;
        }
        PF_CHECKIN_PARAM(in_data, &source);
    }
    PF_CHECKIN_PARAM(in_data, &gain);
    return err ? err : reportScene(in_data, out_data);
}

PF_Err preRender(PF_InData* in_data, PF_PreRenderExtra* extra) {
    PF_CheckoutResult in_result{};
    PF_Err err = extra->cb->checkout_layer(in_data->effect_ref, kInput, 0, &extra->input->output_request,
                                           in_data->current_time, in_data->time_step, in_data->time_scale, &in_result);
    if (err) return err;
    extra->output->result_rect = in_result.result_rect;
    extra->output->max_result_rect = in_result.max_result_rect;
    return PF_Err_NONE;
}

PF_Err globalSetup(PF_InData* in_data, PF_OutData* out_data) {
    out_data->my_version = PF_VERSION(1, 0, 0, PF_Stage_DEVELOP, 1);
    out_data->out_flags = PF_OutFlag_DEEP_COLOR_AWARE;
    out_data->out_flags2 = PF_OutFlag2_SUPPORTS_SMART_RENDER | PF_OutFlag2_FLOAT_COLOR_AWARE |
                           PF_OutFlag2_SUPPORTS_THREADED_RENDERING;
    out_data->global_data = PF_NEW_HANDLE(16);
    if (!out_data->global_data) return PF_Err_OUT_OF_MEMORY;
    const AEGP_UtilitySuite5* utility = nullptr;
    PF_Err err = in_data->pica_basicP->AcquireSuite(kAEGPUtilitySuite, kAEGPUtilitySuiteVersion5,
                                                    reinterpret_cast<const void**>(&utility));
    if (err) return err;
    AEGP_PluginID id = 0;
    err = utility->AEGP_RegisterWithAEGP(nullptr, "Test Module", &id);
    in_data->pica_basicP->ReleaseSuite(kAEGPUtilitySuite, kAEGPUtilitySuiteVersion5);
    return err;
}

PF_Err paramsSetup(PF_InData* in_data, PF_OutData* out_data) {
    PF_ParamDef def{};
    def.param_type = PF_Param_SLIDER;
    PF_STRCPY(def.PF_DEF_NAME, "Gain");
    def.uu.id = 1;
    def.u.sd.valid_max = def.u.sd.slider_max = 100;
    def.u.sd.value = def.u.sd.dephault = 50;
    PF_Err err = PF_ADD_PARAM(in_data, -1, &def);
    if (err) return err;
    def = PF_ParamDef{};
    def.param_type = PF_Param_LAYER;
    PF_STRCPY(def.PF_DEF_NAME, "Source");
    def.uu.id = 2;
    def.u.ld.dephault = PF_LayerDefault_NONE;
    err = PF_ADD_PARAM(in_data, -1, &def);
    out_data->num_params = kCount;
    return err;
}

}  // namespace

extern "C" DllExport PF_Err EntryPointFunc(PF_Cmd cmd, PF_InData* in_data, PF_OutData* out_data, PF_ParamDef**,
                                           PF_LayerDef*, void* extra) {
    switch (cmd) {
        case PF_Cmd_GLOBAL_SETUP: return globalSetup(in_data, out_data);
        case PF_Cmd_PARAMS_SETUP: return paramsSetup(in_data, out_data);
        case PF_Cmd_GLOBAL_SETDOWN: PF_DISPOSE_HANDLE(in_data->global_data); return PF_Err_NONE;
        case PF_Cmd_SMART_PRE_RENDER: return preRender(in_data, static_cast<PF_PreRenderExtra*>(extra));
        case PF_Cmd_SMART_RENDER: return smartRender(in_data, out_data, static_cast<PF_SmartRenderExtra*>(extra));
        default: return PF_Err_NONE;
    }
}
