#include "AEConfig.h"
#include "AE_EffectCB.h"
#include "shell/Handlers.h"
#include "shell/ParamTable.h"

#ifndef PF_DEF_NAME
#define PF_DEF_NAME name
#endif

// Registers parameters 1 .. PARAM_COUNT - 1 in order. The first refused addition ends the
// set-up with the host's error and leaves the parameter count unreported.
PF_Err ParamsSetup(PF_InData* in_data, PF_OutData* out_data, PF_ParamDef* /*params*/[],
                   PF_LayerDef* /*output*/)
{
    for (int index = PARAM_INPUT + 1; index < PARAM_COUNT; ++index) {
        const ParamSpec& spec = kParamTable[index];
        PF_ParamDef def = describeParam(spec);
        in_data->utils->ansi.strcpy(def.PF_DEF_NAME, spec.name);
        const PF_Err err = PF_ADD_PARAM(in_data, -1, &def);
        if (err != PF_Err_NONE) {
            return err;
        }
    }
    out_data->num_params = PARAM_COUNT;
    return PF_Err_NONE;
}
