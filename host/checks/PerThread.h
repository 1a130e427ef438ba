#pragma once
// One value per thread for an owning object: each thread writes only its own value, anyone
// reads them all through for_each(). A thread finds its value through a thread-local note of
// the owner it used last, so after its first use it takes no lock and writes no shared cache
// line. Used by the entry gate's counters, which run per pixel on every iteration thread.

#include <atomic>
#include <cstdint>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

namespace host {

// Tells owners apart even when one reuses another's address.
inline std::atomic<std::uint64_t> g_next_per_thread_serial{1};

template <class T>
class PerThread {
public:
    PerThread() : serial_(g_next_per_thread_serial.fetch_add(1)) {}
    PerThread(const PerThread&) = delete;
    PerThread& operator=(const PerThread&) = delete;

    // The calling thread's value, made (default-constructed) on its first use.
    T& local() {
        LastUsed& last = last_used();
        if (last.serial == serial_) return *static_cast<T*>(last.value);
        T& value = find_or_add(std::this_thread::get_id());
        last.serial = serial_;
        last.value = &value;
        return value;
    }

    // Calls `f(const T&)` for every thread's value, in the order the threads first came.
    template <class F>
    void for_each(F&& f) const {
        std::lock_guard<std::mutex> lock(mutex_);
        for (const auto& slot : slots_) f(static_cast<const T&>(slot->value));
    }

private:
    struct Slot {
        explicit Slot(std::thread::id id) : owner(id) {}
        std::thread::id owner;
        T value{};
    };
    struct LastUsed {
        std::uint64_t serial = 0;
        void* value = nullptr;
    };

    static LastUsed& last_used() {
        thread_local LastUsed last;
        return last;
    }

    T& find_or_add(std::thread::id me) {
        std::lock_guard<std::mutex> lock(mutex_);
        for (const auto& slot : slots_)
            if (slot->owner == me) return slot->value;
        slots_.push_back(std::make_unique<Slot>(me));
        return slots_.back()->value;
    }

    const std::uint64_t serial_;
    mutable std::mutex mutex_;  // guards slots_ (taken once per thread, never per use)
    std::vector<std::unique_ptr<Slot>> slots_;
};

// Adds one to a counter only its own thread writes: a plain read-modify-write is enough and
// needs no locked instruction; the counter is atomic so other threads may read it.
inline void bumpOwnCounter(std::atomic<std::uint64_t>& counter) {
    counter.store(counter.load(std::memory_order_relaxed) + 1, std::memory_order_relaxed);
}

}  // namespace host
