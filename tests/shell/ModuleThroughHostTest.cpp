// The built module loaded by the emulated host: it is accepted, answers as it should and gives
// every resource back when unloaded.

#include <gtest/gtest.h>

#include <string>

#include "host/Host.h"
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

    EXPECT_EQ(session.about(), PF_Err_NONE);
    EXPECT_EQ(session.return_msg().rfind("Orbivane, v1.1.6\n", 0), 0u) << session.return_msg();

    EXPECT_EQ(session.unload(), "") << "global set-up and set-down leave nothing behind";
}

}  // namespace
