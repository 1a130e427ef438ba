#pragma once
// Running lifetimes: the counting run, and one run per injected fault in a child process with
// the check of everything that run must satisfy.

#include <string>
#include <vector>

#include "reliability/FaultPlan.h"
#include "reliability/Lifetime.h"

namespace reliability {

struct CountingRun {
    LifetimeResult lifetime;
    std::vector<std::string> names;   // name of each host call, in order
};

// Runs a lifetime without faults in this process, recording every host call. Its session is
// gone before the faulted runs fork: they start from a process without host threads.
CountingRun countHostCalls();

// Runs a lifetime failing `point.call` with `error`; returns the problems found (empty: the
// effect handled the failure as it must).
std::string runWithFault(const FaultPoint& point, PF_Err error, unsigned timeout_seconds);

// Runs a lifetime in which every call of `name` fails; returns the problems found. Only a
// crash, an escaped exception or a leak is a problem: the errors themselves are not checked.
std::string runWithPersistentFault(const std::string& name, unsigned timeout_seconds);

// Problems of a faulted lifetime (pure function, exposed for its own tests).
std::string checkFaultedLifetime(const FaultPoint& point, PF_Err error, const LifetimeResult& run,
                                 std::uint64_t injected);

}  // namespace reliability
