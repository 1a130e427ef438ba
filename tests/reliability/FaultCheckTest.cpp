// The sweep's own judgement, on hand-made lifetimes: a run is accepted only when the faulted
// step answers as allowed, every other step succeeds and nothing stays behind.

#include <gtest/gtest.h>

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

// A lifetime that ended with the module refusing to load with `error`.
void refusedLoad(LifetimeResult& r, const std::string& error) {
    r.loaded = false;
    r.steps.resize(1);
    r.steps[0].host_error = "Orbivane: PARAMS_SETUP failed with " + error;
}

// Each row edits a clean run of the counted lifetime and faults one call of it.
TEST(FaultCheckTest, AcceptsOnlyRunsThatHandleTheFaultAsAllowed) {
    struct Row {
        const char* what;
        std::uint64_t call;
        std::uint64_t injected;  // times the fault was reached
        void (*edit)(LifetimeResult&, PF_Err);
        bool accepted;
    };
    const Row rows[] = {
        {"the injected error from the faulted step", 23, 1, [](LifetimeResult& r, PF_Err e) { r.steps[4].err = e; }, true},
        {"a swallowed error that must be returned", 23, 1, [](LifetimeResult&, PF_Err) {}, false},
        {"an error where the failure must be swallowed", 9, 1,
         [](LifetimeResult& r, PF_Err e) { r.steps[2].err = e; }, false},
        {"a later step that no longer works", 23, 1,
         [](LifetimeResult& r, PF_Err e) { r.steps[4].err = e, r.steps[5].err = PF_Err_BAD_CALLBACK_PARAM; },
         false},
        {"an exception through the entry point", 9, 1,
         [](LifetimeResult& r, PF_Err) {
             r.steps[2].host_error = "Orbivane: an exception escaped the entry point during PF_Cmd_USER_CHANGED_PARAM";
         },
         false},
        {"a fault that was never reached", 9, 0, [](LifetimeResult&, PF_Err) {}, false},
        {"a leak after a failed sample", 20, 1, [](LifetimeResult& r, PF_Err) { r.leaks = "leaked 1 x world\n"; }, false},
        {"the one object of a failed release", 24, 1,
         [](LifetimeResult& r, PF_Err) { r.leaks = "leaked 1 x suite (PF World Suite v2)\n"; }, true},
        {"more than the object of a failed release", 24, 1,
         [](LifetimeResult& r, PF_Err) { r.leaks = "leaked 2 x suite (PF World Suite v2)\n"; }, false},
        {"a refused load naming the injected error", 4, 1,
         [](LifetimeResult& r, PF_Err) { refusedLoad(r, "PF_Err_INTERNAL_STRUCT_DAMAGED"); }, true},
        {"a refused load naming another error", 4, 1,
         [](LifetimeResult& r, PF_Err) { refusedLoad(r, "PF_Err_OUT_OF_MEMORY"); }, false},
    };
    const FaultPlan plan = planFaults(countedLifetime(), countedNames());
    for (const Row& row : rows) {
        const FaultPoint& p = pointAt(plan, row.call);
        LifetimeResult run = countedLifetime();
        row.edit(run, p.error);
        EXPECT_EQ(checkFaultedLifetime(p, p.error, run, row.injected).empty(), row.accepted) << row.what;
    }
}

}  // namespace
}  // namespace reliability
