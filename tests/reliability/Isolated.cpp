#include "reliability/Isolated.h"

#include <csignal>
#include <cstring>
#include <exception>
#include <string>

#include <sys/wait.h>
#include <unistd.h>

// LeakSanitizer's entry point, present only in sanitizer builds.
extern "C" int __lsan_do_recoverable_leak_check() __attribute__((weak));

namespace reliability {

namespace {

// The exit status of a child whose heap leaked: _exit() skips the leak check that a normal
// exit runs, so the child runs it itself (a no-op without LeakSanitizer).
constexpr int kLeakedExitCode = 23;

int leakCheckedExitCode(int code) {
    if (__lsan_do_recoverable_leak_check && __lsan_do_recoverable_leak_check() != 0) return kLeakedExitCode;
    return code;
}

void writeAll(int fd, const std::string& text) {
    const char* p = text.data();
    std::size_t left = text.size();
    while (left > 0) {
        const ssize_t n = ::write(fd, p, left);
        if (n < 0 && errno == EINTR) continue;
        if (n <= 0) return;
        p += n;
        left -= static_cast<std::size_t>(n);
    }
}

std::string readAll(int fd) {
    std::string text;
    char buffer[4096];
    for (;;) {
        const ssize_t n = ::read(fd, buffer, sizeof buffer);
        if (n < 0 && errno == EINTR) continue;
        if (n <= 0) break;
        text.append(buffer, static_cast<std::size_t>(n));
    }
    return text;
}

}  // namespace

std::string ChildOutcome::describe() const {
    if (signal == SIGALRM) return "timed out";
    if (signal == 0 && exit_code == kLeakedExitCode) return "a heap leak (LeakSanitizer's report is on stderr)";
    if (signal != 0) return "signal " + std::to_string(signal) + " (" + ::strsignal(signal) + ")";
    return "exit " + std::to_string(exit_code);
}

ChildOutcome runIsolated(const std::function<std::string()>& body, unsigned timeout_seconds) {
    ChildOutcome outcome;
    int fds[2];
    if (::pipe(fds) != 0) {
        outcome.exit_code = -1;
        outcome.output = "pipe failed";
        return outcome;
    }
    const pid_t pid = ::fork();
    if (pid < 0) {
        ::close(fds[0]);
        ::close(fds[1]);
        outcome.exit_code = -1;
        outcome.output = "fork failed";
        return outcome;
    }
    if (pid == 0) {
        ::close(fds[0]);
        ::alarm(timeout_seconds);
        int code = 0;
        std::string text;
        try {
            text = body();
        } catch (const std::exception& e) {
            text = std::string("exception: ") + e.what();
            code = 3;
        } catch (...) {
            text = "exception of an unknown type";
            code = 3;
        }
        writeAll(fds[1], text);
        ::close(fds[1]);
        // No atexit handlers or static destructors: they belong to the parent's test run.
        ::_exit(leakCheckedExitCode(code));
    }
    ::close(fds[1]);
    outcome.output = readAll(fds[0]);
    ::close(fds[0]);
    int status = 0;
    while (::waitpid(pid, &status, 0) < 0 && errno == EINTR) {
    }
    if (WIFEXITED(status)) {
        outcome.exit_code = WEXITSTATUS(status);
        outcome.finished = outcome.exit_code == 0;
    } else if (WIFSIGNALED(status)) {
        outcome.signal = WTERMSIG(status);
    }
    return outcome;
}

}  // namespace reliability
