// The host's side of the image-IO module: opens it once, on the first image read or written,
// from beside the running program or else from the build folder. Pixel dumps are read here,
// without it.
#include "host/files/FileCommit.h"
#include "host/files/ImageDump.h"
#include "host/session/HostError.h"
#include "host/files/ImageIOModule.h"
#include "host/files/PngFiles.h"
#include "host/files/InputFiles.h"
#include "host/files/SaveRequest.h"
#include "host/session/ModuleLibrary.h"
#include "host/checks/SystemFaults.h"

#include <filesystem>
#include <mutex>

#ifndef ORBIVANE_IMAGEIO_MODULE
#define ORBIVANE_IMAGEIO_MODULE ""
#endif

namespace host {

namespace {

constexpr const char* kModuleName = "orbivane_imageio.so";

// The module's table, or an explanation of why it could not be opened.
struct Opened {
    const ModuleLibrary* library = nullptr;  // kept for the whole process: never unloaded
    const ImageIOModule* module = nullptr;
    std::string error;
};

Opened openModule() {
    Opened opened;
    const std::string program_dir = programDirectory();
    const std::string beside = program_dir.empty() ? "" : program_dir + "/" + kModuleName;
    const std::string installed = program_dir.empty() ? "" : program_dir + "/../lib/orbivane/" + kModuleName;
    for (const std::string& path : {beside, installed, std::string(ORBIVANE_IMAGEIO_MODULE)}) {
        if (path.empty() || !std::filesystem::exists(path)) continue;
        try {
            opened.library = new ModuleLibrary(path);
        } catch (const HostError& e) {
            opened.error = e.what();
            return opened;
        }
        auto entry =
            reinterpret_cast<const ImageIOModule* (*)()>(opened.library->symbol("orbivane_image_io_module"));
        if (entry) opened.module = entry();
        if (!opened.module) opened.error = path + " is not the image-IO module";
        return opened;
    }
    opened.error = std::string(kModuleName) + " was found neither beside the program, nor in ../lib/orbivane, nor in the build";
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

namespace {

std::string withOrigin(const std::string& origin, const std::string& message) {
    return origin.empty() ? message : origin + ": " + message;
}

// A regular file whose header fits the input limits, checked before any pixel is allocated (a
// device or FIFO would never end the image library's format detection). Throws ImageIOError
// naming `origin` and the file.
ImageHeader checkedHeader(const std::string& path, const std::string& origin) {
    const std::string cannot = "cannot read image '" + path + "': ";
    const std::string unreadable = unreadableReason(path);
    if (!unreadable.empty()) throw ImageIOError(withOrigin(origin, cannot + unreadable));
    ImageHeader header;
    try {
        header = isPngFile(path) ? readPngHeader(path) : module("read", path).header(path);
    } catch (const ImageIOError& e) {
        throw ImageIOError(withOrigin(origin, e.what()));
    }
    if (header.width <= 0 || header.height <= 0 || header.channels <= 0 || header.depth > 1)
        throw ImageIOError(withOrigin(origin, cannot + "it has no pixels, or is a volume"));
    std::string too_large = inputLimits().refusal(header.width, header.height);
    const double file_bytes = double(header.width) * header.height * header.channels * sizeof(float);
    if (too_large.empty() && file_bytes > double(inputLimits().max_bytes))
        too_large = std::to_string(header.channels) + " channels need " + describeBytes(file_bytes) +
                    " as floats, more than the " + describeBytes(double(inputLimits().max_bytes)) + " allowed per image";
    if (!too_large.empty()) throw ImageIOError(withOrigin(origin, cannot + too_large));
    return header;
}

}  // namespace

Image loadImage(const std::string& path, const std::string& origin) {
    if (isImageDump(path)) return readImageDump(path);
    checkedHeader(path, origin);
    try {
        return isPngFile(path) ? readPngPixels(path) : module("read", path).load(path);
    } catch (const ImageIOError& e) {
        throw ImageIOError(withOrigin(origin, e.what()));
    }
}

namespace {

void writeEncoded(const std::vector<unsigned char>& bytes, const std::string& path) {
    try {
        writeFileAtomically(path, bytes.data(), bytes.size());
    } catch (const FileError& e) {
        throw ImageIOError("cannot write image '" + path + "': " + e.reason());
    }
}

}  // namespace

void saveImage(const Image& image, const std::string& path, const SaveOptions& options) {
    if (systemFault(SystemCall::Allocate) != 0) throw outOfMemoryWhileEncoding(image.width(), image.height(), path);
    if (checkedSaveRequest(image.width(), image.height(), path, options)) {
        writeEncoded(module("write", path).encode_exr(image, path, options), path);
        return;
    }
    QuantisedImage channels;
    try {
        channels = imageToQuantised(image, options.png_bits, options.threads);
    } catch (const ImageAllocationError&) {
        throw outOfMemoryWhileEncoding(image.width(), image.height(), path);
    }
    writeEncoded(encodePng(channels, path, options), path);
}

void saveImage(const FloatWorldFrame& frame, const std::string& path, const SaveOptions& options) {
    if (systemFault(SystemCall::Allocate) != 0)
        throw outOfMemoryWhileEncoding(frame.world->width, frame.world->height, path);
    writeEncoded(module("write", path).encode_exr_world(frame, path, options), path);
}

void saveImage(const QuantisedImage& image, const std::string& path, const SaveOptions& options) {
    if (systemFault(SystemCall::Allocate) != 0) throw outOfMemoryWhileEncoding(image.width, image.height, path);
    writeEncoded(encodePng(image, path, options), path);
}

ImageSize readImageSize(const std::string& path, const std::string& origin) {
    ImageSize size;
    if (isImageDump(path)) {
        readImageDumpSize(path, size.width, size.height);
        return size;
    }
    const ImageHeader header = checkedHeader(path, origin);
    return ImageSize{header.width, header.height};
}

}  // namespace host
