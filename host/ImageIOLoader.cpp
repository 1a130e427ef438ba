// The host's side of the image-IO module: opens it once, on the first image read or written,
// from beside the running program or else from the build folder. Pixel dumps are read here,
// without it.
#include "host/FileCommit.h"
#include "host/ImageDump.h"
#include "host/ImageIOModule.h"
#include "host/SystemFaults.h"

#include <dlfcn.h>

#include <filesystem>
#include <mutex>
#include <system_error>

#ifndef ORBIVANE_IMAGEIO_MODULE
#define ORBIVANE_IMAGEIO_MODULE ""
#endif

namespace host {

namespace {

constexpr const char* kModuleName = "orbivane_imageio.so";

std::string besideProgram() {
    std::error_code ec;
    const std::filesystem::path program = std::filesystem::read_symlink("/proc/self/exe", ec);
    return ec ? std::string() : (program.parent_path() / kModuleName).string();
}

// The module's table, or an explanation of why it could not be opened.
struct Opened {
    const ImageIOModule* module = nullptr;
    std::string error;
};

Opened openModule() {
    Opened opened;
    for (const std::string& path : {besideProgram(), std::string(ORBIVANE_IMAGEIO_MODULE)}) {
        if (path.empty() || !std::filesystem::exists(path)) continue;
        void* handle = ::dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
        if (!handle) {
            opened.error = ::dlerror();
            return opened;
        }
        auto entry = reinterpret_cast<const ImageIOModule* (*)()>(::dlsym(handle, "orbivane_image_io_module"));
        if (entry) opened.module = entry();
        if (!opened.module) opened.error = path + " is not the image-IO module";
        return opened;
    }
    opened.error = std::string(kModuleName) + " was found neither beside the program nor in the build";
    return opened;
}

const ImageIOModule& module(const std::string& action, const std::string& path) {
    static std::once_flag once;
    static Opened opened;
    std::call_once(once, [] { opened = openModule(); });
    if (!opened.module) throw ImageIOError("cannot " + action + " image '" + path + "': " + opened.error);
    return *opened.module;
}

}  // namespace

Image loadImage(const std::string& path) {
    if (isImageDump(path)) return readImageDump(path);
    return module("read", path).load(path);
}

void saveImage(const Image& image, const std::string& path, const SaveOptions& options) {
    if (systemFault(SystemCall::Allocate) != 0) throw outOfMemoryWhileEncoding(image, path);
    const std::vector<unsigned char> bytes = module("write", path).encode(image, path, options);
    try {
        writeFileAtomically(path, bytes.data(), bytes.size());
    } catch (const FileError& e) {
        throw ImageIOError("cannot write image '" + path + "': " + e.reason());
    }
}

ImageSize readImageSize(const std::string& path) {
    if (!isImageDump(path)) return module("read", path).size(path);
    ImageSize size;
    readImageDumpSize(path, size.width, size.height);
    return size;
}

}  // namespace host
