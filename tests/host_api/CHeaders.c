/* The effect API headers must also compile as C, and a C compiler must lay the shared records
   out exactly as the C++ side does. */

#include <assert.h>
#include <stdalign.h>
#include <stddef.h>

#include "A.h"
#include "StaticLayoutChecks.h"

/* The records a C module reaches first and the fields past their unions and enums (the C++ side
   holds these records field by field in LayoutTest.cpp). */
static_assert(sizeof(PF_InData) == 408, "PF_InData");
static_assert(sizeof(PF_OutData) == 408, "PF_OutData");
static_assert(sizeof(PF_ParamDef) == 176, "PF_ParamDef");
static_assert(sizeof(PF_UtilCallbacks) == 552, "PF_UtilCallbacks");
static_assert(offsetof(PF_InData, pica_basicP) == 384, "PF_InData.pica_basicP");
static_assert(offsetof(PF_UtilCallbacks, iterate_generic) == 456, "PF_UtilCallbacks.iterate_generic");
static_assert(offsetof(PF_Point, v) == 4, "PF_Point.v");
static_assert(offsetof(PF_WorldSuite2, PF_GetPixelFormat) == 16, "PF_WorldSuite2.PF_GetPixelFormat");
static_assert(sizeof(AEGP_LayerSuite6) == 368, "AEGP_LayerSuite6");
