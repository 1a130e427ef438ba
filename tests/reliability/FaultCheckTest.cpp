// The sweep's own judgement, on hand-made lifetimes: a run is accepted only when the faulted
// step answers as allowed, every other step succeeds and nothing stays behind.

#include <gtest/gtest.h>

#include "host/SuiteRegistry.h"
#include "reliability/FaultPlan.h"
#include "reliability/FaultRun.h"

namespace reliability {
namespace {

StepResult step(const char* name, StepKind kind, std::uint64_t first, std::uint64_t end, PF_Err err = PF_Err_NONE) {
    StepResult s;
    s.name = name;
    s.kind = kind;
    s.first_call = first;
    s.end_call = end;
    s.err = err;
    return s;
}

// load: calls 1-4, interface update: 5-7, change: 8-12 (8-9 the change, 10-12 the update),
// lone update: 13-15, render: 16-24, unload: 25-26.
LifetimeResult countedLifetime() {
    LifetimeResult r;
    r.loaded = true;
    r.steps = {step("load", StepKind::Load, 1, 5),           step("ui", StepKind::UpdateUi, 5, 8),
               step("change", StepKind::ChangeParam, 8, 13), step("ui again", StepKind::UpdateUi, 13, 16),
               step("render", StepKind::Render, 16, 25),     step("unload", StepKind::Unload, 25, 27)};
    return r;
}

std::vector<std::string> countedNames() {
    return {"AcquireSuite", "AEGP_RegisterWithAEGP", "ReleaseSuite", "add_param",          // load
            "AcquireSuite", "PF_UpdateParamUI", "ReleaseSuite",                            // ui
            "AEGP_GetNewEffectForEffect", "AEGP_SetExpression",                            // change
            "AcquireSuite", "PF_UpdateParamUI", "ReleaseSuite",                            //   its update
            "AcquireSuite", "PF_UpdateParamUI", "ReleaseSuite",                            // ui again
            "checkout_layer", "AcquireSuite", "AcquireSuite", "AcquireSuite", "area_sample",
            "area_sample", "area_sample", "iterate_generic", "ReleaseSuite",               // render
            "host_lock_handle", "host_dispose_handle"};                                    // unload
}

const FaultPoint& pointAt(const FaultPlan& plan, std::uint64_t call) {
    for (const FaultPoint& p : plan.points)
        if (p.call == call) return p;
    static FaultPoint none;
    ADD_FAILURE() << "call " << call << " is not in the plan";
    return none;
}

TEST(FaultPlanTest, SkipsCallsThatCannotFailAndThinsRepeatedSampling) {
    const FaultPlan plan = planFaults(countedLifetime(), countedNames());
    EXPECT_EQ(plan.total_calls, 26u);
    EXPECT_EQ(plan.inert_calls, 2u);    // the handle lock and dispose of set-down
    EXPECT_EQ(plan.thinned_calls, 1u);  // the middle one of three area samples
    EXPECT_EQ(plan.points.size(), 23u);
}

TEST(FaultPlanTest, KnowsWhichFailuresTheEffectSwallows) {
    const FaultPlan plan = planFaults(countedLifetime(), countedNames());
    EXPECT_TRUE(pointAt(plan, 2).allowed.none) << "registration result is only stored";
    EXPECT_FALSE(pointAt(plan, 4).allowed.none) << "a refused parameter fails set-up";
    EXPECT_FALSE(pointAt(plan, 6).allowed.none) << "a refused control update ends the update";
    EXPECT_TRUE(pointAt(plan, 9).allowed.none) << "a parameter change swallows everything";
    EXPECT_FALSE(pointAt(plan, 9).allowed.injected);
    EXPECT_FALSE(pointAt(plan, 11).allowed.none) << "the update after the change does not";
    EXPECT_FALSE(pointAt(plan, 16).allowed.none) << "pre-render returns its checkout error";
    EXPECT_TRUE(pointAt(plan, 17).allowed.none) << "8-bit sampling suite";
    EXPECT_FALSE(pointAt(plan, 17).allowed.injected);
    EXPECT_TRUE(pointAt(plan, 18).allowed.none) << "16-bit sampling suite";
    EXPECT_FALSE(pointAt(plan, 19).allowed.none) << "float sampling suite";
    EXPECT_FALSE(pointAt(plan, 23).allowed.none) << "iteration";
    EXPECT_TRUE(pointAt(plan, 24).allowed.may_leak) << "a refused release";
}

TEST(FaultPlanTest, InjectsMemoryErrorsIntoAllocationsAndSuiteErrorsIntoSuiteLoads) {
    EXPECT_EQ(errorFor("host_new_handle"), PF_Err_OUT_OF_MEMORY);
    EXPECT_EQ(errorFor("PF_NewWorld"), PF_Err_OUT_OF_MEMORY);
    EXPECT_EQ(errorFor("AcquireSuite"), kSPSuiteNotFoundError);
    EXPECT_EQ(errorFor("AEGP_GetLayerFlags"), PF_Err_INTERNAL_STRUCT_DAMAGED);
}

class FaultCheckTest : public ::testing::Test {
protected:
    FaultPlan plan = planFaults(countedLifetime(), countedNames());
    LifetimeResult run = countedLifetime();
};

TEST_F(FaultCheckTest, AcceptsTheInjectedErrorFromTheFaultedStep) {
    const FaultPoint& p = pointAt(plan, 23);
    run.steps[4].err = p.error;
    EXPECT_EQ(checkFaultedLifetime(p, p.error, run, 1), "");
}

TEST_F(FaultCheckTest, RejectsASwallowedErrorThatMustBeReturned) {
    const FaultPoint& p = pointAt(plan, 23);
    EXPECT_NE(checkFaultedLifetime(p, p.error, run, 1), "");
}

TEST_F(FaultCheckTest, RejectsAnErrorWhereTheFailureMustBeSwallowed) {
    const FaultPoint& p = pointAt(plan, 9);
    run.steps[2].err = p.error;
    EXPECT_NE(checkFaultedLifetime(p, p.error, run, 1), "");
}

TEST_F(FaultCheckTest, RejectsALaterStepThatNoLongerWorks) {
    const FaultPoint& p = pointAt(plan, 23);
    run.steps[4].err = p.error;
    run.steps[5].err = PF_Err_BAD_CALLBACK_PARAM;
    EXPECT_NE(checkFaultedLifetime(p, p.error, run, 1), "");
}

TEST_F(FaultCheckTest, RejectsAnExceptionThroughTheEntryPoint) {
    const FaultPoint& p = pointAt(plan, 9);
    run.steps[2].host_error = "Orbivane: an exception escaped the entry point during PF_Cmd_USER_CHANGED_PARAM";
    EXPECT_NE(checkFaultedLifetime(p, p.error, run, 1), "");
}

TEST_F(FaultCheckTest, RejectsAFaultThatWasNeverReached) {
    const FaultPoint& p = pointAt(plan, 9);
    EXPECT_NE(checkFaultedLifetime(p, p.error, run, 0), "");
}

TEST_F(FaultCheckTest, RejectsLeaksExceptTheObjectOfAFailedRelease) {
    const FaultPoint& sample = pointAt(plan, 20);
    run.leaks = "leaked 1 x world\n";
    EXPECT_NE(checkFaultedLifetime(sample, sample.error, run, 1), "");
    const FaultPoint& release = pointAt(plan, 24);
    run.leaks = "leaked 1 x suite (PF World Suite v2)\n";
    EXPECT_EQ(checkFaultedLifetime(release, release.error, run, 1), "");
    run.leaks = "leaked 2 x suite (PF World Suite v2)\n";
    EXPECT_NE(checkFaultedLifetime(release, release.error, run, 1), "");
}

TEST_F(FaultCheckTest, ARefusedLoadMustNameTheInjectedError) {
    const FaultPoint& p = pointAt(plan, 4);
    run.loaded = false;
    run.steps.resize(1);
    run.steps[0].host_error = "Orbivane: PARAMS_SETUP failed with PF_Err_INTERNAL_STRUCT_DAMAGED";
    EXPECT_EQ(checkFaultedLifetime(p, p.error, run, 1), "");
    run.steps[0].host_error = "Orbivane: PARAMS_SETUP failed with PF_Err_OUT_OF_MEMORY";
    EXPECT_NE(checkFaultedLifetime(p, p.error, run, 1), "");
}

}  // namespace
}  // namespace reliability
