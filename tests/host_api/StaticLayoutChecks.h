#pragma once

// Compile-time guard on the size and alignment of the host API records, in C and in C++. A
// mismatch here means the module and the host would disagree on where fields live. Records whose
// fields LayoutTest.cpp lists, and every suite, are held to their size there.

#include "AE_Effect.h"
#include "AE_EffectCB.h"
#include "AE_EffectCBSuites.h"
#include "AE_EffectSuites.h"
#include "AE_GeneralPlug.h"
#include "SPBasic.h"

#define HOSTAPI_STATIC_LAYOUT(T, SIZE, ALIGN) \
    static_assert(sizeof(T) == (SIZE), #T " must be " #SIZE " bytes"); \
    static_assert(alignof(T) == (ALIGN), #T " must be aligned to " #ALIGN)

HOSTAPI_STATIC_LAYOUT(A_Time, 8, 4);
HOSTAPI_STATIC_LAYOUT(A_Ratio, 8, 4);
HOSTAPI_STATIC_LAYOUT(A_FloatPoint, 16, 8);
HOSTAPI_STATIC_LAYOUT(A_FloatPoint3, 24, 8);
HOSTAPI_STATIC_LAYOUT(A_FloatRect, 32, 8);
HOSTAPI_STATIC_LAYOUT(A_LRect, 16, 4);
HOSTAPI_STATIC_LAYOUT(A_LPoint, 8, 4);
HOSTAPI_STATIC_LAYOUT(A_Matrix3, 72, 8);
HOSTAPI_STATIC_LAYOUT(A_Matrix4, 128, 8);
HOSTAPI_STATIC_LAYOUT(A_Color, 32, 8);
HOSTAPI_STATIC_LAYOUT(A_LegacyRect, 8, 2);
HOSTAPI_STATIC_LAYOUT(A_FloatPolar, 16, 8);
HOSTAPI_STATIC_LAYOUT(A_Version, 4, 2);
HOSTAPI_STATIC_LAYOUT(PF_SpecVersion, 4, 2);
HOSTAPI_STATIC_LAYOUT(PF_LRect, 16, 4);
HOSTAPI_STATIC_LAYOUT(PF_RationalScale, 8, 4);
HOSTAPI_STATIC_LAYOUT(PF_FixedPoint, 8, 4);
HOSTAPI_STATIC_LAYOUT(PF_FixedRect, 16, 4);
HOSTAPI_STATIC_LAYOUT(PF_Matrix, 36, 4);
HOSTAPI_STATIC_LAYOUT(PF_FloatMatrix, 72, 8);
HOSTAPI_STATIC_LAYOUT(PF_ParamDefUnion, 120, 8);
HOSTAPI_STATIC_LAYOUT(PF_UserChangedParamExtra, 4, 4);
HOSTAPI_STATIC_LAYOUT(PF_State, 16, 4);
HOSTAPI_STATIC_LAYOUT(AEGP_ColorVal, 32, 8);
HOSTAPI_STATIC_LAYOUT(AEGP_TwoDVal, 16, 8);
HOSTAPI_STATIC_LAYOUT(AEGP_ThreeDVal, 24, 8);
HOSTAPI_STATIC_LAYOUT(AEGP_DownsampleFactor, 4, 2);
HOSTAPI_STATIC_LAYOUT(AEGP_ErrReportState, 48, 4);
HOSTAPI_STATIC_LAYOUT(AEGP_KeyframeEase, 16, 8);
HOSTAPI_STATIC_LAYOUT(AEGP_StreamVal2, 32, 8);
HOSTAPI_STATIC_LAYOUT(AEGP_StreamVal, 32, 8);
