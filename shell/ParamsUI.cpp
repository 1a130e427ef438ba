// Interface rules for the effect controls (greying out, the control-layer link). Not written
// yet: both commands succeed without changing anything.

#include "shell/Handlers.h"

PF_Err UpdataParamsUI(PF_InData*, PF_OutData*, PF_ParamDef*[], PF_LayerDef*) { return PF_Err_NONE; }

PF_Err HandleChangedParam(PF_InData*, PF_OutData*, PF_ParamDef*[], PF_LayerDef*, PF_UserChangedParamExtra*)
{
    return PF_Err_NONE;
}
