// iterate_generic: the pool's scheduling, then the callback as the module reaches it through
// the host (the host's thread count, the caller's command on every worker, cancel, faults).
#include "host/pixels/IterateGeneric.h"

#include <gtest/gtest.h>

#include <atomic>
#include <memory>
#include <mutex>
#include <set>
#include <thread>
#include <vector>

#include "host/session/Host.h"

namespace host {
namespace {

// What the callbacks record; shared by all threads. Each counter of a broken promise stays 0.
struct Record {
    explicit Record(A_long n) : visits(n), expected_count(n) {}
    std::vector<std::atomic<int>> visits;
    std::atomic<bool> busy[64]{};  // per thread index: a call is running
    std::atomic<int> calls{0}, bad_index{0}, shared_index{0}, wrong_count{0}, thread0_elsewhere{0};
    std::atomic<int> index_not_thread{0};  // once per processor, index i runs on thread i
    std::atomic<A_long> max_index{0};
    A_long expected_count;
    std::thread::id caller = std::this_thread::get_id();
    A_long fail_at = -1;
    PF_Err fail_with = PF_Err_NONE;
    std::atomic<bool>* cancel_switch = nullptr;
    A_long cancel_at = -1;
};

PF_Err recordCall(void* refcon, A_long thread_index, A_long i, A_long iterations) {
    auto& r = *static_cast<Record*>(refcon);
    ++r.calls;
    if (thread_index < 0 || thread_index >= 64) {
        ++r.bad_index;
        return PF_Err_NONE;
    }
    if (r.busy[thread_index].exchange(true)) ++r.shared_index;
    A_long seen = r.max_index.load();
    while (thread_index > seen && !r.max_index.compare_exchange_weak(seen, thread_index)) {}
    if (iterations != r.expected_count) ++r.wrong_count;
    if (thread_index == 0 && std::this_thread::get_id() != r.caller) ++r.thread0_elsewhere;
    ++r.visits[i];
    if (i != thread_index) ++r.index_not_thread;
    // A little work so the workers get a share.
    volatile double sink = 0;
    for (int k = 0; k < 200; ++k) sink = sink + k * 0.5;
    r.busy[thread_index] = false;
    if (i == r.cancel_at) r.cancel_switch->store(true);
    return i == r.fail_at ? r.fail_with : PF_Err_NONE;
}

void expectEveryIndexOnceOnValidThreads(const Record& r, A_long n, unsigned threads) {
    EXPECT_EQ(r.calls, n);
    for (A_long i = 0; i < n; ++i) ASSERT_EQ(r.visits[i], 1) << "index " << i;
    EXPECT_EQ(r.bad_index, 0);
    EXPECT_LT(r.max_index, static_cast<A_long>(threads));
    EXPECT_EQ(r.shared_index, 0) << "two calls ran at once with one thread index";
    EXPECT_EQ(r.wrong_count, 0) << "the last argument is the iteration count";
    EXPECT_EQ(r.thread0_elsewhere, 0) << "thread index 0 is the caller's";
}

// Pool size and thread limit: a limit of 1 runs everything on the caller.
class IterateThreads : public ::testing::TestWithParam<std::pair<unsigned, unsigned>> {};

TEST_P(IterateThreads, EveryIndexRunsExactlyOnceOnValidThreads) {
    const auto [threads, max_threads] = GetParam();
    IterationPool pool(threads);
    ASSERT_EQ(pool.threadCount(), threads);
    const A_long n = 100003;
    Record r(n);
    IterateOptions options;
    options.max_threads = max_threads;
    ASSERT_EQ(pool.iterate(n, &r, recordCall, options), PF_Err_NONE);
    expectEveryIndexOnceOnValidThreads(r, n, max_threads ? max_threads : threads);
}

INSTANTIATE_TEST_SUITE_P(Pools, IterateThreads,
                         ::testing::Values(std::pair{1u, 0u}, std::pair{2u, 0u}, std::pair{8u, 0u}, std::pair{8u, 1u}));

TEST(IterateGeneric, CallsFromTwoThreadsAtOnceKeepTheirOwnIndices) {
    IterationPool pool(4);
    const A_long n = 20000;
    Record a(n), b(n);
    PF_Err err_b = PF_Err_NONE;
    std::thread other([&] {
        b.caller = std::this_thread::get_id();
        err_b = pool.iterate(n, &b, recordCall);
    });
    EXPECT_EQ(pool.iterate(n, &a, recordCall), PF_Err_NONE);
    other.join();
    EXPECT_EQ(err_b, PF_Err_NONE);
    for (Record* r : {&a, &b}) expectEveryIndexOnceOnValidThreads(*r, n, 4);
}

TEST(IterateGeneric, FirstErrorOrACancelStopsTheIteration) {
    IterationPool single(1);
    Record r(1000);
    r.fail_at = 500;
    r.fail_with = PF_Err_OUT_OF_MEMORY;
    IterateOptions one_at_a_time;
    one_at_a_time.chunk_size = 1;
    EXPECT_EQ(single.iterate(1000, &r, recordCall, one_at_a_time), PF_Err_OUT_OF_MEMORY);
    EXPECT_EQ(r.calls, 501) << "nothing starts after the failing call";
    std::atomic<bool> cancel{false};
    Record cancelled(1000);
    cancelled.cancel_switch = &cancel;
    cancelled.cancel_at = 100;
    IterateOptions cancellable;  // chunks as usual: the switch is checked before every iteration
    cancellable.cancel = &cancel;
    EXPECT_EQ(single.iterate(1000, &cancelled, recordCall, cancellable), PF_Interrupt_CANCEL);
    EXPECT_EQ(cancelled.calls, 101) << "a cancel switch stops it the same way";

    IterationPool pool(8);
    const A_long n = 1000000;
    Record many(n);
    many.fail_at = 10;
    many.fail_with = PF_Err_INTERNAL_STRUCT_DAMAGED;
    EXPECT_EQ(pool.iterate(n, &many, recordCall), PF_Err_INTERNAL_STRUCT_DAMAGED);
    EXPECT_LT(many.calls, n / 2);
}

// One call per thread index, and the callback sees the thread count (never -1), also when the
// threads are limited.
TEST(IterateGeneric, OncePerProcessorRunsEachThreadIndexOnce) {
    IterationPool pool(4);
    for (unsigned limit : {0u, 2u}) {
        const A_long threads = limit ? limit : 4;
        Record r(threads);
        IterateOptions options;
        options.max_threads = limit;
        EXPECT_EQ(pool.iterate(PF_Iterations_ONCE_PER_PROCESSOR, &r, recordCall, options), PF_Err_NONE);
        expectEveryIndexOnceOnValidThreads(r, threads, threads);
        EXPECT_EQ(r.index_not_thread, 0);
    }
}

TEST(IterateGeneric, ProgressIsReportedOnTheCallerOnly) {
    IterationPool pool(4);
    const A_long n = 50000;
    Record r(n);
    std::atomic<int> off_thread{0};
    A_long last = 0;
    bool monotonic = true;
    IterateOptions options;
    options.progress = [&](A_long finished, A_long total) {
        if (std::this_thread::get_id() != r.caller) ++off_thread;
        if (finished < last || total != n) monotonic = false;
        last = finished;
    };
    EXPECT_EQ(pool.iterate(n, &r, recordCall, options), PF_Err_NONE);
    EXPECT_EQ(off_thread, 0);
    EXPECT_TRUE(monotonic);
    EXPECT_GT(last, 0);
}

TEST(IterateGeneric, BadArgumentsEmptyRunsAndTheSharedPool) {
    IterationPool pool(2);
    Record r(777);
    EXPECT_EQ(pool.iterate(10, &r, nullptr), PF_Err_BAD_CALLBACK_PARAM);
    EXPECT_EQ(pool.iterate(-2, &r, recordCall), PF_Err_BAD_CALLBACK_PARAM);
    EXPECT_EQ(pool.iterate(0, &r, recordCall), PF_Err_NONE);
    EXPECT_EQ(r.calls, 0);
    EXPECT_GE(defaultIterationThreads(), 1u);
    EXPECT_LE(defaultIterationThreads(), 32u);
    EXPECT_EQ(iterate_generic(777, &r, recordCall), PF_Err_NONE);
    EXPECT_EQ(r.calls, 777);
}

// Through the host.
HostOptions threads(unsigned n) {
    HostOptions options;
    options.threads = n;
    return options;
}

// Every call runs inside the caller's command, on the host's own threads (three here, one call
// each once per processor) and on the shared pool alike.
TEST(HostIterate, WorkersRunInsideTheCallersCommandOnTheHostsThreads) {
    struct Seen {
        CallContext* expected;
        std::atomic<int> outside{0};
        std::mutex mutex;
        std::set<A_long> indices, totals;
    };
    auto check = [](void* refcon, A_long, A_long i, A_long iterations) -> PF_Err {
        auto* s = static_cast<Seen*>(refcon);
        if (CallContext::current() != s->expected) ++s->outside;
        std::lock_guard<std::mutex> lock(s->mutex);
        s->indices.insert(i);
        s->totals.insert(iterations);
        return PF_Err_NONE;
    };
    Host three(threads(3)), shared;
    for (Host* session : {&three, &shared}) {
        auto scope = session->render_scope();
        for (A_long count : {A_long(1000), A_long(PF_Iterations_ONCE_PER_PROCESSOR)}) {
            auto seen = std::make_unique<Seen>();
            seen->expected = &scope->context();
            ASSERT_EQ(scope->in_data()->utils->iterate_generic(count, seen.get(), check), PF_Err_NONE);
            EXPECT_EQ(seen->outside.load(), 0);
            if (count == 1000) {
                EXPECT_EQ(seen->indices.size(), 1000u);
            }
            if (session == &three && count != 1000) {
                EXPECT_EQ(seen->indices, (std::set<A_long>{0, 1, 2}));
                EXPECT_EQ(seen->totals, (std::set<A_long>{3}));
            }
        }
        EXPECT_EQ(CallContext::current(), &scope->context());
    }
}

// An error on many threads starts no further work (at most one call per thread); cancel and
// injected faults stop it before any call.
TEST(HostIterate, ErrorsCancelAndInjectedFaultsStopTheWork) {
    Host session(threads(3));
    auto scope = session.render_scope();
    std::atomic<int> calls{0};
    auto fail_all = [](void* refcon, A_long, A_long, A_long) -> PF_Err {
        ++*static_cast<std::atomic<int>*>(refcon);
        return PF_Interrupt_CANCEL;
    };
    PF_UtilCallbacks* utils = scope->in_data()->utils;
    EXPECT_EQ(utils->iterate_generic(10000, &calls, fail_all), PF_Interrupt_CANCEL);
    EXPECT_LE(calls.load(), 3);
    calls = 0;
    session.faults().set_cancel(true);
    EXPECT_EQ(utils->iterate_generic(100, &calls, fail_all), PF_Interrupt_CANCEL);
    session.faults().set_cancel(false);
    session.faults().fail_every("iterate_generic", PF_Err_OUT_OF_MEMORY);
    EXPECT_EQ(utils->iterate_generic(100, &calls, fail_all), PF_Err_OUT_OF_MEMORY);
    EXPECT_EQ(calls.load(), 0);
}

}  // namespace
}  // namespace host
