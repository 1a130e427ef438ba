// A C translation unit sees the same record layout as C++ code, so a C module and a C++ host
// (or the reverse) can share these headers.

#include <gtest/gtest.h>

#include <cstddef>

#include "AE_Effect.h"
#include "AE_EffectCB.h"
#include "AE_EffectCBSuites.h"
#include "AE_GeneralPlug.h"
#include "CLayoutProbe.h"

namespace {

TEST(HostApiCCompat, CAndCppAgreeOnLayout) {
    EXPECT_EQ(hostapi_c_layout(HOSTAPI_C_SIZEOF_IN_DATA), sizeof(PF_InData));
    EXPECT_EQ(hostapi_c_layout(HOSTAPI_C_SIZEOF_OUT_DATA), sizeof(PF_OutData));
    EXPECT_EQ(hostapi_c_layout(HOSTAPI_C_SIZEOF_PARAM_DEF), sizeof(PF_ParamDef));
    EXPECT_EQ(hostapi_c_layout(HOSTAPI_C_SIZEOF_UTIL_CALLBACKS), sizeof(PF_UtilCallbacks));
    EXPECT_EQ(hostapi_c_layout(HOSTAPI_C_SIZEOF_LAYER_SUITE), sizeof(AEGP_LayerSuite6));
    EXPECT_EQ(hostapi_c_layout(HOSTAPI_C_OFFSET_PICA_BASIC), offsetof(PF_InData, pica_basicP));
    EXPECT_EQ(hostapi_c_layout(HOSTAPI_C_OFFSET_ITERATE_GENERIC),
              offsetof(PF_UtilCallbacks, iterate_generic));
    EXPECT_EQ(hostapi_c_layout(HOSTAPI_C_OFFSET_POINT_V), offsetof(PF_Point, v));
    EXPECT_EQ(hostapi_c_layout(HOSTAPI_C_OFFSET_WORLD_GET_FORMAT),
              offsetof(PF_WorldSuite2, PF_GetPixelFormat));
}

}  // namespace
