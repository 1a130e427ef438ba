// iterate_generic as the module reaches it through the host: the host's thread count, the
// caller's command on every worker, errors, cancel and injected faults. The pool's own
// scheduling is tested with the pool.
#include <gtest/gtest.h>

#include <atomic>
#include <memory>
#include <mutex>
#include <set>
#include <thread>

#include "host/session/Host.h"

namespace {

host::HostOptions threads(unsigned n) {
    host::HostOptions options;
    options.threads = n;
    return options;
}

PF_Err count(void* refcon, A_long, A_long, A_long) {
    ++*static_cast<std::atomic<int>*>(refcon);
    return PF_Err_NONE;
}

// Every index once, on the host's threads, each inside the caller's command; the shared pool
// (no thread count of the host's own) forwards the command too.
TEST(IterateGeneric, WorkersVisitEachIndexOnceInsideTheCallersCommand) {
    constexpr A_long kCount = 1000;
    struct Seen {
        host::CallContext* expected;
        std::atomic<int> hits[kCount];
        std::atomic<int> outside{0};
        std::mutex mutex;
        std::set<std::thread::id> os_threads;
    };
    auto check = [](void* refcon, A_long, A_long i, A_long) -> PF_Err {
        auto* s = static_cast<Seen*>(refcon);
        if (host::CallContext::current() != s->expected) ++s->outside;
        ++s->hits[i];
        std::lock_guard<std::mutex> lock(s->mutex);
        s->os_threads.insert(std::this_thread::get_id());
        return PF_Err_NONE;
    };
    host::Host four(threads(4)), shared;
    for (host::Host* session : {&four, &shared}) {
        auto scope = session->render_scope();
        auto seen = std::make_unique<Seen>();
        seen->expected = &scope->context();
        for (auto& h : seen->hits) h = 0;
        ASSERT_EQ(scope->in_data()->utils->iterate_generic(kCount, seen.get(), check), PF_Err_NONE);
        for (A_long i = 0; i < kCount; ++i) ASSERT_EQ(seen->hits[i].load(), 1) << i;
        EXPECT_EQ(seen->outside.load(), 0);
        if (session == &four) {
            EXPECT_LE(seen->os_threads.size(), 4u);
        }
        EXPECT_EQ(host::CallContext::current(), &scope->context());
    }
}

TEST(IterateGeneric, OncePerProcessorPassesTheHostsThreadCount) {
    host::Host session(threads(3));
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

TEST(IterateGeneric, AnErrorOnManyThreadsStartsNoFurtherWork) {
    host::Host session(threads(3));
    auto scope = session.render_scope();
    std::atomic<int> started{0};
    auto fail_all = [](void* refcon, A_long, A_long, A_long) -> PF_Err {
        ++*static_cast<std::atomic<int>*>(refcon);
        return PF_Interrupt_CANCEL;
    };
    EXPECT_EQ(scope->in_data()->utils->iterate_generic(10000, &started, fail_all), PF_Interrupt_CANCEL);
    EXPECT_LE(started.load(), 3);  // at most one iteration per thread
}

TEST(IterateGeneric, CancelAndInjectedFaultsStopItBeforeAnyCall) {
    host::Host session;
    auto scope = session.render_scope();
    std::atomic<int> calls{0};
    session.faults().set_cancel(true);
    EXPECT_EQ(scope->in_data()->utils->iterate_generic(100, &calls, count), PF_Interrupt_CANCEL);
    EXPECT_EQ(calls.load(), 0);
    session.faults().set_cancel(false);
    session.faults().fail_every("iterate_generic", PF_Err_OUT_OF_MEMORY);
    EXPECT_EQ(scope->in_data()->utils->iterate_generic(100, &calls, count), PF_Err_OUT_OF_MEMORY);
    EXPECT_EQ(calls.load(), 0);
}

}  // namespace
