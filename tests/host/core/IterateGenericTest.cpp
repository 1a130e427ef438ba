#include <gtest/gtest.h>

#include <atomic>
#include <mutex>
#include <set>
#include <thread>
#include <vector>

#include "host/Host.h"

namespace {

constexpr A_long kCount = 1000;

struct Visits {
    std::atomic<int> hits[kCount];
    std::mutex mutex;
    std::set<A_long> threads;
    std::set<std::thread::id> os_threads;
    std::atomic<bool> wrong_total{false};
    std::thread::id caller = std::this_thread::get_id();
    std::atomic<bool> zero_off_caller{false};
    Visits() {
        for (auto& h : hits) h = 0;
    }
};

PF_Err visit(void* refcon, A_long thread_index, A_long i, A_long iterations) {
    auto* v = static_cast<Visits*>(refcon);
    if (iterations != kCount) v->wrong_total = true;
    if (thread_index == 0 && std::this_thread::get_id() != v->caller) v->zero_off_caller = true;
    ++v->hits[i];
    std::lock_guard<std::mutex> lock(v->mutex);
    v->threads.insert(thread_index);
    v->os_threads.insert(std::this_thread::get_id());
    return PF_Err_NONE;
}

TEST(IterateGeneric, VisitsEveryIndexOnceOverSeveralThreads) {
    host::HostOptions options;
    options.threads = 4;
    host::Host session(options);
    auto scope = session.render_scope();
    Visits v;
    ASSERT_EQ(scope->in_data()->utils->iterate_generic(kCount, &v, visit), PF_Err_NONE);
    for (A_long i = 0; i < kCount; ++i) ASSERT_EQ(v.hits[i].load(), 1) << i;
    EXPECT_FALSE(v.wrong_total);
    EXPECT_FALSE(v.zero_off_caller);
    for (A_long t : v.threads) EXPECT_TRUE(t >= 0 && t < 4) << t;
    EXPECT_EQ(v.threads.size(), v.os_threads.size());  // one index per OS thread
}

TEST(IterateGeneric, StopsOnTheFirstError) {
    host::HostOptions options;
    options.threads = 1;  // deterministic order
    host::Host session(options);
    auto scope = session.render_scope();
    std::vector<A_long> seen;
    auto fail_at_5 = [](void* refcon, A_long, A_long i, A_long) -> PF_Err {
        static_cast<std::vector<A_long>*>(refcon)->push_back(i);
        return i == 5 ? PF_Err_OUT_OF_MEMORY : PF_Err_NONE;
    };
    EXPECT_EQ(scope->in_data()->utils->iterate_generic(100, &seen, fail_at_5), PF_Err_OUT_OF_MEMORY);
    EXPECT_EQ(seen.size(), 6u);
}

TEST(IterateGeneric, ErrorOnManyThreadsStartsNoFurtherWork) {
    host::HostOptions options;
    options.threads = 3;
    host::Host session(options);
    auto scope = session.render_scope();
    std::atomic<int> started{0};
    auto fail_all = [](void* refcon, A_long, A_long, A_long) -> PF_Err {
        ++*static_cast<std::atomic<int>*>(refcon);
        return PF_Interrupt_CANCEL;
    };
    EXPECT_EQ(scope->in_data()->utils->iterate_generic(10000, &started, fail_all), PF_Interrupt_CANCEL);
    EXPECT_LE(started.load(), 3);  // at most one iteration per thread
}

TEST(IterateGeneric, OncePerProcessorPassesTheThreadCount) {
    host::HostOptions options;
    options.threads = 3;
    host::Host session(options);
    auto scope = session.render_scope();
    struct Seen {
        std::mutex mutex;
        std::set<A_long> indices;
        std::set<A_long> totals;
    } seen;
    auto record = [](void* refcon, A_long, A_long i, A_long iterations) -> PF_Err {
        auto* s = static_cast<Seen*>(refcon);
        std::lock_guard<std::mutex> lock(s->mutex);
        s->indices.insert(i);
        s->totals.insert(iterations);
        return PF_Err_NONE;
    };
    ASSERT_EQ(scope->in_data()->utils->iterate_generic(PF_Iterations_ONCE_PER_PROCESSOR, &seen, record), PF_Err_NONE);
    EXPECT_EQ(seen.indices, (std::set<A_long>{0, 1, 2}));
    EXPECT_EQ(seen.totals, (std::set<A_long>{3}));
}

TEST(IterateGeneric, ZeroIterationsCallsNothing) {
    host::Host session;
    auto scope = session.render_scope();
    auto never = [](void*, A_long, A_long, A_long) -> PF_Err { return PF_Err_INTERNAL_STRUCT_DAMAGED; };
    EXPECT_EQ(scope->in_data()->utils->iterate_generic(0, nullptr, never), PF_Err_NONE);
}

// Workers run inside the caller's command: suite calls from them reach the same session and
// the same strict render-thread rule as the caller.
TEST(IterateGeneric, WorkersRunInsideTheCallersCommand) {
    host::HostOptions options;
    options.threads = 4;
    host::Host session(options);
    auto scope = session.render_scope();
    struct Seen {
        host::CallContext* expected;
        std::atomic<int> outside{0};
    } seen{&scope->context()};
    auto check = [](void* refcon, A_long, A_long, A_long) -> PF_Err {
        auto* s = static_cast<Seen*>(refcon);
        if (host::CallContext::current() != s->expected) ++s->outside;
        return PF_Err_NONE;
    };
    ASSERT_EQ(scope->in_data()->utils->iterate_generic(64, &seen, check), PF_Err_NONE);
    EXPECT_EQ(seen.outside.load(), 0);
    // The shared pool (no thread count of the host's own) forwards the command too.
    host::Host shared;
    auto shared_scope = shared.render_scope();
    seen.expected = &shared_scope->context();
    ASSERT_EQ(shared_scope->in_data()->utils->iterate_generic(64, &seen, check), PF_Err_NONE);
    EXPECT_EQ(seen.outside.load(), 0);
    EXPECT_EQ(host::CallContext::current(), &shared_scope->context());
}

TEST(IterateGeneric, CancelAndInjectedFaultsStopIt) {
    host::Host session;
    auto scope = session.render_scope();
    std::atomic<int> calls{0};
    auto count = [](void* refcon, A_long, A_long, A_long) -> PF_Err {
        ++*static_cast<std::atomic<int>*>(refcon);
        return PF_Err_NONE;
    };
    session.faults().set_cancel(true);
    EXPECT_EQ(scope->in_data()->utils->iterate_generic(100, &calls, count), PF_Interrupt_CANCEL);
    EXPECT_EQ(calls.load(), 0);
    session.faults().set_cancel(false);
    session.faults().fail_every("iterate_generic", PF_Err_OUT_OF_MEMORY);
    EXPECT_EQ(scope->in_data()->utils->iterate_generic(100, &calls, count), PF_Err_OUT_OF_MEMORY);
    EXPECT_EQ(calls.load(), 0);
}

}  // namespace
