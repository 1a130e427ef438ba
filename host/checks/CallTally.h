#pragma once
// Counts the host entry points one command calls, by name and by the command running at the
// time (SMART_PRE_RENDER and SMART_RENDER share one context). Sampling functions are called
// per pixel from every iteration thread, so each thread counts into a table of its own that
// only it writes; the tables are merged once the command is over. After a thread's first call
// in a command, counting takes no lock and writes no shared cache line.

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "AE_Effect.h"

namespace host {

template <class T>
class PerThread;

// Calls of one entry point in one command.
struct CallCount {
    std::string name;
    std::uint64_t calls = 0;
    std::uint64_t refused = 0;  // answered A_Err_WRONG_THREAD by the strict render-thread rule
    bool forbidden = false;     // After Effects refuses it on render threads
};

class CallTally {
public:
    CallTally();
    ~CallTally();
    CallTally(const CallTally&) = delete;
    CallTally& operator=(const CallTally&) = delete;

    // Counts one call of `name` during `cmd`. `name` must outlive the tally (the entry
    // points pass string literals).
    void count(PF_Cmd cmd, const char* name);
    // Counts one refusal of a call already counted.
    void refuse(PF_Cmd cmd, const char* name);

    // The calls made during `cmd`, one entry per name, sorted by name. Only valid when no
    // thread is counting for this tally any more (the command has returned).
    std::vector<CallCount> totals(PF_Cmd cmd) const;

private:
    struct ThreadTable;
    struct Entry;
    Entry& entry(PF_Cmd cmd, const char* name);
    // count() past the per-thread memory of the last entry; kept out of line so the common
    // path stays a leaf.
    void countAndRemember(PF_Cmd cmd, const char* name);

    std::unique_ptr<PerThread<ThreadTable>> tables_;
    // Tells tallies apart even when one reuses another's address (for the per-thread memory
    // of the entry counted last).
    const std::uint64_t serial_;
};

}  // namespace host
