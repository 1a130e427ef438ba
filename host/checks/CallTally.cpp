#include "host/checks/CallTally.h"

#include "host/checks/PerThread.h"

#include <algorithm>
#include <atomic>
#include <cstring>
#include <map>

namespace host {

namespace {

// A name past a full table still gets counted, under this name.
constexpr const char* kOverflowName = "(other entry points)";

std::atomic<std::uint64_t> g_next_tally_serial{1};

// The call counter a thread bumped last, over all tallies: a sampling loop calls one entry
// point per pixel, so most counts land here without searching the thread's table.
struct LastCounted {
    std::uint64_t tally_serial = 0;
    PF_Cmd cmd = PF_Cmd_ABOUT;
    const char* name = nullptr;
    std::atomic<std::uint64_t>* calls = nullptr;
};
thread_local LastCounted t_last_counted;

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

    std::atomic<int> used{0};  // entries [0, used) are filled; published after each fill
    int last = 0;              // the entry hit last: the same function is usually called again
    Entry entries[kCapacity + 1];  // the extra one counts overflow
};

CallTally::CallTally()
    : tables_(std::make_unique<PerThread<ThreadTable>>()), serial_(g_next_tally_serial.fetch_add(1)) {}
CallTally::~CallTally() = default;

CallTally::Entry& CallTally::entry(PF_Cmd cmd, const char* name) {
    ThreadTable& table = tables_->local();
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

void CallTally::count(PF_Cmd cmd, const char* name) {
    const LastCounted& last = t_last_counted;
    if (last.tally_serial == serial_ && last.name == name && last.cmd == cmd)
        bumpOwnCounter(*last.calls);
    else
        countAndRemember(cmd, name);
}

void CallTally::countAndRemember(PF_Cmd cmd, const char* name) {
    Entry& e = entry(cmd, name);
    bumpOwnCounter(e.calls);
    // The overflow entry is relabelled per command on every use, so it is never remembered.
    if (e.name == name) t_last_counted = LastCounted{serial_, cmd, name, &e.calls};
}

void CallTally::refuse(PF_Cmd cmd, const char* name) { bumpOwnCounter(entry(cmd, name).refused); }

std::vector<CallCount> CallTally::totals(PF_Cmd cmd) const {
    // The same name may come from several string literals: merge by text.
    std::map<std::string, CallCount> by_name;
    tables_->for_each([&](const ThreadTable& table) {
        const int used = table.used.load(std::memory_order_acquire);
        for (int i = 0; i <= ThreadTable::kCapacity; ++i) {
            if (i >= used && i != ThreadTable::kCapacity) continue;
            const Entry& e = table.entries[i];
            if (!e.name || e.cmd != cmd) continue;
            CallCount& total = by_name[e.name];
            total.name = e.name;
            total.calls += e.calls.load(std::memory_order_relaxed);
            total.refused += e.refused.load(std::memory_order_relaxed);
        }
    });
    std::vector<CallCount> out;
    out.reserve(by_name.size());
    for (auto& entry : by_name) out.push_back(std::move(entry.second));
    return out;
}

}  // namespace host
