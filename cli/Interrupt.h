#pragma once
// SIGINT and SIGTERM during a render. The first one asks the render to stop: the host's render
// is cancelled, the frame loop starts nothing new, writes under way finish, and the program
// ends with 128 + the signal's number. A second one ends the process at once, after unlinking
// the temporary file of any write under way, so no half-written file is left anywhere.

#include "host/checks/FaultInjector.h"

namespace cli {

// Installs the handlers (once per process).
void installInterruptHandlers();

// The signal received (SIGINT, SIGTERM), or 0.
int interruptSignal();

// "SIGINT", "SIGTERM".
const char* signalName(int signal);

// While alive, the first signal also pulls `faults`' cancel switch, so the render in progress
// stops at its next iteration instead of at the end of the frame.
class CancelOnInterrupt {
public:
    explicit CancelOnInterrupt(host::FaultInjector& faults);
    ~CancelOnInterrupt();
    CancelOnInterrupt(const CancelOnInterrupt&) = delete;
    CancelOnInterrupt& operator=(const CancelOnInterrupt&) = delete;
};

}  // namespace cli
