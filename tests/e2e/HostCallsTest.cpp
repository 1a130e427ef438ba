// What the effect calls on the host while rendering, and what After Effects' render-thread rule
// would make of it.

#include <gtest/gtest.h>

#include <tuple>

#include "e2e/SceneFiles.h"

namespace {

// The pre-render only declares its input; the render checks it out, finds the camera and
// lights and runs one pixel pass. Without a control layer it calls nothing that After Effects
// refuses on render threads.
TEST(HostCalls, EachSmartCommandListsWhatTheEffectCalled)
{
    const auto session = e2e::openScene("lights.json");
    const host::RenderResult frame = e2e::renderScene(*session);
    ASSERT_EQ(frame.err, PF_Err_NONE);
    const host::RenderCallLog& log = frame.calls;
    const std::tuple<PF_Cmd, const char*, unsigned> counts[] = {
        {PF_Cmd_SMART_PRE_RENDER, "checkout_layer", 1},      {PF_Cmd_SMART_PRE_RENDER, "checkout_output", 0},
        {PF_Cmd_SMART_RENDER, "checkout_layer", 0},          {PF_Cmd_SMART_RENDER, "checkout_layer_pixels", 1},
        {PF_Cmd_SMART_RENDER, "checkout_output", 1},         {PF_Cmd_SMART_RENDER, "iterate_generic", 1},
        {PF_Cmd_SMART_RENDER, "AEGP_GetEffectCamera", 1},    {PF_Cmd_SMART_RENDER, "AEGP_GetNewEffectForEffect", 0},
        // Of the three lights only the one switched on and already started is read.
        {PF_Cmd_SMART_RENDER, "AEGP_GetLightType", 1}};
    for (const auto& [cmd, name, calls] : counts) EXPECT_EQ(log.calls(cmd, name), calls) << name << " in " << cmd;
    // Every suite acquired is given back.
    EXPECT_EQ(log.calls(PF_Cmd_SMART_RENDER, "AcquireSuite"), log.calls(PF_Cmd_SMART_RENDER, "ReleaseSuite"));
    EXPECT_TRUE(log.forbidden_calls().empty());
    // The host keeps the last render's log as well.
    EXPECT_EQ(session->host().last_render_calls().render.size(), log.render.size());
}

// The control layer's handle comes with its checked-out value: the render makes no call After
// Effects refuses, takes no effect or stream reference, and leaks nothing even in strict mode.
// A host that leaves the value's layer word empty sends it down the stream route, whose two
// disposals are refused.
TEST(HostCalls, AControlLayerIsReadFromItsValueWithoutRefusedCalls)
{
    struct Case {
        bool handle_in_value;
        bool strict;
        std::vector<std::string> refused_by_after_effects;
    };
    const Case cases[] = {
        {true, false, {}},
        {true, true, {}},
        {false, false, {"AEGP_DisposeEffect", "AEGP_DisposeStream"}},
    };
    for (const Case& c : cases) {
        host::HostOptions options;
        options.layer_handle_in_params = c.handle_in_value;
        options.strict_render_thread = c.strict;
        const auto session = e2e::openScene("control_layer.json", options);
        const host::RenderResult frame = e2e::renderScene(*session);
        ASSERT_EQ(frame.err, PF_Err_NONE) << c.handle_in_value << c.strict;
        const host::RenderCallLog& log = frame.calls;
        EXPECT_EQ(log.forbidden_calls(), c.refused_by_after_effects) << c.handle_in_value << c.strict;
        EXPECT_EQ(log.calls(PF_Cmd_SMART_RENDER, "AEGP_GetNewEffectForEffect"), c.handle_in_value ? 0u : 1u);
        if (c.strict) {
            EXPECT_EQ(session->host().unload(), "");
        }
    }
}

}  // namespace
