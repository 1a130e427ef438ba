#include <gtest/gtest.h>

#include "AE_EffectCBSuites.h"
#include "host/session/Host.h"

namespace {

// Module code under test sees the real world and sampling suites through the scope's in_data.
TEST(RenderScope, AreaSampleThroughTheSuiteOnAWorldTheTestFilled) {
    host::Host session;
    auto scope = session.render_scope(8);
    PF_InData* in_data = scope->in_data();
    const PF_WorldSuite2* worlds = nullptr;
    const PF_Sampling8Suite1* sampling = nullptr;
    ASSERT_EQ(in_data->pica_basicP->AcquireSuite(kPFWorldSuite, kPFWorldSuiteVersion2,
                                                 reinterpret_cast<const void**>(&worlds)), 0);
    ASSERT_EQ(in_data->pica_basicP->AcquireSuite(kPFSampling8Suite, kPFSampling8SuiteVersion1,
                                                 reinterpret_cast<const void**>(&sampling)), 0);
    PF_EffectWorld world{};
    ASSERT_EQ(worlds->PF_NewWorld(in_data->effect_ref, 2, 1, 1, PF_PixelFormat_ARGB32, &world), PF_Err_NONE);
    PF_PixelFormat format = 0;
    ASSERT_EQ(worlds->PF_GetPixelFormat(&world, &format), PF_Err_NONE);
    EXPECT_EQ(format, PF_PixelFormat_ARGB32);
    auto* row = static_cast<PF_Pixel*>(static_cast<void*>(world.data));
    row[0] = PF_Pixel{255, 200, 0, 0};
    row[1] = PF_Pixel{255, 0, 0, 100};

    // A box exactly covering both pixels (centre between them, radii 1 x 0.5).
    PF_SampPB pb{};
    pb.src = &world;
    pb.x_radius = 1 << 16;
    pb.y_radius = 1 << 15;
    PF_Pixel out{};
    ASSERT_EQ(sampling->area_sample(in_data->effect_ref, 1 << 15, 0, &pb, &out), PF_Err_NONE);
    EXPECT_EQ(out.red, 100);

    // Written again: the next sample must see the new pixels, not a stale table.
    row[1] = PF_Pixel{0, 0, 0, 0};
    auto nothing = [](void*, A_long, A_long, A_long) -> PF_Err { return PF_Err_NONE; };
    ASSERT_EQ(in_data->utils->iterate_generic(0, nullptr, nothing), PF_Err_NONE);
    ASSERT_EQ(sampling->area_sample(in_data->effect_ref, 1 << 15, 0, &pb, &out), PF_Err_NONE);
    EXPECT_EQ(out.alpha, 128);  // half the box is transparent: 127.5 rounds up
    EXPECT_EQ(out.red, 200);    // colour is alpha-weighted

    // A 16-bit request on an 8-bit world is refused.
    PF_Pixel16 deep{};
    EXPECT_EQ(in_data->utils->area_sample16(in_data->effect_ref, 0, 0, &pb, &deep), PF_Err_BAD_CALLBACK_PARAM);

    ASSERT_EQ(worlds->PF_DisposeWorld(in_data->effect_ref, &world), PF_Err_NONE);
    in_data->pica_basicP->ReleaseSuite(kPFWorldSuite, kPFWorldSuiteVersion2);
    in_data->pica_basicP->ReleaseSuite(kPFSampling8Suite, kPFSampling8SuiteVersion1);
    EXPECT_EQ(session.leaks(), "");
}

TEST(RenderScope, InDataCarriesTheHostIdentity) {
    host::HostOptions options;
    options.api_minor = 1;
    host::Host session(options);
    auto scope = session.render_scope(16, 0.5);
    const PF_InData* in_data = scope->in_data();
    EXPECT_EQ(in_data->version.major, 13);
    EXPECT_EQ(in_data->version.minor, 1);
    EXPECT_EQ(in_data->appl_id, 0x46585443);  // 'FXTC'
    EXPECT_EQ(in_data->quality, PF_Quality_HI);
    EXPECT_EQ(in_data->current_time, 15);  // 0.5 s at 30 ticks per second without a composition
    EXPECT_NE(in_data->effect_ref, nullptr);
}

TEST(RenderScope, UncheckedParamIsALeak) {
    host::Host session;
    {
        auto scope = session.render_scope();
        PF_ParamDef def{};
        // Index 0, the input layer, exists even without a module; without a composition it is empty.
        ASSERT_EQ(PF_CHECKOUT_PARAM(scope->in_data(), 0, 0, 1, 30, &def), PF_Err_NONE);
        EXPECT_EQ(def.u.ld.data, nullptr);
    }
    EXPECT_NE(session.leaks().find("param checkout"), std::string::npos) << session.leaks();
}

}  // namespace
