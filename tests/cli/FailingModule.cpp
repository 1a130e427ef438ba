// A smart effect that loads and sets up cleanly but fails every frame it is asked to render,
// with a message: what the command-line renderer must report as a render failure.

#include "AE_Effect.h"
#include "AE_EffectCB.h"
#include "AE_Macros.h"
#include "entry.h"

#include <cstring>

namespace {

PF_Err preRender(PF_InData* in_data, PF_PreRenderExtra* extra) {
    PF_CheckoutResult in_result{};
    PF_Err err = extra->cb->checkout_layer(in_data->effect_ref, 0, 0, &extra->input->output_request,
                                           in_data->current_time, in_data->time_step, in_data->time_scale, &in_result);
    if (err) return err;
    extra->output->result_rect = in_result.result_rect;
    extra->output->max_result_rect = in_result.max_result_rect;
    return PF_Err_NONE;
}

PF_Err smartRender(PF_OutData* out_data) {
    std::strcpy(out_data->return_msg, "the failing module fails");
    return PF_Err_INTERNAL_STRUCT_DAMAGED;
}

PF_Err paramsSetup(PF_InData* in_data, PF_OutData* out_data) {
    PF_ParamDef def{};
    def.param_type = PF_Param_SLIDER;
    PF_STRCPY(def.PF_DEF_NAME, "Amount");
    def.uu.id = 1;
    def.u.sd.valid_max = def.u.sd.slider_max = 100;
    def.u.sd.value = def.u.sd.dephault = 50;
    PF_Err err = PF_ADD_PARAM(in_data, -1, &def);
    out_data->num_params = 2;
    return err;
}

}  // namespace

extern "C" DllExport PF_Err EntryPointFunc(PF_Cmd cmd, PF_InData* in_data, PF_OutData* out_data, PF_ParamDef**,
                                           PF_LayerDef*, void* extra) {
    switch (cmd) {
        case PF_Cmd_GLOBAL_SETUP:
            out_data->my_version = PF_VERSION(1, 0, 0, PF_Stage_DEVELOP, 1);
            out_data->out_flags2 = PF_OutFlag2_SUPPORTS_SMART_RENDER;
            return PF_Err_NONE;
        case PF_Cmd_PARAMS_SETUP: return paramsSetup(in_data, out_data);
        case PF_Cmd_SMART_PRE_RENDER: return preRender(in_data, static_cast<PF_PreRenderExtra*>(extra));
        case PF_Cmd_SMART_RENDER: return smartRender(out_data);
        default: return PF_Err_NONE;
    }
}
