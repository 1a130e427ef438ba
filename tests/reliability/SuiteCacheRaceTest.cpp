// Pixel threads load a sampling suite on first use through one shared suite handler: however
// they race, every acquisition is given back once and all threads get the same table.

#include <gtest/gtest.h>

#include <atomic>
#include <thread>
#include <vector>

#include "AE_MyLib/AEObject/AEGP_SuiteHandler.h"
#include "host/session/Host.h"

namespace reliability {
namespace {

constexpr int kThreads = 4;
constexpr int kRounds = 60;

TEST(SuiteCacheRace, ThreadsRacingOnAFirstUseGiveBackEveryAcquisition) {
    host::Host session;
    auto scope = session.render_scope(32);
    const SPBasicSuite* basic = scope->in_data()->pica_basicP;
    for (int round = 0; round < kRounds; ++round) {
        std::vector<const void*> seen(kThreads, nullptr);
        {
            AEGP_SuiteHandler suites(basic);
            std::atomic<int> ready{0};
            std::vector<std::thread> threads;
            for (int t = 0; t < kThreads; ++t) {
                threads.emplace_back([&, t] {
                    ++ready;
                    while (ready.load() < kThreads) std::this_thread::yield();
                    seen[t] = suites.SamplingFloatSuite1();
                });
            }
            for (std::thread& thread : threads) thread.join();
            EXPECT_EQ(session.counters().live(host::Resource::Suite), 1) << "round " << round;
        }
        for (const void* suite : seen) EXPECT_EQ(suite, seen.front()) << "round " << round;
        ASSERT_EQ(session.counters().live(host::Resource::Suite), 0) << "round " << round;
    }
}

}  // namespace
}  // namespace reliability
