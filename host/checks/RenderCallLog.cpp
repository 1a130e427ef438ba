#include "host/checks/RenderCallLog.h"

#include <algorithm>

namespace host {

namespace {

std::vector<CallCount> marked(std::vector<CallCount> counts) {
    for (CallCount& c : counts) c.forbidden = forbiddenOnRenderThread(c.name);
    return counts;
}

void addCounts(std::vector<CallCount>& into, const std::vector<CallCount>& more) {
    for (const CallCount& c : more) {
        auto at = std::lower_bound(into.begin(), into.end(), c.name,
                                   [](const CallCount& a, const std::string& name) { return a.name < name; });
        if (at == into.end() || at->name != c.name) at = into.insert(at, CallCount{c.name, 0, 0, c.forbidden});
        at->calls += c.calls;
        at->refused += c.refused;
    }
}

const std::vector<CallCount>& phase(const RenderCallLog& log, PF_Cmd cmd) {
    return cmd == PF_Cmd_SMART_PRE_RENDER ? log.pre_render : log.render;
}

}  // namespace

const std::vector<std::string>& renderThreadForbiddenNames() {
    static const std::vector<std::string> names = {
        "AEGP_DisposeEffect",      "AEGP_DisposeStream", "AEGP_EndUndoGroup",
        "AEGP_GetNewLayerStream",  "AEGP_GetStreamName", "AEGP_SetExpression",
        "AEGP_SetExpressionState", "AEGP_StartUndoGroup",
    };
    return names;
}

bool forbiddenOnRenderThread(const char* name) {
    if (!name) return false;
    // Asked per call in strict mode, sampling included: compare in place, allocate nothing.
    const std::vector<std::string>& names = renderThreadForbiddenNames();
    const auto at = std::lower_bound(names.begin(), names.end(), name,
                                     [](const std::string& a, const char* b) { return a.compare(b) < 0; });
    return at != names.end() && at->compare(name) == 0;
}

bool forbiddenOnRenderThread(const std::string& name) { return forbiddenOnRenderThread(name.c_str()); }

std::uint64_t RenderCallLog::calls(PF_Cmd cmd, const std::string& name) const {
    for (const CallCount& c : phase(*this, cmd))
        if (c.name == name) return c.calls;
    return 0;
}

void RenderCallLog::add(const RenderCallLog& other) {
    addCounts(pre_render, other.pre_render);
    addCounts(render, other.render);
}

std::vector<std::string> RenderCallLog::forbidden_calls() const {
    std::vector<std::string> names;
    for (const std::vector<CallCount>* counts : {&pre_render, &render})
        for (const CallCount& c : *counts)
            if (c.forbidden && std::find(names.begin(), names.end(), c.name) == names.end()) names.push_back(c.name);
    std::sort(names.begin(), names.end());
    return names;
}

RenderCallLog renderCallLog(const CallTally& tally) {
    RenderCallLog log;
    log.pre_render = marked(tally.totals(PF_Cmd_SMART_PRE_RENDER));
    log.render = marked(tally.totals(PF_Cmd_SMART_RENDER));
    return log;
}

}  // namespace host
