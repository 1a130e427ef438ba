#include "AEConfig.h"
#include "AE_EffectCB.h"
#include "shell/EffectInfo.h"
#include "shell/Handlers.h"

// "Orbivane, v1.1.6", a line break and the one-line description, through the host's sprintf.
PF_Err About(PF_InData* in_data, PF_OutData* out_data)
{
    in_data->utils->ansi.sprintf(out_data->return_msg, "%s, v%d.%d.%d\n%s", effect_info::kName,
                                 effect_info::kMajorVersion, effect_info::kMinorVersion,
                                 effect_info::kBugVersion, effect_info::kDescription);
    return PF_Err_NONE;
}
