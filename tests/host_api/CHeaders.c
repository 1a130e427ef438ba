/* The effect API headers must also compile as C, and a C compiler must lay the shared records
   out exactly as the C++ side does. */

#include <stddef.h>

#include "A.h"
#include "AE_Effect.h"
#include "AE_EffectCB.h"
#include "AE_EffectCBSuites.h"
#include "AE_GeneralPlug.h"

#include "CLayoutProbe.h"

size_t hostapi_c_layout(int which)
{
	switch (which) {
	case HOSTAPI_C_SIZEOF_IN_DATA:          return sizeof(PF_InData);
	case HOSTAPI_C_SIZEOF_OUT_DATA:         return sizeof(PF_OutData);
	case HOSTAPI_C_SIZEOF_PARAM_DEF:        return sizeof(PF_ParamDef);
	case HOSTAPI_C_SIZEOF_UTIL_CALLBACKS:   return sizeof(PF_UtilCallbacks);
	case HOSTAPI_C_SIZEOF_LAYER_SUITE:      return sizeof(AEGP_LayerSuite6);
	case HOSTAPI_C_OFFSET_PICA_BASIC:       return offsetof(PF_InData, pica_basicP);
	case HOSTAPI_C_OFFSET_ITERATE_GENERIC:  return offsetof(PF_UtilCallbacks, iterate_generic);
	case HOSTAPI_C_OFFSET_POINT_V:          return offsetof(PF_Point, v);
	case HOSTAPI_C_OFFSET_WORLD_GET_FORMAT: return offsetof(PF_WorldSuite2, PF_GetPixelFormat);
	default:                                return 0;
	}
}
