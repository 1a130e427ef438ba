#include "host/checks/FaultInjector.h"

namespace host {

void FaultInjector::fail_call(std::uint64_t n, std::int32_t error) {
    std::lock_guard<std::mutex> lock(mutex_);
    fail_at_error_.store(error);
    fail_at_.store(n);
    update_armed();
}

void FaultInjector::fail_every(const std::string& name, std::int32_t error) {
    std::lock_guard<std::mutex> lock(mutex_);
    named_[name] = error;
    has_named_rules_.store(true);
    update_armed();
}

void FaultInjector::set_recording(bool on) {
    std::lock_guard<std::mutex> lock(mutex_);
    recording_.store(on);
    update_armed();
}

void FaultInjector::reset() {
    std::lock_guard<std::mutex> lock(mutex_);
    named_.clear();
    recorded_.clear();
    has_named_rules_.store(false);
    fail_at_.store(0);
    fail_at_error_.store(0);
    cancel_.store(false);
    unarmed_before_reset_ = unarmed_calls();
    armed_calls_.store(0);
    injected_.store(0);
    update_armed();
}

void FaultInjector::update_armed() {
    const bool armed = fail_at_.load() != 0 || has_named_rules_.load() || recording_.load();
    if (armed && !armed_.load()) unarmed_at_arming_.store(unarmed_calls() - unarmed_before_reset_);
    armed_.store(armed);
}

std::int32_t FaultInjector::hit_armed(const char* name) {
    const std::uint64_t number = unarmed_at_arming_.load() + armed_calls_.fetch_add(1) + 1;
    std::int32_t error = 0;
    if (fail_at_.load() == number) error = fail_at_error_.load();
    if (recording_.load() || has_named_rules_.load()) {
        std::lock_guard<std::mutex> lock(mutex_);
        if (recording_.load()) recorded_.emplace_back(name);
        if (error == 0) {
            auto it = named_.find(name);
            if (it != named_.end()) error = it->second;
        }
    }
    if (error != 0) injected_.fetch_add(1);
    return error;
}

std::uint64_t FaultInjector::unarmed_calls() const {
    std::uint64_t total = 0;
    unarmed_calls_.for_each([&](const ThreadCalls& t) { total += t.calls.load(std::memory_order_relaxed); });
    return total;
}

std::uint64_t FaultInjector::calls() const {
    std::lock_guard<std::mutex> lock(mutex_);
    if (armed_.load()) return unarmed_at_arming_.load() + armed_calls_.load();
    return unarmed_calls() - unarmed_before_reset_ + armed_calls_.load();
}

std::vector<std::string> FaultInjector::recorded_calls() const {
    std::lock_guard<std::mutex> lock(mutex_);
    return recorded_;
}

}  // namespace host
