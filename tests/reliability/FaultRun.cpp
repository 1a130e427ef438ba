#include "reliability/FaultRun.h"

#include <sstream>

#include "host/session/Host.h"
#include "reliability/Isolated.h"
#include "reliability/TestScene.h"

namespace reliability {

namespace {

bool mentionsError(const std::string& text, PF_Err err) {
    return text.find(host::errorName(err)) != std::string::npos;
}

bool escaped(const std::string& host_error) { return host_error.find("exception escaped") != std::string::npos; }

// A failed release may keep exactly that one object (and the lock on it) alive.
bool acceptableLeak(const std::string& leaks, const Allowed& allowed) {
    if (leaks.empty()) return true;
    if (!allowed.may_leak) return false;
    std::istringstream in(leaks);
    std::string line;
    int lines = 0;
    while (std::getline(in, line)) {
        if (line.rfind("leaked 1 x ", 0) != 0) return false;
        ++lines;
    }
    return lines <= 2;
}

std::string oneLine(std::string text) {
    for (char& c : text)
        if (c == '\n') c = ';';
    return text;
}

}  // namespace

CountingRun countHostCalls() {
    CountingRun counting;
    Session session;
    session.host().faults().set_recording(true);
    counting.lifetime = runLifetime(session);
    counting.names = session.host().faults().recorded_calls();
    return counting;
}

std::string checkFaultedLifetime(const FaultPoint& point, PF_Err error, const LifetimeResult& run,
                                 std::uint64_t injected) {
    std::ostringstream problems;
    if (injected != 1) problems << "the fault was injected " << injected << " times (the calls diverged); ";
    for (std::size_t s = 0; s < run.steps.size(); ++s) {
        const StepResult& step = run.steps[s];
        if (escaped(step.host_error)) {
            problems << step.name << ": " << step.host_error << "; ";
            continue;
        }
        if (s != point.step) {
            if (step.err != PF_Err_NONE || !step.host_error.empty())
                problems << step.name << " (after the fault) failed with " << host::errorName(step.err) << " "
                         << step.host_error << "; ";
            continue;
        }
        if (step.kind == StepKind::Load && !step.host_error.empty()) {
            const bool named = (point.allowed.injected && mentionsError(step.host_error, error)) ||
                               (point.allowed.missing_suite && mentionsError(step.host_error, PF_Err_BAD_CALLBACK_PARAM));
            if (!named) problems << "load refused with an unexpected error: " << step.host_error << "; ";
        } else if (!step.host_error.empty()) {
            problems << step.name << ": " << step.host_error << "; ";
        } else if (!point.allowed.accepts(step.err, error)) {
            problems << step.name << " returned " << host::errorName(step.err) << " (" << step.err << "); ";
        }
    }
    const std::string& leaks = run.leaks;
    if (!acceptableLeak(leaks, point.allowed)) problems << "left behind: " << oneLine(leaks);
    return problems.str();
}

std::string runWithFault(const FaultPoint& point, PF_Err error, unsigned timeout_seconds) {
    const ChildOutcome child = runIsolated(
        [&] {
            Session session;
            session.host().faults().fail_call(point.call, error);
            const LifetimeResult run = runLifetime(session);
            return checkFaultedLifetime(point, error, run, session.host().faults().injected());
        },
        timeout_seconds);
    if (!child.finished) return "the run ended with " + child.describe() + " " + child.output;
    return child.output;
}

std::string runWithPersistentFault(const std::string& name, unsigned timeout_seconds) {
    const ChildOutcome child = runIsolated(
        [&] {
            Session session;
            session.host().faults().fail_every(name, errorFor(name));
            const LifetimeResult run = runLifetime(session);
            std::ostringstream problems;
            for (const StepResult& step : run.steps)
                if (escaped(step.host_error)) problems << step.name << ": " << step.host_error << "; ";
            if (!isRelease(name) && !run.leaks.empty()) problems << "left behind: " << oneLine(run.leaks);
            return problems.str();
        },
        timeout_seconds);
    if (!child.finished) return "the run ended with " + child.describe() + " " + child.output;
    return child.output;
}

}  // namespace reliability
