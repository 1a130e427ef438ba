#pragma once
// Runs a piece of test code in a child process, so that a crash, an assertion or a hang of
// the module in one run is reported as that run's failure instead of ending the whole test.
//
// The parent must not have started host worker threads before forking: the child builds its
// own host session from scratch. The body's text result comes back through a pipe.

#include <functional>
#include <string>

namespace reliability {

struct ChildOutcome {
    bool finished = false;  // the body returned and the child exited normally
    int exit_code = 0;      // exit status when finished or exited
    int signal = 0;         // terminating signal when the child died (SIGALRM: timed out)
    std::string output;     // what the body returned; empty when the child died

    // "exit 3", "signal 6 (Aborted)", "timed out" ... for messages.
    std::string describe() const;
};

// Runs `body` in a forked child with a wall-clock limit in seconds; an exception escaping the
// body is reported as exit code 3 with its message as the output. Built with LeakSanitizer,
// the child checks its heap before it ends: a leak fails the run (describe() says so).
ChildOutcome runIsolated(const std::function<std::string()>& body, unsigned timeout_seconds);

}  // namespace reliability
