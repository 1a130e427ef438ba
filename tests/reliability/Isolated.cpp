#include "reliability/Isolated.h"

#include <csignal>
#include <cstdio>
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

std::string readAll(int fd) {
    std::string text;
    char buffer[4096];
    for (ssize_t n; (n = ::read(fd, buffer, sizeof buffer)) != 0;) {
        if (n > 0) text.append(buffer, static_cast<std::size_t>(n));
        else if (errno != EINTR) break;
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
    const pid_t pid = ::pipe(fds) == 0 ? ::fork() : -1;
    if (pid < 0) {
        outcome.exit_code = -1;
        outcome.output = std::string("cannot start a child: ") + std::strerror(errno);
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
        if (FILE* pipe = ::fdopen(fds[1], "w")) {
            std::fwrite(text.data(), 1, text.size(), pipe);
            std::fclose(pipe);
        }
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
