// The per-command log of host calls: counts by name and command, merged over the iteration
// threads, forbidden render-thread calls marked, and the strict mode refusing exactly those.

#include <gtest/gtest.h>

#include <string>
#include <thread>
#include <vector>

#include "AE_EffectCBSuites.h"
#include "host/checks/CallTally.h"
#include "host/checks/FaultInjector.h"
#include "host/session/Host.h"
#include "host/checks/RenderCallLog.h"

namespace host {
namespace {

const CallCount* find(const std::vector<CallCount>& counts, const std::string& name) {
    for (const CallCount& c : counts)
        if (c.name == name) return &c;
    return nullptr;
}

// Eight threads counting at once, switching between two tallies as iteration workers switch
// between two renders: nothing is lost and nothing is counted in the wrong tally.
TEST(CallTally, ThreadsCountingAtOnceLoseNothing) {
    CallTally a, b;
    constexpr int kThreads = 8, kCalls = 20000;
    std::vector<std::thread> threads;
    for (int t = 0; t < kThreads; ++t)
        threads.emplace_back([&, t] {
            for (int i = 0; i < kCalls; ++i) {
                a.count(PF_Cmd_SMART_RENDER, "subpixel_sample");
                if (i % 3 == 0) b.count(PF_Cmd_SMART_RENDER, "subpixel_sample");
                if (t == 0 && i % 1000 == 0) a.count(PF_Cmd_SMART_RENDER, "progress");
            }
        });
    for (std::thread& t : threads) t.join();
    const std::vector<CallCount> in_a = a.totals(PF_Cmd_SMART_RENDER);
    ASSERT_EQ(in_a.size(), 2u);
    EXPECT_EQ(find(in_a, "subpixel_sample")->calls, std::uint64_t(kThreads) * kCalls);
    EXPECT_EQ(find(in_a, "progress")->calls, std::uint64_t(kCalls / 1000));
    EXPECT_EQ(find(b.totals(PF_Cmd_SMART_RENDER), "subpixel_sample")->calls,
              std::uint64_t(kThreads) * ((kCalls + 2) / 3));
}

// A tally at the address of one destroyed on this thread starts from zero.
TEST(CallTally, ANewTallyNeverInheritsTheCountsOfAnOldOne) {
    for (int round = 0; round < 3; ++round) {
        auto tally = std::make_unique<CallTally>();
        tally->count(PF_Cmd_SMART_RENDER, "abort");
        EXPECT_EQ(tally->totals(PF_Cmd_SMART_RENDER).at(0).calls, 1u) << round;
    }
}

TEST(RenderCallLog, MarksTheCallsAfterEffectsRefusesAndSumsFrames) {
    for (const char* name : {"AEGP_GetNewLayerStream", "AEGP_DisposeStream", "AEGP_SetExpression",
                             "AEGP_SetExpressionState", "AEGP_GetStreamName", "AEGP_StartUndoGroup",
                             "AEGP_EndUndoGroup", "AEGP_DisposeEffect"})
        EXPECT_TRUE(forbiddenOnRenderThread(name)) << name;
    EXPECT_EQ(renderThreadForbiddenNames().size(), 8u);
    // Reading values, effect access and layer queries stay allowed.
    for (const char* name : {"AEGP_GetNewStreamValue", "AEGP_DisposeStreamValue", "AEGP_GetLayerStreamValue",
                             "AEGP_GetNewEffectForEffect", "AEGP_GetEffectLayer", "AEGP_SetLayerFlag",
                             "area_sample", "AcquireSuite", ""})
        EXPECT_FALSE(forbiddenOnRenderThread(name)) << name;

    // Two frames' logs summed by name, in name order, the forbidden calls marked and listed once.
    // Equal names given by different pointers are one name.
    CallTally first, second;
    const char iterate[] = "iterate_generic", same_name[] = "iterate_generic";
    first.count(PF_Cmd_SMART_PRE_RENDER, "AEGP_GetNewLayerStream");
    first.count(PF_Cmd_SMART_RENDER, "AEGP_GetNewLayerStream");
    first.count(PF_Cmd_SMART_RENDER, iterate);
    first.count(PF_Cmd_SMART_RENDER, "checkout_output");
    first.count(PF_Cmd_SMART_RENDER, same_name);
    EXPECT_EQ(first.totals(PF_Cmd_SMART_RENDER).size(), 3u);
    EXPECT_TRUE(first.totals(PF_Cmd_UPDATE_PARAMS_UI).empty());
    second.count(PF_Cmd_SMART_RENDER, "AEGP_DisposeStream");
    second.refuse(PF_Cmd_SMART_RENDER, "AEGP_DisposeStream");
    second.count(PF_Cmd_SMART_PRE_RENDER, "checkout_layer");
    RenderCallLog total;
    total.add(renderCallLog(first));
    total.add(renderCallLog(second));
    EXPECT_EQ(total.forbidden_calls(), (std::vector<std::string>{"AEGP_DisposeStream", "AEGP_GetNewLayerStream"}));
    EXPECT_TRUE(find(total.pre_render, "AEGP_GetNewLayerStream")->forbidden);
    ASSERT_EQ(total.render.size(), 4u);
    EXPECT_EQ(total.render[0].name, "AEGP_DisposeStream");
    EXPECT_TRUE(total.render[0].forbidden);
    EXPECT_EQ(total.render[0].refused, 1u);
    EXPECT_EQ(total.render[2].name, "checkout_output");
    EXPECT_FALSE(total.render[2].forbidden);
    EXPECT_EQ(total.render[3].name, "iterate_generic");
    EXPECT_EQ(total.render[3].calls, 2u);
    EXPECT_EQ(total.calls(PF_Cmd_SMART_PRE_RENDER, "checkout_layer"), 1u);
    EXPECT_EQ(total.calls(PF_Cmd_SMART_RENDER, "checkout_layer"), 0u);
}

TEST(CurrentCommand, NestsAndRestoresPerThread) {
    CallContext outer, inner;
    EXPECT_EQ(CallContext::current(), nullptr);
    {
        CurrentCommand a(&outer);
        {
            CurrentCommand b(&inner);
            EXPECT_EQ(CallContext::current(), &inner);
            CallContext* seen_elsewhere = &inner;
            std::thread([&] { seen_elsewhere = CallContext::current(); }).join();
            EXPECT_EQ(seen_elsewhere, nullptr);  // another thread runs no command
        }
        EXPECT_EQ(CallContext::current(), &outer);
    }
    EXPECT_EQ(CallContext::current(), nullptr);
}

// Every entry point passes the gate, which logs it in the running command and, in strict
// mode during a smart command, refuses exactly the marked names.
HostOptions strict() {
    HostOptions o;
    o.strict_render_thread = true;
    return o;
}

TEST(EntryGate, StrictModeRefusesExactlyTheMarkedNamesDuringARender) {
    Host session(strict());
    auto scope = session.render_scope();
    for (const std::string& name : renderThreadForbiddenNames())
        EXPECT_EQ(HOST_FAULT_POINT(name.c_str()), A_Err_WRONG_THREAD) << name;
    for (const char* name : {"AEGP_GetNewStreamValue", "AEGP_SetLayerFlag", "AEGP_SetLightType", "area_sample"})
        EXPECT_EQ(HOST_FAULT_POINT(name), A_Err_NONE) << name;
    const std::vector<CallCount> logged = scope->context().calls().totals(PF_Cmd_SMART_RENDER);
    EXPECT_EQ(logged.size(), renderThreadForbiddenNames().size() + 4);
    for (const CallCount& c : logged) EXPECT_EQ(c.refused, forbiddenOnRenderThread(c.name) ? 1u : 0u) << c.name;
}

// Outside a render or without strict mode nothing is refused. An injected fault comes first:
// the call is logged, fails with the injected error and is not counted as refused.
TEST(EntryGate, OnlyStrictRendersRefuseAndInjectedFaultsWin) {
    {
        Host session(strict());
        EXPECT_EQ(HOST_FAULT_POINT("AEGP_GetNewLayerStream"), A_Err_NONE);  // no command running
    }
    Host lenient;
    auto lenient_scope = lenient.render_scope();
    EXPECT_EQ(HOST_FAULT_POINT("AEGP_GetNewLayerStream"), A_Err_NONE);
    lenient_scope.reset();
    Host session(strict());
    session.faults().fail_every("AEGP_DisposeStream", A_Err_ALLOC);
    auto scope = session.render_scope();
    EXPECT_EQ(HOST_FAULT_POINT("AEGP_DisposeStream"), A_Err_ALLOC);
    const CallCount c = scope->context().calls().totals(PF_Cmd_SMART_RENDER).at(0);
    EXPECT_EQ(c.calls, 1u);
    EXPECT_EQ(c.refused, 0u);
}

}  // namespace
}  // namespace host
