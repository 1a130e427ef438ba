#pragma once

// The effect's command handlers, one per host command it answers. The entry point dispatches
// to them; each returns a host error code (PF_Err_NONE on success) and may instead throw a
// PF_Err, which the entry point returns.

#include "AEConfig.h"
#include "AE_Effect.h"

PF_Err About(PF_InData* in_data, PF_OutData* out_data);
PF_Err GlobalSetup(PF_InData* in_data, PF_OutData* out_data, PF_ParamDef* params[], PF_LayerDef* output);
PF_Err GlobalSetdown(PF_InData* in_data);
PF_Err ParamsSetup(PF_InData* in_data, PF_OutData* out_data, PF_ParamDef* params[], PF_LayerDef* output);
PF_Err SequenceSetup(PF_InData* in_data, PF_OutData* out_data, PF_ParamDef* params[], PF_LayerDef* output);
PF_Err SequenceResetup(PF_InData* in_data, PF_OutData* out_data, PF_ParamDef* params[], PF_LayerDef* output);
PF_Err SequenceFlatten(PF_InData* in_data, PF_OutData* out_data, PF_ParamDef* params[], PF_LayerDef* output);
PF_Err SequenceSetdown(PF_InData* in_data, PF_OutData* out_data, PF_ParamDef* params[], PF_LayerDef* output);
PF_Err Render(PF_InData* in_data, PF_OutData* out_data, PF_ParamDef* params[], PF_LayerDef* output);
PF_Err HandleChangedParam(PF_InData* in_data, PF_OutData* out_data, PF_ParamDef* params[],
                          PF_LayerDef* output, PF_UserChangedParamExtra* extra);
PF_Err UpdataParamsUI(PF_InData* in_data, PF_OutData* out_data, PF_ParamDef* params[], PF_LayerDef* output);
PF_Err PreRender(PF_InData* in_data, PF_OutData* out_data, PF_PreRenderExtra* extra);
PF_Err SmartRender(PF_InData* in_data, PF_OutData* out_data, PF_SmartRenderExtra* extra);
