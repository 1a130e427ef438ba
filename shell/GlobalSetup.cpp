#include "shell/EffectInfo.h"
#include "shell/GlobalData.h"
#include "shell/Handlers.h"

PF_Err GlobalSetup(PF_InData* in_data, PF_OutData* out_data, PF_ParamDef* /*params*/[],
                   PF_LayerDef* /*output*/)
{
    out_data->my_version = effect_info::kVersion;
    out_data->out_flags = effect_info::kOutFlags;
    out_data->out_flags2 = effect_info::kOutFlags2;

    const GlobalData registered(in_data);
    out_data->global_data = GlobalData::place(in_data, registered);
    return PF_Err_NONE;
}

PF_Err GlobalSetdown(PF_InData* in_data)
{
    if (in_data->global_data) {
        GlobalData::destroy(in_data, in_data->global_data);
    }
    return PF_Err_NONE;
}
