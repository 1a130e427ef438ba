#pragma once
// The --host-calls report: which host functions the effect called while rendering, how often
// in each smart command, and which of them After Effects refuses on its render threads.

#include <string>

#include "host/checks/RenderCallLog.h"

namespace cli {

// A table with one row per function, e.g.
//   host calls over 2 frames     pre-render      render
//   AEGP_GetNewLayerStream                0           8  refused by After Effects on render threads
// followed by a line naming the refused functions (or saying there are none).
std::string formatCallTable(const host::RenderCallLog& calls, std::size_t frames);

}  // namespace cli
