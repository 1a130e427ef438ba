#pragma once
// Finds the effect module (Orbivane.so) to load.

#include <string>
#include <vector>

namespace cli {

struct ModuleSearch {
    std::string explicit_path;  // --module: used as given, never replaced by another
    std::string environment;    // $ORBIVANE_MODULE, same rule
    std::string program_dir;    // folder of the running program
    std::string built_path;     // the module the build produced (absolute, fixed at build time)
};

// The places looked at, in order, when neither --module nor $ORBIVANE_MODULE is given:
// next to the program, its parent folder (the build tree keeps the program in cli/), the
// installed layout (bin/orbivane-render, lib/orbivane/Orbivane.so), then the build's own module.
std::vector<std::string> moduleCandidates(const ModuleSearch& search);

// The module to load. Throws CliError (module failure) naming what was tried.
std::string locateModule(const ModuleSearch& search);

// The running program's folder (from /proc/self/exe, else argv[0]).
std::string programDir(const char* argv0);

}  // namespace cli
