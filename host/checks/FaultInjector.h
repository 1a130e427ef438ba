#pragma once
// Deterministic failure of host entry points, to exercise the module's error paths.
//
// Every function the module can call on the host (each callback, each suite function and
// each AcquireSuite) begins with HOST_FAULT_POINT("<function name>"). The injector counts
// these calls; a rule can make the N-th call (counted from 1 over all entry points) or every
// call of one named function return a chosen error. A counting run with recording on lists
// every call by name, so a sweep can fail each call of a scenario in turn.
//
// Sampling functions pass the gate per pixel on every iteration thread. While no rule and no
// recording is armed, each thread counts into a counter of its own (merged when read), so a
// call writes no shared cache line. Once armed, calls are numbered on one shared counter that
// continues from the merged count. Arm and disarm between commands, not while one runs.

#include <atomic>
#include <cstdint>
#include <map>
#include <mutex>
#include <string>
#include <vector>

#include "host/checks/PerThread.h"
#include "host/checks/SessionCurrent.h"

namespace host {

class FaultInjector : public SessionCurrent<FaultInjector> {
public:
    FaultInjector() = default;
    FaultInjector(const FaultInjector&) = delete;
    FaultInjector& operator=(const FaultInjector&) = delete;

    // Makes call number `n` (1-based, over all fault points) return `error`.
    void fail_call(std::uint64_t n, std::int32_t error);
    // Makes every call of the entry point `name` return `error`.
    void fail_every(const std::string& name, std::int32_t error);
    // Makes iterate_generic, PF_ABORT and PF_PROGRESS report a user cancel.
    void set_cancel(bool cancel) { cancel_.store(cancel); }
    bool cancel_requested() const { return cancel_.load(); }
    const std::atomic<bool>* cancel_flag() const { return &cancel_; }
    // Remembers the name of every call (for a counting run).
    void set_recording(bool on);
    // Drops every rule and recorded name and restarts the call count.
    void reset();

    // Counts one call of `name`; returns the injected error, or 0.
    std::int32_t hit(const char* name) {
        if (armed_.load(std::memory_order_relaxed)) return hit_armed(name);
        bumpOwnCounter(unarmed_calls_.local().calls);
        return 0;
    }

    // Calls counted since the last reset.
    std::uint64_t calls() const;
    std::vector<std::string> recorded_calls() const;
    // The number of injected failures so far.
    std::uint64_t injected() const { return injected_.load(); }

private:
    // One thread's calls while nothing is armed, on a cache line of its own.
    struct alignas(64) ThreadCalls {
        std::atomic<std::uint64_t> calls{0};
    };

    std::int32_t hit_armed(const char* name);
    std::uint64_t unarmed_calls() const;
    // Arms the shared numbering when a rule or recording is on; call with mutex_ held.
    void update_armed();

    std::atomic<bool> armed_{false};
    PerThread<ThreadCalls> unarmed_calls_;
    std::uint64_t unarmed_before_reset_ = 0;           // guarded by mutex_
    std::atomic<std::uint64_t> unarmed_at_arming_{0};  // unarmed calls since reset, when armed
    std::atomic<std::uint64_t> armed_calls_{0};        // calls made while armed, since reset
    std::atomic<std::uint64_t> injected_{0};
    std::atomic<std::uint64_t> fail_at_{0};
    std::atomic<std::int32_t> fail_at_error_{0};
    std::atomic<bool> cancel_{false};
    std::atomic<bool> has_named_rules_{false};
    std::atomic<bool> recording_{false};
    mutable std::mutex mutex_;
    std::map<std::string, std::int32_t> named_;
    std::vector<std::string> recorded_;
};

// What every host entry point does first (host/checks/EntryGate.cpp): counts the call in the running
// command's call log, asks the active injector for a failure, then applies the strict
// render-thread rule by name. Returns the error to answer with, or 0.
std::int32_t faultPoint(const char* name);

}  // namespace host

// Use at the top of every host entry point the module can reach:
//   if (A_Err err = HOST_FAULT_POINT("AEGP_GetLayerFlags")) return err;
#define HOST_FAULT_POINT(name) (::host::faultPoint(name))
