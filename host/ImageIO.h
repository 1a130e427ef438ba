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
Image loadImage(const std::string& path);

// PNG at 8 or 16 bits per channel (straight alpha, as PNG defines it) or OpenEXR at 32-bit
// float (premultiplied, as EXR defines it), chosen by the extension (.png / .exr). The picture
// is encoded in memory and written all or nothing (writeFileAtomically): a failed save never
// leaves a half-written file under the final name, nor touches the file already there. The
// message of the ImageIOError thrown names the file and the operating system's reason.
struct SaveOptions {
    int png_bits = 8;  // 8 or 16
};
void saveImage(const Image& image, const std::string& path, const SaveOptions& options = {});

}  // namespace host
