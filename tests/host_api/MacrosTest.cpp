// The helper macros are what module code actually calls; they must route each argument to the
// right callback slot and keep the SDK's arithmetic (truncation vs rounding) exactly.

#include <gtest/gtest.h>

#include <cstdint>
#include <cstdio>
#include <cstring>

#include "AEConfig.h"
#include "AE_Effect.h"
#include "AE_EffectCB.h"
#include "AE_Macros.h"
#include "entry.h"

namespace {

// The configuration picks exactly one processor, and the SDK platform switch only on Windows
// and macOS (the Linux build defines none).
#if defined(AE_PROC_INTEL) + defined(AE_PROC_INTELx64) + defined(AE_PROC_ARM64) != 1
#error "AEConfig.h must define exactly one AE_PROC_ switch"
#endif
#if defined(AE_OS_WIN) + defined(AE_OS_MAC) != (defined(_WIN32) || defined(__APPLE__))
#error "AEConfig.h must define one AE_OS_ switch on Windows and macOS, none elsewhere"
#endif
#ifndef AE_LITTLE_ENDIAN
#error "AEConfig.h must define AE_LITTLE_ENDIAN"
#endif
#ifndef DllExport
#error "entry.h must define DllExport once AEConfig.h is included"
#endif

int g_calls = 0;

PF_Err countedCall(PF_Err result) {
    ++g_calls;
    return result;
}

TEST(HostApiMacros, ErrStopsEvaluatingAfterTheFirstFailure) {
    g_calls = 0;
    PF_Err err = PF_Err_NONE;
    ERR(countedCall(PF_Err_NONE));
    ERR(countedCall(PF_Err_BAD_CALLBACK_PARAM));
    ERR(countedCall(PF_Err_OUT_OF_MEMORY));
    EXPECT_EQ(err, PF_Err_BAD_CALLBACK_PARAM);
    EXPECT_EQ(g_calls, 2);
}

TEST(HostApiMacros, Err2AlwaysEvaluatesButKeepsTheFirstError) {
    g_calls = 0;
    PF_Err err = PF_Err_NONE;
    PF_Err err2 = PF_Err_NONE;
    ERR2(countedCall(PF_Err_INVALID_INDEX));
    ERR2(countedCall(PF_Err_OUT_OF_MEMORY));
    ERR2(countedCall(PF_Err_NONE));
    EXPECT_EQ(err, PF_Err_INVALID_INDEX);
    EXPECT_EQ(err2, PF_Err_NONE);
    EXPECT_EQ(g_calls, 3);
}

TEST(HostApiMacros, ClearStructZeroesTheWholeRecord) {
    PF_ParamDef def;
    std::memset(&def, 0xAB, sizeof(def));
    AEFX_CLR_STRUCT(def)
    const unsigned char* bytes = reinterpret_cast<const unsigned char*>(&def);
    for (std::size_t i = 0; i < sizeof(def); ++i) ASSERT_EQ(bytes[i], 0u) << "byte " << i;
}

TEST(HostApiMacros, FixedPointConversions) {
    EXPECT_EQ(INT2FIX(3), 3 * 65536);
    EXPECT_EQ(FIX2INT(0x00018000), 1);   // 1.5 truncates down
    EXPECT_EQ(FIX2INT(-1), -1);          // -1/65536 goes towards minus infinity
    EXPECT_EQ(FIX2INT(-0x00018000), -2); // -1.5
    EXPECT_EQ(FIX2INT_ROUND(0x00008000), 1);
    EXPECT_EQ(FIX2INT_ROUND(0x00007FFF), 0);
    EXPECT_EQ(FIX2INT_ROUND(-0x00008000), 0);  // half rounds up
    EXPECT_DOUBLE_EQ(FIX_2_FLOAT(0x00014000), 1.25);
    EXPECT_DOUBLE_EQ(FIX_2_FLOAT(-0x00008000), -0.5);

    // Half a unit (1/131072) rounds away from zero on both sides.
    EXPECT_EQ(FLOAT2FIX(1.0 / 131072.0), 1);
    EXPECT_EQ(FLOAT2FIX(-1.0 / 131072.0), -1);
    EXPECT_EQ(FLOAT2FIX(1.25), 0x00014000);
    EXPECT_EQ(FLOAT2FIX(-0.5), -32768);
}

TEST(HostApiMacros, ChannelAndRatioHelpers) {
    EXPECT_EQ(CONVERT8TO16(0), 0);
    EXPECT_EQ(CONVERT8TO16(255), 32768);
    EXPECT_EQ(CONVERT8TO16(128), 16448);  // (128 * 32768 + 128) / 255 = 16448.75
    PF_RationalScale half = {1, 2};
    EXPECT_DOUBLE_EQ(RATIO2FLOAT(half), 0.5);

    PF_Rect r = {1, 2, 3, 4};
    PF_FixedRect fr;
    PF_RECT_2_FIXEDRECT(r, fr);
    EXPECT_EQ(fr.left, 65536);
    EXPECT_EQ(fr.top, 131072);
    EXPECT_EQ(fr.bottom, 4 * 65536);
    fr.right = 0x00028000;  // 2.5 rounds half up to 3
    PF_FIXEDRECT_2_RECT(fr, r);
    EXPECT_EQ(r.right, 3);
    EXPECT_EQ(r.top, 2);
}

TEST(HostApiMacros, WorldAndParamTests) {
    PF_EffectWorld world{};
    EXPECT_FALSE(PF_WORLD_IS_DEEP(&world));
    world.world_flags = PF_WorldFlag_DEEP | PF_WorldFlag_WRITEABLE;
    EXPECT_TRUE(PF_WORLD_IS_DEEP(&world));

    PF_ParamDef def{};
    def.ui_flags = PF_PUI_DISABLED;
    def.flags = PF_ParamFlag_SUPERVISE;
    EXPECT_TRUE(PF_ParamDef_IS_PUI_FLAG_SET(&def, PF_PUI_DISABLED));
    EXPECT_FALSE(PF_ParamDef_IS_PUI_FLAG_SET(&def, PF_PUI_INVISIBLE));
    EXPECT_TRUE(PF_ParamDef_IS_PARAM_FLAG_SET(&def, PF_ParamFlag_SUPERVISE));
    EXPECT_FALSE(PF_ParamDef_IS_PARAM_FLAG_SET(&def, PF_ParamFlag_CANNOT_TIME_VARY));

    EXPECT_TRUE(PF_ALPHA_PREMUL(PF_MF_Alpha_PREMUL));
    EXPECT_TRUE(PF_ALPHA_STRAIGHT(PF_MF_Alpha_STRAIGHT));
    EXPECT_FALSE(PF_ALPHA_STRAIGHT(PF_MF_Alpha_PREMUL));
    EXPECT_TRUE(PF_VALUEFLAG_IS_PERCENT(PF_ValueDisplayFlag_PERCENT));
    EXPECT_FALSE(PF_VALUEFLAG_IS_PIXEL(PF_ValueDisplayFlag_PERCENT));
}

// ---- Callback access macros: a recording fake of the host's tables ------------------------

struct Recorded {
    PF_ProgPtr effect_ref = nullptr;
    PF_ParamIndex index = 0;
    A_long time = 0, step = 0;
    A_u_long scale = 0;
    PF_ParamDef* param = nullptr;
    PF_InData* in_data = nullptr;
    A_u_longlong size = 0;
    PF_Handle handle = nullptr;
};
Recorded g_rec;

PF_ProgPtr fakeRef() { return reinterpret_cast<PF_ProgPtr>(static_cast<std::uintptr_t>(0x5150)); }

PF_Err recordCheckout(PF_ProgPtr ref, PF_ParamIndex index, A_long time, A_long step,
                      A_u_long scale, PF_ParamDef* param) {
    g_rec.effect_ref = ref;
    g_rec.index = index;
    g_rec.time = time;
    g_rec.step = step;
    g_rec.scale = scale;
    g_rec.param = param;
    return PF_Err_INVALID_INDEX;
}

PF_Err recordAdd(PF_ProgPtr ref, PF_ParamIndex index, PF_ParamDefPtr def) {
    g_rec.effect_ref = ref;
    g_rec.index = index;
    g_rec.param = def;
    return PF_Err_NONE;
}

PF_Err recordProgress(PF_ProgPtr ref, A_long current, A_long total) {
    g_rec.effect_ref = ref;
    g_rec.time = current;
    g_rec.step = total;
    return PF_Interrupt_CANCEL;
}

PF_Handle recordNewHandle(A_u_longlong size) {
    g_rec.size = size;
    return reinterpret_cast<PF_Handle>(static_cast<std::uintptr_t>(0x7000));
}

void recordDispose(PF_Handle h) { g_rec.handle = h; }

PF_Err recordIterate(PF_InData* in_data, A_long base, A_long final_, PF_EffectWorld*,
                     const PF_Rect*, void*, PF_IteratePixel8Func, PF_EffectWorld*) {
    g_rec.in_data = in_data;
    g_rec.time = base;
    g_rec.step = final_;
    return PF_Err_NONE;
}

A_FpLong recordAtan2(A_FpLong y, A_FpLong x) { return y * 10.0 + x; }
A_FpLong recordPow(A_FpLong x, A_FpLong y) { return x * 10.0 + y; }

class CallbackMacros : public ::testing::Test {
protected:
    void SetUp() override {
        g_rec = Recorded{};
        in_data_storage.effect_ref = fakeRef();
        in_data_storage.inter.checkout_param = recordCheckout;
        in_data_storage.inter.add_param = recordAdd;
        in_data_storage.inter.progress = recordProgress;
        utils.host_new_handle = recordNewHandle;
        utils.host_dispose_handle = recordDispose;
        utils.iterate = recordIterate;
        utils.ansi.atan2 = recordAtan2;
        utils.ansi.pow = recordPow;
        utils.ansi.sprintf = std::sprintf;
        utils.ansi.strcpy = std::strcpy;
        in_data_storage.utils = &utils;
    }

