#pragma once
// One complete life of the effect in a session, as a host would live it: load (global and
// parameter set-up), sequence set-up, interface updates, choosing and clearing a control
// layer, a frame in each pixel depth with and without depth of field, and unload. Each step
// remembers which host calls it made (by the fault injector's running call number) and how
// it ended, so a fault sweep can tell which step a failed call belonged to.

#include <cstdint>
#include <string>
#include <vector>

#include "AE_Effect.h"

namespace reliability {

class Session;

enum class StepKind {
    Load,          // GLOBAL_SETUP, PARAMS_SETUP
    UpdateUi,      // UPDATE_PARAMS_UI (after SEQUENCE_SETUP, which makes no host call)
    ChangeParam,   // USER_CHANGED_PARAM followed by UPDATE_PARAMS_UI
    Render,        // SMART_PRE_RENDER, SMART_RENDER
    Unload,        // SEQUENCE_SETDOWN, GLOBAL_SETDOWN
};

struct StepResult {
    std::string name;
    StepKind kind = StepKind::Load;
    std::uint64_t first_call = 0;  // fault-point numbers of this step: [first_call, end_call)
    std::uint64_t end_call = 0;
    PF_Err err = PF_Err_NONE;
    std::string host_error;        // a HostError the host raised (refused load, escaped exception)

    bool contains(std::uint64_t call) const { return call >= first_call && call < end_call; }
};

struct LifetimeResult {
    std::vector<StepResult> steps;
    bool loaded = false;   // load succeeded
    std::string leaks;     // the host's leak report after the last step (empty when clean)
};

LifetimeResult runLifetime(Session& session);

}  // namespace reliability
