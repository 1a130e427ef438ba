// Every host call of a complete effect lifetime, failed one at a time: the effect must return
// the failure (or swallow it where it is meant to), never crash, and give every handle,
// suite, checkout, world and stream back.

#include <gtest/gtest.h>

#include <chrono>
#include <cstdio>
#include <set>
#include <sstream>

#include "reliability/FaultPlan.h"
#include "reliability/FaultRun.h"

namespace reliability {
namespace {

constexpr unsigned kRunTimeoutSeconds = 60;
constexpr std::size_t kFailuresShown = 400;

// The clean lifetime every sweep numbers its fault points by, counted once.
const CountingRun& counting() {
    static const CountingRun run = countHostCalls();
    return run;
}

TEST(FaultSweep, CleanLifetimeSucceedsAndLeavesNothingBehind) {
    ASSERT_TRUE(counting().lifetime.loaded);
    for (const StepResult& step : counting().lifetime.steps)
        EXPECT_EQ(step.err, PF_Err_NONE) << step.name;
    EXPECT_EQ(counting().lifetime.leaks, "");
    EXPECT_EQ(counting().names.size(), counting().lifetime.steps.back().end_call - 1)
        << "every recorded call falls inside a step";
}

TEST(FaultSweep, EveryFailedHostCallIsReturnedOrSwallowedAndReleasesEverything) {
    const FaultPlan plan = planFaults(counting().lifetime, counting().names);
    ASSERT_FALSE(plan.points.empty());

    const auto start = std::chrono::steady_clock::now();
    std::vector<std::string> failures;
    std::set<std::string> names;
    for (const FaultPoint& point : plan.points) {
        names.insert(point.name);
        const std::string problems = runWithFault(point, point.error, kRunTimeoutSeconds);
        if (!problems.empty()) {
            failures.push_back("call " + std::to_string(point.call) + " " + point.name + " in " +
                               counting().lifetime.steps[point.step].name + ": " + problems);
        }
    }
    const double seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    std::printf("fault sweep: %zu fault points failed one at a time over %zu host entry points "
                "(%llu calls in the lifetime, %llu calls that cannot fail, %llu repeated sampling calls "
                "thinned), %zu failures, %.1f s\n",
                plan.points.size(), names.size(), static_cast<unsigned long long>(plan.total_calls),
                static_cast<unsigned long long>(plan.inert_calls),
                static_cast<unsigned long long>(plan.thinned_calls), failures.size(), seconds);
    std::ostringstream shown;
    for (std::size_t i = 0; i < failures.size() && i < kFailuresShown; ++i) shown << failures[i] << "\n";
    EXPECT_TRUE(failures.empty()) << failures.size() << " fault points mishandled:\n" << shown.str();
}

TEST(FaultSweep, EachIterationCancelledByTheUserEndsTheFrameCleanly) {
    const FaultPlan plan = planFaults(counting().lifetime, counting().names);
    int iterations = 0;
    std::ostringstream failures;
    for (FaultPoint point : plan.points) {
        if (point.name != "iterate_generic") continue;
        ++iterations;
        point.allowed = Allowed{};
        point.allowed.injected = true;  // a cancel is returned as it is, after the clean-up
        const std::string problems = runWithFault(point, PF_Interrupt_CANCEL, kRunTimeoutSeconds);
        if (!problems.empty()) failures << "call " << point.call << ": " << problems << "\n";
    }
    std::printf("cancel sweep: %d iterations cancelled\n", iterations);
    EXPECT_EQ(failures.str(), "");
}

TEST(FaultSweep, AHostFunctionThatAlwaysFailsNeverCrashesOrLeaks) {
    std::set<std::string> names(counting().names.begin(), counting().names.end());
    std::ostringstream failures;
    for (const std::string& name : names) {
        if (isInert(name)) continue;
        const std::string problems = runWithPersistentFault(name, kRunTimeoutSeconds);
        if (!problems.empty()) failures << name << ": " << problems << "\n";
    }
    std::printf("persistent faults: %zu host entry points failed on every call\n", names.size());
    EXPECT_EQ(failures.str(), "");
}

}  // namespace
}  // namespace reliability
