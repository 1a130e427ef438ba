// Hiding "dammy" on hosts that do not honour PF_PUI_INVISIBLE (effect API below 13.2, i.e.
// before After Effects CS6): there the interface update hides the slider's stream through its
// dynamic flags on every call; newer hosts are left to the parameter's own flag.

#include <gtest/gtest.h>

#include <ostream>

#include "shell/ParamIds.h"
#include "shell/params_ui/UiSession.h"

namespace ui_test {
namespace {

struct ApiCase {
    A_short major;
    A_short minor;
    bool hides_by_stream;
};

std::ostream& operator<<(std::ostream& out, const ApiCase& c)
{
    return out << c.major << "." << c.minor;
}

host::HostOptions atVersion(const ApiCase& c)
{
    host::HostOptions options;
    options.api_major = c.major;
    options.api_minor = c.minor;
    return options;
}

class HostVersion : public ::testing::TestWithParam<ApiCase> {
protected:
    HostVersion() : ui(atVersion(GetParam())) {}

    UiSession ui;
};

TEST_P(HostVersion, DammyIsHiddenByItsStreamOnlyBefore13Point2)
{
    const bool hides = GetParam().hides_by_stream;
    // Applying the effect sends the first interface update.
    EXPECT_EQ((ui.dynamicFlags(PARAM_DAMMY) & AEGP_DynStreamFlag_HIDDEN) != 0, hides);
    EXPECT_EQ(ui.dynamicFlags(PARAM_DAMMY) & ~AEGP_DynStreamFlags(AEGP_DynStreamFlag_HIDDEN), 0)
        << "no other flag is touched";
    for (PF_ParamIndex index = PARAM_INPUT; index < PARAM_DAMMY; ++index) {
        EXPECT_EQ(ui.dynamicFlags(index), 0) << "index " << index;
    }

    // ... and again on every later update, each time with its effect and stream given back.
    const std::string leaks_before = ui.session.leaks();
    const std::vector<std::string> calls = ui.callsOf([&] {
        EXPECT_EQ(ui.session.update_params_ui(), PF_Err_NONE);
    });
    EXPECT_EQ(positionsOf(calls, "AEGP_SetDynamicStreamFlag").size(), hides ? 1u : 0u);
    EXPECT_EQ(ui.session.leaks(), leaks_before);
    EXPECT_EQ(ui.session.unload(), "");
}

TEST_P(HostVersion, FailureToHideDoesNotStopTheGreying)
{
    ui.session.faults().fail_every("AEGP_SetDynamicStreamFlag", A_Err_GENERIC);
    ui.session.faults().fail_every("AEGP_GetNewEffectStreamByIndex", A_Err_GENERIC);
    EXPECT_EQ(ui.chooseControlLayer(ui.rig_id), PF_Err_NONE);
    EXPECT_TRUE(ui.disabled(PARAM_POSITION_XY));
    ui.session.faults().reset();
}

INSTANTIATE_TEST_SUITE_P(EffectApi, HostVersion,
                         ::testing::Values(ApiCase{12, 14, true},   // CS4
                                           ApiCase{13, 1, true},    // CS5.5
                                           ApiCase{13, 2, false},   // CS6
                                           ApiCase{14, 0, false}),
                         [](const ::testing::TestParamInfo<ApiCase>& info) {
                             return "Api" + std::to_string(info.param.major) + "_" +
                                    std::to_string(info.param.minor);
                         });

}  // namespace
}  // namespace ui_test
