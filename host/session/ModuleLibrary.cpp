#include "host/session/ModuleLibrary.h"

#include <filesystem>
#include <fstream>
#include <iterator>

#include "host/session/Host.h"

#ifdef _WIN32
#include <windows.h>
#else
#include <dlfcn.h>
#endif

namespace host {

namespace {

constexpr const char* kPiplType = "PiPL";
constexpr int kPiplId = 16000;

#ifdef _WIN32
std::string lastErrorText() {
    char text[512] = {0};
    const DWORD code = ::GetLastError();
    ::FormatMessageA(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr, code, 0, text,
                     sizeof text, nullptr);
    std::string message(text);
    while (!message.empty() && (message.back() == '\n' || message.back() == '\r')) message.pop_back();
    return "error " + std::to_string(code) + (message.empty() ? "" : ": " + message);
}
#endif

}  // namespace

#ifdef _WIN32

ModuleLibrary::ModuleLibrary(const std::string& path) : path_(path) {
    handle_ = ::LoadLibraryA(path.c_str());
    if (!handle_) throw HostError("cannot load " + path + ": " + lastErrorText());
}

ModuleLibrary::~ModuleLibrary() { ::FreeLibrary(static_cast<HMODULE>(handle_)); }

std::optional<std::vector<std::uint8_t>> ModuleLibrary::piplBytes() const {
    const HMODULE module = static_cast<HMODULE>(handle_);
    HRSRC found = ::FindResourceA(module, MAKEINTRESOURCEA(kPiplId), kPiplType);
    if (!found) return std::nullopt;
    HGLOBAL loaded = ::LoadResource(module, found);
    const void* data = loaded ? ::LockResource(loaded) : nullptr;
    if (!data) throw HostError(path_ + ": cannot load its PiPL resource: " + lastErrorText());
    const auto* bytes = static_cast<const std::uint8_t*>(data);
    return std::vector<std::uint8_t>(bytes, bytes + ::SizeofResource(module, found));
}

const char* ModuleLibrary::piplKind() { return "PiPL resource"; }

void* ModuleLibrary::symbol(const std::string& name) const {
    return reinterpret_cast<void*>(::GetProcAddress(static_cast<HMODULE>(handle_), name.c_str()));
}

std::string programDirectory() {
    char path[MAX_PATH] = {0};
    const DWORD length = ::GetModuleFileNameA(nullptr, path, MAX_PATH);
    if (length == 0 || length >= MAX_PATH) return "";
    return std::filesystem::path(path).parent_path().string();
}

#else

ModuleLibrary::ModuleLibrary(const std::string& path) : path_(path) {
    handle_ = ::dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (!handle_) throw HostError("cannot load " + path + ": " + ::dlerror());
}

ModuleLibrary::~ModuleLibrary() { ::dlclose(handle_); }

std::optional<std::vector<std::uint8_t>> ModuleLibrary::piplBytes() const {
    const std::string sidecar = findPiplSidecar(path_);
    if (sidecar.empty()) return std::nullopt;
    std::ifstream file(sidecar, std::ios::binary);
    if (!file) throw HostError("cannot read " + sidecar);
    return std::vector<std::uint8_t>((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
}

const char* ModuleLibrary::piplKind() { return "PiPL sidecar"; }

void* ModuleLibrary::symbol(const std::string& name) const { return ::dlsym(handle_, name.c_str()); }

std::string programDirectory() {
    std::error_code ec;
    const std::filesystem::path program = std::filesystem::read_symlink("/proc/self/exe", ec);
    return ec ? std::string() : program.parent_path().string();
}

#endif

}  // namespace host
