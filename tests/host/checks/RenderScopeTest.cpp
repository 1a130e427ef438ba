#include <gtest/gtest.h>

#include "AE_EffectCBSuites.h"
#include "host/session/Host.h"

namespace {

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
