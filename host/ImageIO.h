#pragma once
// Reading and writing images through OpenImageIO. Files may hold straight or premultiplied
// alpha; in memory an Image is always straight.

#include "host/Image.h"

#include <stdexcept>
#include <string>

namespace host {

// Raised with a message that names the file and says what went wrong.
class ImageIOError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

// Reads PNG, JPEG, TIFF, EXR (anything OpenImageIO reads): integer files normalised to
// 0..1, grey expanded to RGB, missing alpha opaque, premultiplied files un-premultiplied.
// The header is checked before any pixel is allocated: a path that is not a regular file, or
// an image beyond inputLimits(), is refused. `origin` (e.g. "scene.json: layers[0].source.file")
// starts every message, so a failure names where the file was asked for.
Image loadImage(const std::string& path, const std::string& origin = "");

// The size of the image at `path` from its header alone, with the same checks as loadImage.
struct ImageSize {
    int width = 0;
    int height = 0;
};
ImageSize readImageSize(const std::string& path, const std::string& origin = "");

// PNG at 8 or 16 bits per channel (straight alpha, as PNG defines it) or OpenEXR at 32-bit
// float (premultiplied, as EXR defines it), chosen by the extension (.png / .exr). The file is
// written under a temporary name in the same folder and renamed into place, so a failed save
// never leaves a half-written file under the final name.
struct SaveOptions {
    int png_bits = 8;  // 8 or 16
};
void saveImage(const Image& image, const std::string& path, const SaveOptions& options = {});

}  // namespace host
