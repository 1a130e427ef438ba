#pragma once
// orbivane-render from start to finish: reads the command line, the scene and the module,
// renders the planned frames and reports. Returns the process exit status.

namespace cli {

int runCommandLine(int argc, const char* const* argv);

}  // namespace cli
