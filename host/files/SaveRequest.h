#pragma once
// What a save may ask for, checked the same way by every writer (libpng's and OpenImageIO's):
// the format from the extension, the PNG depth and level, the EXR compression, a non-empty
// picture. Inline, so the image-IO module needs nothing else from the host.

#include "host/files/ImageIO.h"

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <string>

namespace host {

inline std::string lowerExtension(const std::string& path) {
    std::string ext = std::filesystem::path(path).extension().string();
    std::transform(ext.begin(), ext.end(), ext.begin(), [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return ext;
}

inline bool isExrCompression(const std::string& name) {
    for (const char* known : kExrCompressions)
        if (name == known) return true;
    return false;
}

// Refuses what cannot be written; true for OpenEXR, false for PNG.
inline bool checkedSaveRequest(int width, int height, const std::string& path, const SaveOptions& options) {
    const std::string ext = lowerExtension(path);
    const bool exr = ext == ".exr";
    if (!exr && ext != ".png")
        throw ImageIOError("cannot write image '" + path + "': only .png and .exr files are written");
    if (!exr && options.png_bits != 8 && options.png_bits != 16)
        throw ImageIOError("cannot write image '" + path + "': PNG depth must be 8 or 16 bits");
    if (!exr && (options.png_level < 0 || options.png_level > 9))
        throw ImageIOError("cannot write image '" + path + "': PNG compression level must be 0 to 9");
    if (exr && !isExrCompression(options.exr_compression))
        throw ImageIOError("cannot write image '" + path + "': unknown EXR compression \"" + options.exr_compression + "\"");
    if (width <= 0 || height <= 0) throw ImageIOError("cannot write image '" + path + "': the image is empty");
    return exr;
}

}  // namespace host
