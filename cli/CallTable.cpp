#include "cli/CallTable.h"

#include <algorithm>
#include <cstdio>
#include <map>

namespace cli {

namespace {

struct Row {
    std::uint64_t pre_render = 0;
    std::uint64_t render = 0;
    bool forbidden = false;
};

std::map<std::string, Row> rowsOf(const host::RenderCallLog& calls) {
    std::map<std::string, Row> rows;
    for (const host::CallCount& c : calls.pre_render) {
        rows[c.name].pre_render = c.calls;
        rows[c.name].forbidden = c.forbidden;
    }
    for (const host::CallCount& c : calls.render) {
        rows[c.name].render = c.calls;
        rows[c.name].forbidden = c.forbidden;
    }
    return rows;
}

std::string line(const std::string& name, std::size_t width, const std::string& pre, const std::string& render,
                 const char* note) {
    char numbers[64];
    std::snprintf(numbers, sizeof numbers, "  %12s  %12s", pre.c_str(), render.c_str());
    std::string out = "  " + name + std::string(width - name.size(), ' ') + numbers;
    if (*note) out += std::string("  ") + note;
    return out + "\n";
}

}  // namespace

std::string formatCallTable(const host::RenderCallLog& calls, std::size_t frames) {
    const std::map<std::string, Row> rows = rowsOf(calls);
    const std::string title = "host calls over " + std::to_string(frames) + (frames == 1 ? " frame" : " frames");
    std::size_t width = title.size();
    for (const auto& row : rows) width = std::max(width, row.first.size());

    std::string out = line(title, width, "pre-render", "render", "");
    for (const auto& row : rows)
        out += line(row.first, width, std::to_string(row.second.pre_render), std::to_string(row.second.render),
                    row.second.forbidden ? "refused by After Effects on render threads" : "");
    const std::vector<std::string> forbidden = calls.forbidden_calls();
    if (forbidden.empty()) return out + "no call that After Effects refuses on render threads\n";
    out += std::to_string(forbidden.size()) + " refused by After Effects 13.5+ on render threads:";
    for (std::size_t i = 0; i < forbidden.size(); ++i) out += (i ? ", " : " ") + forbidden[i];
    return out + "\n";
}

}  // namespace cli
