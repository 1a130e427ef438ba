#include "cli/Interrupt.h"

#include "host/files/FileCommit.h"

#include <atomic>
#include <csignal>
#include <unistd.h>

namespace cli {

namespace {

std::atomic<int> g_signal{0};
std::atomic<host::FaultInjector*> g_cancel{nullptr};
static_assert(std::atomic<int>::is_always_lock_free && std::atomic<host::FaultInjector*>::is_always_lock_free,
              "used from a signal handler");

void onSignal(int signal) {
    int none = 0;
    if (g_signal.compare_exchange_strong(none, signal)) {
        if (host::FaultInjector* faults = g_cancel.load()) faults->set_cancel(true);
        return;
    }
    // Only async-signal-safe calls from here on.
    host::removeUnfinishedFiles();
    static const char message[] = "orbivane-render: interrupted again, stopped at once\n";
    const ssize_t ignored = ::write(STDERR_FILENO, message, sizeof message - 1);
    (void)ignored;
    ::_exit(128 + g_signal.load());
}

}  // namespace

void installInterruptHandlers() {
    struct sigaction action = {};
    action.sa_handler = onSignal;
    sigemptyset(&action.sa_mask);
    action.sa_flags = SA_RESTART;
    sigaction(SIGINT, &action, nullptr);
    sigaction(SIGTERM, &action, nullptr);
}

int interruptSignal() { return g_signal.load(); }

const char* signalName(int signal) { return signal == SIGINT ? "SIGINT" : signal == SIGTERM ? "SIGTERM" : "a signal"; }

CancelOnInterrupt::CancelOnInterrupt(host::FaultInjector& faults) {
    g_cancel.store(&faults);
    if (g_signal.load() != 0) faults.set_cancel(true);
}

CancelOnInterrupt::~CancelOnInterrupt() { g_cancel.store(nullptr); }

}  // namespace cli
