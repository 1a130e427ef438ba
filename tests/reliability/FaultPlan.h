#pragma once
// Which host calls of a lifetime a fault sweep fails, with what error, and what the effect
// may answer. Built from one counting run: the name of every call and the steps' call ranges.

#include <cstdint>
#include <string>
#include <vector>

#include "AE_Effect.h"
#include "reliability/Lifetime.h"

namespace reliability {

// The answers a command may give when one host call inside it fails.
struct Allowed {
    bool none = false;          // the effect swallows this failure
    bool injected = false;      // the effect passes the injected error back
    bool missing_suite = false; // a failed suite load reported as PF_Err_BAD_CALLBACK_PARAM
    bool may_leak = false;      // a failed release can keep that one object alive

    bool accepts(PF_Err err, PF_Err injected_err) const;
};

struct FaultPoint {
    std::uint64_t call = 0;  // 1-based fault-point number over the whole lifetime
    std::string name;        // host entry point
    std::size_t step = 0;    // index into the lifetime's steps
    PF_Err error = PF_Err_NONE;  // the error injected
    Allowed allowed;
};

struct FaultPlan {
    std::vector<FaultPoint> points;  // the calls to fail, in call order
    std::uint64_t total_calls = 0;   // calls in the counting run
    std::uint64_t inert_calls = 0;   // calls whose host function cannot report failure
    std::uint64_t thinned_calls = 0; // repeated per-pixel sampling calls left out
};

// Host functions that ignore an injected fault (they have no way to report one).
bool isInert(const std::string& name);
// Functions that give something back to the host (release, dispose, check-in, unlock).
bool isRelease(const std::string& name);
bool isSampling(const std::string& name);
// The error a failed call of `name` returns.
PF_Err errorFor(const std::string& name);

// `names[i]` is the name of call i + 1 of the counting run.
FaultPlan planFaults(const LifetimeResult& counted, const std::vector<std::string>& names);

}  // namespace reliability
