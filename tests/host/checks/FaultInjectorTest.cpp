#include <gtest/gtest.h>

#include "AE_EffectCBSuites.h"
#include "host/session/Host.h"

#include <thread>
#include <vector>

namespace {

// Acquires the world suite and makes and disposes of one world: 4 host calls
// (AcquireSuite, PF_NewWorld, PF_DisposeWorld, ReleaseSuite).
PF_Err makeAndDisposeWorld(host::Host& session) {
    auto scope = session.render_scope();
    PF_InData* in_data = scope->in_data();
    const PF_WorldSuite2* worlds = nullptr;
    PF_Err err = in_data->pica_basicP->AcquireSuite(kPFWorldSuite, kPFWorldSuiteVersion2,
                                                   reinterpret_cast<const void**>(&worlds));
    if (err) return err;
    PF_EffectWorld world{};
    err = worlds->PF_NewWorld(in_data->effect_ref, 4, 4, 1, PF_PixelFormat_ARGB32, &world);
    if (!err) err = worlds->PF_DisposeWorld(in_data->effect_ref, &world);
    const PF_Err release_err = in_data->pica_basicP->ReleaseSuite(kPFWorldSuite, kPFWorldSuiteVersion2);
    return err ? err : release_err;
}

// A counting run names every call; failing a function by name fails each of its calls, and
// the suite is still released.
TEST(FaultInjector, CountingRunNamesEveryCallAndNamedFunctionsFailEveryTime) {
    host::Host session;
    session.faults().set_recording(true);
    ASSERT_EQ(makeAndDisposeWorld(session), PF_Err_NONE);
    EXPECT_EQ(session.faults().calls(), 4u);
    const std::vector<std::string> expected{"AcquireSuite", "PF_NewWorld", "PF_DisposeWorld", "ReleaseSuite"};
    EXPECT_EQ(session.faults().recorded_calls(), expected);
    session.faults().fail_every("PF_NewWorld", PF_Err_OUT_OF_MEMORY);
    EXPECT_EQ(makeAndDisposeWorld(session), PF_Err_OUT_OF_MEMORY);
    EXPECT_EQ(makeAndDisposeWorld(session), PF_Err_OUT_OF_MEMORY);
    EXPECT_EQ(session.faults().injected(), 2u);
    EXPECT_EQ(session.leaks(), "");
}

// Each call fails by its number in turn. A failed acquisition holds nothing; a world whose
// disposal failed is reported as a leak, and the host still frees it when the session ends,
// so a failing module cannot make the host itself leak.
TEST(FaultInjector, FailsEachCallByNumberInTurn) {
    for (std::uint64_t n = 1; n <= 4; ++n) {
        SCOPED_TRACE(n);
        const std::size_t worlds_before = host::liveWorldCount();
        {
            host::Host session;
            session.faults().fail_call(n, PF_Err_OUT_OF_MEMORY);
            EXPECT_EQ(makeAndDisposeWorld(session), PF_Err_OUT_OF_MEMORY);
            EXPECT_EQ(session.faults().injected(), 1u);
            EXPECT_EQ(session.counters().live(host::Resource::Suite), n == 4 ? 1 : 0);  // only a failed release holds it
            EXPECT_EQ(session.counters().live(host::Resource::World), n == 3 ? 1 : 0);  // PF_DisposeWorld
            EXPECT_EQ(session.leaks() != "", n >= 3);
            EXPECT_EQ(host::liveWorldCount(), worlds_before + (n == 3 ? 1 : 0));
        }
        EXPECT_EQ(host::liveWorldCount(), worlds_before);
    }
}

// Callbacks fail by name; cancelling interrupts abort and progress (iteration: see there).
TEST(FaultInjector, FailsACallbackByNameAndCancelInterrupts) {
    host::Host session;
    auto scope = session.render_scope();
    PF_InData* in_data = scope->in_data();
    session.faults().fail_every("abort", PF_Err_INTERNAL_STRUCT_DAMAGED);
    EXPECT_EQ(PF_ABORT(in_data), PF_Err_INTERNAL_STRUCT_DAMAGED);
    EXPECT_EQ(PF_PROGRESS(in_data, 1, 2), PF_Err_NONE);
    session.faults().reset();
    EXPECT_EQ(PF_ABORT(in_data), PF_Err_NONE);
    session.faults().set_cancel(true);
    EXPECT_EQ(PF_ABORT(in_data), PF_Interrupt_CANCEL);
    EXPECT_EQ(PF_PROGRESS(in_data, 1, 2), PF_Interrupt_CANCEL);
}

// The numbering that rules by number rely on, across the per-thread counting used while
// nothing is armed and the shared numbering used once a rule or recording is on.
class FaultNumbering : public ::testing::Test {
protected:
    void callTimes(int n) {
        for (int i = 0; i < n; ++i) faults.hit("x");
    }
    host::FaultInjector faults;
};

TEST_F(FaultNumbering, CountsCallsFromEveryThreadWhileNothingIsArmed) {
    std::vector<std::thread> threads;
    for (int t = 0; t < 4; ++t) threads.emplace_back([this] { callTimes(1000); });
    for (std::thread& t : threads) t.join();
    callTimes(5);
    EXPECT_EQ(faults.calls(), 4005u);
}

// A rule armed later counts on from the calls made before, across recorded and unrecorded
// stretches; reset disarms and restarts the numbering.
TEST_F(FaultNumbering, NumbersRunOnAcrossArmedAndUnarmedStretchesUntilReset) {
    faults.set_recording(true);
    callTimes(2);
    faults.set_recording(false);
    callTimes(3);
    EXPECT_EQ(faults.calls(), 5u);
    faults.set_recording(true);
    faults.fail_call(faults.calls() + 2, PF_Err_INTERNAL_STRUCT_DAMAGED);
    EXPECT_EQ(faults.hit("sixth"), 0);
    EXPECT_EQ(faults.hit("seventh"), PF_Err_INTERNAL_STRUCT_DAMAGED);
    EXPECT_EQ(faults.hit("eighth"), 0);
    EXPECT_EQ(faults.injected(), 1u);
    EXPECT_EQ(faults.recorded_calls(), (std::vector<std::string>{"x", "x", "sixth", "seventh", "eighth"}));
    faults.fail_call(9, PF_Err_OUT_OF_MEMORY);
    faults.reset();
    faults.set_recording(false);
    callTimes(3);
    faults.reset();
    EXPECT_EQ(faults.calls(), 0u);
    faults.fail_call(2, PF_Err_OUT_OF_MEMORY);
    EXPECT_EQ(faults.hit("first"), 0);
    EXPECT_EQ(faults.hit("second"), PF_Err_OUT_OF_MEMORY);
}

}  // namespace
