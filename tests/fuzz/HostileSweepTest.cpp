// A seeded random sweep of hostile scenes and parameter values, for a bounded time. Each case
// runs in its own process: no crash, no error, nothing left behind, and finite float output
// whenever the host's values were finite.
//
// ORBIVANE_HOSTILE_SECONDS sets the time budget (default 20), ORBIVANE_HOSTILE_SEED replays one
// case (the failure message names its seed).

#include <gtest/gtest.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <sstream>
#include <string>

#include "fuzz/HostileScene.h"
#include "reliability/Isolated.h"

namespace fuzz {
namespace {

constexpr double kDefaultSeconds = 20;
constexpr int kMaxCases = 2000;
constexpr unsigned kCaseTimeoutSeconds = 60;
constexpr std::uint64_t kFirstSeed = 20261121;
constexpr std::size_t kFailuresShown = 20;

double budgetSeconds() {
    const char* text = std::getenv("ORBIVANE_HOSTILE_SECONDS");
    return text ? std::atof(text) : kDefaultSeconds;
}

std::string runIsolatedCase(std::uint64_t seed) {
    const reliability::ChildOutcome child =
        reliability::runIsolated([seed] { return runHostileCase(seed); }, kCaseTimeoutSeconds);
    if (!child.finished) return "seed " + std::to_string(seed) + ": " + child.describe() + " " + child.output;
    return child.output;
}

TEST(HostileValues, RandomScenesAndParameterExtremesRenderWithoutHarm) {
    if (const char* replay = std::getenv("ORBIVANE_HOSTILE_SEED")) {
        EXPECT_EQ(runIsolatedCase(std::strtoull(replay, nullptr, 10)), "");
        return;
    }
    const auto start = std::chrono::steady_clock::now();
    const double budget = budgetSeconds();
    int cases = 0;
    std::vector<std::string> failures;
    while (cases < kMaxCases &&
           std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count() < budget) {
        const std::string problems = runIsolatedCase(kFirstSeed + std::uint64_t(cases));
        if (!problems.empty()) failures.push_back(problems);
        ++cases;
    }
    std::printf("hostile sweep: %d cases from seed %llu in %.1f s, %zu failures\n", cases,
                static_cast<unsigned long long>(kFirstSeed),
                std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count(), failures.size());
    std::ostringstream shown;
    for (std::size_t i = 0; i < failures.size() && i < kFailuresShown; ++i) shown << failures[i] << "\n";
    EXPECT_TRUE(failures.empty()) << shown.str();
}

}  // namespace
}  // namespace fuzz
