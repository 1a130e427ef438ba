#include "cli/ModuleLocator.h"

#include "cli/CliError.h"
#include "host/session/ModuleLibrary.h"

#include <filesystem>
#include <system_error>

namespace cli {

namespace {

bool isFile(const std::string& path) {
    std::error_code ec;
    return !path.empty() && std::filesystem::is_regular_file(path, ec);
}

std::string chosen(const std::string& path, const char* how) {
    if (!isFile(path)) throw CliError(kExitModuleFailed, std::string("effect module ") + path + " (" + how + ") not found");
    return path;
}

}  // namespace

std::vector<std::string> moduleCandidates(const ModuleSearch& search) {
    std::vector<std::string> out;
    if (!search.program_dir.empty()) {
        out.push_back(search.program_dir + "/Orbivane.so");
        out.push_back(search.program_dir + "/../Orbivane.so");
        out.push_back(search.program_dir + "/../lib/orbivane/Orbivane.so");  // installed layout
    }
    if (!search.built_path.empty()) out.push_back(search.built_path);
    return out;
}

std::string locateModule(const ModuleSearch& search) {
    if (!search.explicit_path.empty()) return chosen(search.explicit_path, "--module");
    if (!search.environment.empty()) return chosen(search.environment, "ORBIVANE_MODULE");
    std::string tried;
    for (const std::string& candidate : moduleCandidates(search)) {
        if (isFile(candidate)) return std::filesystem::path(candidate).lexically_normal().string();
        tried += "\n  " + candidate;
    }
    throw CliError(kExitModuleFailed, "cannot find the effect module Orbivane.so; looked at:" + tried +
                                          "\nbuild it, or give --module PATH or ORBIVANE_MODULE");
}

std::string programDir(const char* argv0) {
    const std::string dir = host::programDirectory();
    if (!dir.empty() || !argv0) return dir;
    std::error_code ec;
    return std::filesystem::absolute(argv0, ec).parent_path().string();
}

}  // namespace cli
