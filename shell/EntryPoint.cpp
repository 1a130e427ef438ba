// The one function the host calls: every command arrives here and goes to its handler.

#include "AEConfig.h"
#include "AE_Effect.h"
#include "entry.h"
#include "shell/Handlers.h"

namespace {

PF_Err Dispatch(PF_Cmd cmd, PF_InData* in_data, PF_OutData* out_data, PF_ParamDef* params[],
                PF_LayerDef* output, void* extra)
{
    switch (cmd) {
    case PF_Cmd_ABOUT:
        return About(in_data, out_data);
    case PF_Cmd_GLOBAL_SETUP:
        return GlobalSetup(in_data, out_data, params, output);
    case PF_Cmd_GLOBAL_SETDOWN:
        return GlobalSetdown(in_data);
    case PF_Cmd_PARAMS_SETUP:
        return ParamsSetup(in_data, out_data, params, output);
    case PF_Cmd_SEQUENCE_SETUP:
        return SequenceSetup(in_data, out_data, params, output);
    case PF_Cmd_SEQUENCE_RESETUP:
        return SequenceResetup(in_data, out_data, params, output);
    case PF_Cmd_SEQUENCE_FLATTEN:
        return SequenceFlatten(in_data, out_data, params, output);
    case PF_Cmd_SEQUENCE_SETDOWN:
        return SequenceSetdown(in_data, out_data, params, output);
    case PF_Cmd_RENDER:
        return Render(in_data, out_data, params, output);
    case PF_Cmd_USER_CHANGED_PARAM:
        return HandleChangedParam(in_data, out_data, params, output,
                                  static_cast<PF_UserChangedParamExtra*>(extra));
    case PF_Cmd_UPDATE_PARAMS_UI:
        return UpdataParamsUI(in_data, out_data, params, output);
    case PF_Cmd_SMART_PRE_RENDER:
        return PreRender(in_data, out_data, static_cast<PF_PreRenderExtra*>(extra));
    case PF_Cmd_SMART_RENDER:
        return SmartRender(in_data, out_data, static_cast<PF_SmartRenderExtra*>(extra));
    default:
        // Commands the effect does not answer are not an error.
        return PF_Err_NONE;
    }
}

}  // namespace

extern "C" DllExport PF_Err EntryPointFunc(PF_Cmd cmd, PF_InData* in_data, PF_OutData* out_data,
                                           PF_ParamDef* params[], PF_LayerDef* output, void* extra)
{
    // Code below a handler aborts by throwing a PF_Err; that value is the command's result.
    // No other exception is expected, and none is caught.
    try {
        return Dispatch(cmd, in_data, out_data, params, output, extra);
    } catch (PF_Err thrown) {
        return thrown;
    }
}
