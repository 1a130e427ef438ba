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

// Every call runs inside the caller's command, on the host's own threads (three here, one call
// each once per processor) and on the shared pool alike.
TEST(IterateGeneric, WorkersRunInsideTheCallersCommandOnTheHostsThreads) {
    struct Seen {
        host::CallContext* expected;
        std::atomic<int> outside{0};
        std::mutex mutex;
        std::set<A_long> indices, totals;
    };
    auto check = [](void* refcon, A_long, A_long i, A_long iterations) -> PF_Err {
        auto* s = static_cast<Seen*>(refcon);
        if (host::CallContext::current() != s->expected) ++s->outside;
        std::lock_guard<std::mutex> lock(s->mutex);
        s->indices.insert(i);
        s->totals.insert(iterations);
        return PF_Err_NONE;
    };
    host::Host three(threads(3)), shared;
    for (host::Host* session : {&three, &shared}) {
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
        EXPECT_EQ(host::CallContext::current(), &scope->context());
    }
}

// An error on many threads starts no further work (at most one call per thread); cancel and
// injected faults stop it before any call.
TEST(IterateGeneric, ErrorsCancelAndInjectedFaultsStopTheWork) {
    host::Host session(threads(3));
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
