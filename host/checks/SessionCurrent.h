#pragma once
// The instance of a session-wide service (handle heap, suite registry, fault injector,
// resource counters) that the active host session installed, for the C callbacks that reach
// it without a context pointer. One per service type; null when no session is active.

#include <atomic>

namespace host {

template <class Service>
class SessionCurrent {
public:
    static Service* current() { return current_.load(); }
    void make_current() { current_.store(self()); }
    // Uninstalls this instance only if it is still the installed one.
    void release_current() {
        Service* expected = self();
        current_.compare_exchange_strong(expected, nullptr);
    }

protected:
    SessionCurrent() = default;
    ~SessionCurrent() = default;

private:
    Service* self() { return static_cast<Service*>(this); }
    inline static std::atomic<Service*> current_{nullptr};
};

}  // namespace host
