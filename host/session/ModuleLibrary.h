#pragma once
// Loading an effect module the way the platform's After Effects does: a shared object with its
// PiPL in a sidecar file beside it on Linux (ELF has no resources), a DLL (.aex) with its PiPL
// compiled in as the resource 'PiPL' 16000 on Windows.

#include <optional>
#include <string>
#include <vector>

#include "host/session/Pipl.h"

namespace host {

class ModuleLibrary {
public:
    // Loads the module's code. Throws HostError naming the file and the loader's reason.
    explicit ModuleLibrary(const std::string& path);
    ~ModuleLibrary();
    ModuleLibrary(const ModuleLibrary&) = delete;
    ModuleLibrary& operator=(const ModuleLibrary&) = delete;

    // The module's PiPL bytes: its resource on Windows, its sidecar on Linux; none when it has
    // no PiPL. Throws HostError when a sidecar exists but cannot be read.
    std::optional<std::vector<std::uint8_t>> piplBytes() const;
    // What piplBytes() reads, for messages: "PiPL sidecar" or "PiPL resource".
    static const char* piplKind();
    // The exported function `name`, or null.
    void* symbol(const std::string& name) const;

private:
    std::string path_;
    void* handle_ = nullptr;
};

// The folder of the running program, or "" when the system does not say.
std::string programDirectory();

}  // namespace host
