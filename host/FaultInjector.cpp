#include "host/FaultInjector.h"

namespace host {

void FaultInjector::fail_call(std::uint64_t n, std::int32_t error) {
    fail_at_error_.store(error);
    fail_at_.store(n);
}

void FaultInjector::fail_every(const std::string& name, std::int32_t error) {
    std::lock_guard<std::mutex> lock(mutex_);
    named_[name] = error;
    has_named_rules_.store(true);
}

void FaultInjector::set_recording(bool on) { recording_.store(on); }

void FaultInjector::reset() {
    std::lock_guard<std::mutex> lock(mutex_);
    named_.clear();
    recorded_.clear();
    has_named_rules_.store(false);
    fail_at_.store(0);
    fail_at_error_.store(0);
    cancel_.store(false);
    calls_.store(0);
    injected_.store(0);
}

std::int32_t FaultInjector::hit(const char* name) {
    const std::uint64_t number = calls_.fetch_add(1) + 1;
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

std::vector<std::string> FaultInjector::recorded_calls() const {
    std::lock_guard<std::mutex> lock(mutex_);
    return recorded_;
}

}  // namespace host
