// Commands the effect accepts and has nothing to do for: it keeps no per-instance data, and it
// draws only through smart rendering.

#include "shell/Handlers.h"

PF_Err SequenceSetup(PF_InData*, PF_OutData*, PF_ParamDef*[], PF_LayerDef*) { return PF_Err_NONE; }

PF_Err SequenceResetup(PF_InData*, PF_OutData*, PF_ParamDef*[], PF_LayerDef*) { return PF_Err_NONE; }

PF_Err SequenceFlatten(PF_InData*, PF_OutData*, PF_ParamDef*[], PF_LayerDef*) { return PF_Err_NONE; }

PF_Err SequenceSetdown(PF_InData*, PF_OutData*, PF_ParamDef*[], PF_LayerDef*) { return PF_Err_NONE; }

PF_Err Render(PF_InData*, PF_OutData*, PF_ParamDef*[], PF_LayerDef*) { return PF_Err_NONE; }
