// What the effect calls on the host while rendering, and what After Effects' render-thread rule
// would make of it.

#include <gtest/gtest.h>

#include "e2e/SceneFiles.h"

namespace {

const host::CallCount* find(const std::vector<host::CallCount>& counts, const std::string& name)
{
    for (const host::CallCount& c : counts)
        if (c.name == name)
            return &c;
    return nullptr;
}

// The pre-render only declares its input; the render checks it out, finds the camera and
// lights and runs one pixel pass. Without a control layer it calls nothing that After Effects
// refuses on render threads.
TEST(HostCalls, EachSmartCommandListsWhatTheEffectCalled)
{
    const auto session = e2e::openScene("lights.json");
    const host::RenderResult frame = e2e::renderScene(*session);
    ASSERT_EQ(frame.err, PF_Err_NONE);
    const host::RenderCallLog& log = frame.calls;
    EXPECT_EQ(log.calls(PF_Cmd_SMART_PRE_RENDER, "checkout_layer"), 1u);
    EXPECT_EQ(log.calls(PF_Cmd_SMART_PRE_RENDER, "checkout_output"), 0u);
    EXPECT_EQ(log.calls(PF_Cmd_SMART_RENDER, "checkout_layer"), 0u);
    EXPECT_EQ(log.calls(PF_Cmd_SMART_RENDER, "checkout_layer_pixels"), 1u);
    EXPECT_EQ(log.calls(PF_Cmd_SMART_RENDER, "checkout_output"), 1u);
    EXPECT_EQ(log.calls(PF_Cmd_SMART_RENDER, "iterate_generic"), 1u);
    EXPECT_EQ(log.calls(PF_Cmd_SMART_RENDER, "AEGP_GetEffectCamera"), 1u);
    // Of the three lights only the one switched on and already started is read.
    EXPECT_EQ(log.calls(PF_Cmd_SMART_RENDER, "AEGP_GetLightType"), 1u);
    EXPECT_EQ(log.calls(PF_Cmd_SMART_RENDER, "AEGP_GetNewEffectForEffect"), 0u);
    // Every suite acquired is given back.
    EXPECT_EQ(log.calls(PF_Cmd_SMART_RENDER, "AcquireSuite"), log.calls(PF_Cmd_SMART_RENDER, "ReleaseSuite"));
    EXPECT_TRUE(log.forbidden_calls().empty());
    EXPECT_FALSE(find(log.render, "AEGP_GetLayerStreamValue")->forbidden);
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

// The strict mode refuses every call of a marked function and nothing else.
TEST(HostCalls, StrictModeRefusesExactlyTheMarkedCalls)
{
    host::HostOptions options;
    options.strict_render_thread = true;
    options.layer_handle_in_params = false;  // the stream route makes refused calls
    const auto session = e2e::openScene("control_layer.json", options);
    const host::RenderResult frame = e2e::renderScene(*session);
    const host::RenderCallLog& log = frame.calls;
    int refused_names = 0;
    for (const std::vector<host::CallCount>* counts : {&log.pre_render, &log.render}) {
        for (const host::CallCount& c : *counts) {
            EXPECT_EQ(c.refused, c.forbidden ? c.calls : 0u) << c.name;
            refused_names += c.refused > 0;
        }
    }
    EXPECT_EQ(refused_names, 2);
}

}  // namespace
