/* The effect API headers must also compile as C, and a C compiler must lay the shared records
   out exactly as the C++ side does: the same size and alignment table holds in both. */

#include <assert.h>
#include <stdalign.h>
#include <stddef.h>

#include "A.h"
#include "StaticLayoutChecks.h"

/* The fields a C module reaches first, past the unions and enums of the records before them. */
static_assert(offsetof(PF_InData, pica_basicP) == 384, "PF_InData.pica_basicP");
static_assert(offsetof(PF_UtilCallbacks, iterate_generic) == 456, "PF_UtilCallbacks.iterate_generic");
static_assert(offsetof(PF_Point, v) == 4, "PF_Point.v");
static_assert(offsetof(PF_WorldSuite2, PF_GetPixelFormat) == 16, "PF_WorldSuite2.PF_GetPixelFormat");
static_assert(sizeof(AEGP_LayerSuite6) == 368, "AEGP_LayerSuite6");
