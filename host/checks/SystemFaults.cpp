#include "host/checks/SystemFaults.h"

#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <string>

namespace host {

namespace {

struct Rule {
    bool armed = false;
    SystemCall call = SystemCall::Open;
    long nth = 1;
    int error = 0;    // errno to fail with
    int signal = 0;   // or a signal to raise
    int raises = 0;   // how many times
};

bool callNamed(const std::string& name, SystemCall& call) {
    static const std::pair<const char*, SystemCall> names[] = {
        {"open", SystemCall::Open},     {"write", SystemCall::Write},       {"sync", SystemCall::Sync},
        {"close", SystemCall::Close},   {"rename", SystemCall::Rename},     {"mkdir", SystemCall::MakeFolder},
        {"alloc", SystemCall::Allocate}};
    for (const auto& n : names)
        if (name == n.first) {
            call = n.second;
            return true;
        }
    return false;
}

int errnoNamed(const std::string& name) {
    static const std::pair<const char*, int> names[] = {
        {"ENOSPC", ENOSPC}, {"EIO", EIO},       {"EACCES", EACCES}, {"EXDEV", EXDEV}, {"ENOMEM", ENOMEM},
        {"EDQUOT", EDQUOT}, {"EROFS", EROFS},   {"EPERM", EPERM},   {"EMFILE", EMFILE}};
    for (const auto& n : names)
        if (name == n.first) return n.second;
    return 0;
}

void setSignal(const std::string& what, Rule& rule) {
    const std::size_t x = what.find('x');
    const std::string name = what.substr(0, x);
    rule.signal = name == "SIGINT" ? SIGINT : name == "SIGTERM" ? SIGTERM : 0;
    rule.raises = x == std::string::npos ? 1 : std::atoi(what.c_str() + x + 1);
}

Rule ruleFromEnvironment() {
    Rule rule;
    const char* text = std::getenv("ORBIVANE_TEST_FAULT");
    if (!text || !*text) return rule;
    const std::string spec(text);
    const std::size_t first = spec.find(':');
    const std::size_t second = spec.find(':', first + 1);
    if (first == std::string::npos || !callNamed(spec.substr(0, first), rule.call)) return rule;
    const std::size_t what_end = second == std::string::npos ? spec.size() : second;
    const std::string what = spec.substr(first + 1, what_end - first - 1);
    if (second != std::string::npos) rule.nth = std::atol(spec.c_str() + second + 1);
    if (what.rfind("SIG", 0) == 0)
        setSignal(what, rule);
    else
        rule.error = errnoNamed(what);
    rule.armed = rule.error != 0 || rule.signal != 0;
    return rule;
}

}  // namespace

int systemFault(SystemCall call) {
    static const Rule rule = ruleFromEnvironment();
    if (!rule.armed || rule.call != call) return 0;
    static std::atomic<long> calls{0};
    if (calls.fetch_add(1) + 1 != rule.nth) return 0;
    for (int i = 0; i < rule.raises; ++i) std::raise(rule.signal);
    return rule.error;
}

}  // namespace host
