#include "host/CallTally.h"

#include <algorithm>
#include <atomic>
#include <cstring>
#include <map>
#include <thread>

namespace host {

namespace {

std::atomic<std::uint64_t> g_next_serial{1};

// A name past a full table still gets counted, under this name.
constexpr const char* kOverflowName = "(other entry points)";

}  // namespace

struct CallTally::Entry {
    PF_Cmd cmd = PF_Cmd_ABOUT;
    const char* name = nullptr;
    // Written by the owning thread only; atomic so the merge reads them without a data race.
    std::atomic<std::uint64_t> calls{0};
    std::atomic<std::uint64_t> refused{0};
};

struct CallTally::ThreadTable {
    // A render calls a few dozen distinct entry points; the host has about a hundred.
    static constexpr int kCapacity = 160;

    explicit ThreadTable(std::thread::id id) : owner(id) {}

    std::thread::id owner;
    std::atomic<int> used{0};  // entries [0, used) are filled; published after each fill
    int last = 0;              // the entry hit last: the same function is usually called again
    Entry entries[kCapacity + 1];  // the extra one counts overflow
};

namespace {

void bump(std::atomic<std::uint64_t>& counter) {
    // Single writer: a plain read-modify-write is enough and needs no locked instruction.
    counter.store(counter.load(std::memory_order_relaxed) + 1, std::memory_order_relaxed);
}

// The calling thread's table of the tally it used last.
struct ThreadCache {
    std::uint64_t serial = 0;
    void* table = nullptr;
};
thread_local ThreadCache t_cache;

}  // namespace

CallTally::CallTally() : serial_(g_next_serial.fetch_add(1)) {}
CallTally::~CallTally() = default;

CallTally::ThreadTable& CallTally::table_of_this_thread() {
    if (t_cache.serial == serial_) return *static_cast<ThreadTable*>(t_cache.table);
    const std::thread::id me = std::this_thread::get_id();
    std::lock_guard<std::mutex> lock(mutex_);
    ThreadTable* table = nullptr;
    for (const auto& t : tables_)
        if (t->owner == me) table = t.get();
    if (!table) {
        tables_.push_back(std::make_unique<ThreadTable>(me));
        table = tables_.back().get();
    }
    t_cache.serial = serial_;
    t_cache.table = table;
    return *table;
}

CallTally::Entry& CallTally::entry(PF_Cmd cmd, const char* name) {
    ThreadTable& table = table_of_this_thread();
    Entry& last = table.entries[table.last];
    if (last.name == name && last.cmd == cmd) return last;
    const int used = table.used.load(std::memory_order_relaxed);
    for (int i = 0; i < used; ++i) {
        Entry& e = table.entries[i];
        if (e.name == name && e.cmd == cmd) {
            table.last = i;
            return e;
        }
    }
    if (used == ThreadTable::kCapacity) {
        Entry& overflow = table.entries[ThreadTable::kCapacity];
        overflow.name = kOverflowName;
        overflow.cmd = cmd;
        return overflow;
    }
    Entry& fresh = table.entries[used];
    fresh.cmd = cmd;
    fresh.name = name;
    table.used.store(used + 1, std::memory_order_release);
    table.last = used;
    return fresh;
}

void CallTally::count(PF_Cmd cmd, const char* name) { bump(entry(cmd, name).calls); }

void CallTally::refuse(PF_Cmd cmd, const char* name) { bump(entry(cmd, name).refused); }

std::vector<CallCount> CallTally::totals(PF_Cmd cmd) const {
    // The same name may come from several string literals: merge by text.
    std::map<std::string, CallCount> by_name;
    std::lock_guard<std::mutex> lock(mutex_);
    for (const auto& table : tables_) {
        const int used = table->used.load(std::memory_order_acquire);
        for (int i = 0; i <= ThreadTable::kCapacity; ++i) {
            if (i >= used && i != ThreadTable::kCapacity) continue;
            const Entry& e = table->entries[i];
            if (!e.name || e.cmd != cmd) continue;
            CallCount& total = by_name[e.name];
            total.name = e.name;
            total.calls += e.calls.load(std::memory_order_relaxed);
            total.refused += e.refused.load(std::memory_order_relaxed);
        }
    }
    std::vector<CallCount> out;
    out.reserve(by_name.size());
    for (auto& entry : by_name) out.push_back(std::move(entry.second));
    return out;
}

}  // namespace host
