// The built module loaded by the emulated host: it is accepted, answers as it should and gives
// every resource back when unloaded.

#include <gtest/gtest.h>

#include <string>

#include "host/session/Host.h"
#include "host/session/Pipl.h"
#include "shell/ParamIds.h"

#ifndef PF_DEF_NAME
#define PF_DEF_NAME name
#endif

namespace {

TEST(ModuleThroughHost, LoadsRegistersItsParametersAndUnloadsClean)
{
    host::Host session;
    ASSERT_NO_THROW(session.load(ORBIVANE_MODULE_PATH));
    EXPECT_EQ(session.module_version(), 0x8B601u);
    EXPECT_EQ(session.out_flags(), 0x02000001);
    EXPECT_EQ(session.out_flags2(), 0x08001406);
    ASSERT_EQ(session.num_params(), PARAM_COUNT);
    EXPECT_STREQ(session.param_def(PARAM_REFLECTION_ROLLOFF).PF_DEF_NAME, "Reflection Rolloff");
    EXPECT_EQ(session.param_def(PARAM_REFLECTION_ROLLOFF).uu.id, 32);
    EXPECT_EQ(session.param_def(PARAM_OPEN_CYLINDER_END).uu.id, 13);

    // The PiPL the host decoded (the .aex's resource on Windows, the sidecar on Linux) states
    // what global set-up reported, and names the entry point the host called.
    const host::PiplInfo* pipl = session.pipl();
    ASSERT_NE(pipl, nullptr);
    EXPECT_EQ(pipl->effect_version, session.module_version());
    EXPECT_EQ(pipl->global_out_flags, std::uint32_t(session.out_flags()));
    EXPECT_EQ(pipl->global_out_flags2, std::uint32_t(session.out_flags2()));
    EXPECT_EQ(pipl->entry_point, "EntryPointFunc");
    EXPECT_EQ(pipl->match_name, "ORBV Orbivane");

    EXPECT_EQ(session.about(), PF_Err_NONE);
    EXPECT_EQ(session.return_msg().rfind("Orbivane, v1.1.6\n", 0), 0u) << session.return_msg();

    EXPECT_EQ(session.unload(), "") << "global set-up and set-down leave nothing behind";
}

}  // namespace
