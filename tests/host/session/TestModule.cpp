// A minimal smart effect: param 1 "Gain" (percent) sets red, the layer param 2 "Source"
// gives green from its top-left pixel, the effect's own input gives blue.

#include "AE_Effect.h"
#include "AE_EffectCB.h"
#include "AE_EffectCBSuites.h"
#include "AE_GeneralPlug.h"
#include "entry.h"

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

PF_Err smartRender(PF_InData* in_data, PF_SmartRenderExtra* extra) {
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
    return err;
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
        case PF_Cmd_SMART_RENDER: return smartRender(in_data, static_cast<PF_SmartRenderExtra*>(extra));
        default: return PF_Err_NONE;
    }
}