    PF_InData in_data_storage{};
    PF_UtilCallbacks utils{};
};

TEST_F(CallbackMacros, InteractMacrosPassEffectRefAndArgumentsInOrder) {
    PF_InData* in_data = &in_data_storage;
    PF_ParamDef def{};
    EXPECT_EQ(PF_CHECKOUT_PARAM(in_data, 3, 100, 4, 24, &def), PF_Err_INVALID_INDEX);
    EXPECT_EQ(g_rec.effect_ref, fakeRef());
    EXPECT_EQ(g_rec.index, 3);
    EXPECT_EQ(g_rec.time, 100);
    EXPECT_EQ(g_rec.step, 4);
    EXPECT_EQ(g_rec.scale, 24u);
    EXPECT_EQ(g_rec.param, &def);

    EXPECT_EQ(PF_ADD_PARAM(in_data, -1, &def), PF_Err_NONE);
    EXPECT_EQ(g_rec.index, -1);
    EXPECT_EQ(g_rec.param, &def);

    EXPECT_EQ(PF_PROGRESS(in_data, 7, 9), PF_Interrupt_CANCEL);
    EXPECT_EQ(g_rec.time, 7);
    EXPECT_EQ(g_rec.step, 9);
}

TEST_F(CallbackMacros, UtilityMacrosReachTheRightSlots) {
    PF_InData* in_data = &in_data_storage;
    PF_Handle h = PF_NEW_HANDLE(48);
    EXPECT_EQ(g_rec.size, 48u);
    PF_DISPOSE_HANDLE(h);
    EXPECT_EQ(g_rec.handle, h);

    // The iterate macro hands the whole in-data to the host, not the effect reference.
    EXPECT_EQ(PF_ITERATE(2, 5, nullptr, nullptr, nullptr, nullptr, nullptr), PF_Err_NONE);
    EXPECT_EQ(g_rec.in_data, in_data);
    EXPECT_EQ(g_rec.time, 2);
    EXPECT_EQ(g_rec.step, 5);

    // Two-argument math keeps the written order.
    EXPECT_DOUBLE_EQ(PF_ATAN2(1.0, 2.0), 12.0);
    EXPECT_DOUBLE_EQ(PF_POW(3.0, 4.0), 34.0);

    char buffer[32];
    PF_SPRINTF(buffer, "%d-%s", 42, "x");
    EXPECT_STREQ(buffer, "42-x");
    PF_STRCPY(buffer, "Texture");
    EXPECT_STREQ(buffer, "Texture");
}

TEST(HostApiMacros, ParamNameSpellingsResolve) {
    PF_ParamDef def{};
    std::strcpy(def.PF_DEF_NAME, "Hyperboloid");
    EXPECT_STREQ(def.name_do_not_use_directly, "Hyperboloid");
    EXPECT_EQ(sizeof(def.PF_DEF_NAME), 32u);
    def.u.pd.u.PF_DEF_NAMESPTR = "A|B";
    def.u.bd.u.PF_DEF_NAMEPTR = "On";
    EXPECT_STREQ(def.u.bd.u.nameptr, "On");
}

}  // namespace
