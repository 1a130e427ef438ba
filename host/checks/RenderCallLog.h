#pragma once
// What the module called on the host during one render, per smart command, with the calls
// After Effects refuses on its render threads marked: a render that lists any of them works
// here but may fail in After Effects since 13.5.

#include <string>
#include <vector>

#include "AE_Effect.h"
#include "host/checks/CallTally.h"

namespace host {

// True for the entry points After Effects refuses on render threads since 13.5. The strict
// render-thread mode (HostOptions::strict_render_thread) refuses exactly these.
bool forbiddenOnRenderThread(const char* name);
bool forbiddenOnRenderThread(const std::string& name);
// Those entry points, in alphabetical order.
const std::vector<std::string>& renderThreadForbiddenNames();

struct RenderCallLog {
    std::vector<CallCount> pre_render;  // SMART_PRE_RENDER, sorted by name
    std::vector<CallCount> render;      // SMART_RENDER, sorted by name

    // The calls of `name` during `cmd` (SMART_PRE_RENDER or SMART_RENDER); 0 when none.
    std::uint64_t calls(PF_Cmd cmd, const std::string& name) const;
    // Names called during either command that After Effects refuses on render threads.
    std::vector<std::string> forbidden_calls() const;
    bool empty() const { return pre_render.empty() && render.empty(); }
    // Adds another render's calls to these (the totals of several frames).
    void add(const RenderCallLog& other);
};

// The log of a render's context: the two smart commands' totals, forbidden calls marked.
RenderCallLog renderCallLog(const CallTally& tally);

}  // namespace host
