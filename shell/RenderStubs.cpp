// Stand-ins for the smart render driver, so that the module links and answers the smart
// render commands before the driver exists. The build drops this file as soon as the driver's
// render/SmartRender.cpp is part of the module, which then provides both functions.

#include "shell/Handlers.h"

PF_Err PreRender(PF_InData*, PF_OutData*, PF_PreRenderExtra*) { return PF_Err_NONE; }

PF_Err SmartRender(PF_InData*, PF_OutData*, PF_SmartRenderExtra*) { return PF_Err_NONE; }
