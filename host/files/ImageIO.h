#pragma once
// Reading and writing images: PNG through libpng (host/files/PngFiles.h), every other format
// through OpenImageIO (a build without it reads pixel dumps only, host/files/ImageDump.h). Files may hold straight or premultiplied
// alpha; in memory an Image is always straight.

#include "host/pixels/Image.h"

#include <stdexcept>
#include <string>
#include <vector>

namespace host {

// Raised with a message that names the file and says what went wrong.
class ImageIOError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

// Reads PNG, JPEG, TIFF, EXR (anything OpenImageIO reads): integer files normalised to
// 0..1, grey expanded to RGB, missing alpha opaque, premultiplied files un-premultiplied; and
// pixel dumps (host/files/ImageDump.h) as they are. The header is checked before any pixel is
// allocated: a path that is not a regular file, or an image beyond inputLimits(), is refused.
// `origin` (e.g. "scene.json: layers[0].source.file") starts every message, so a failure names
// where the file was asked for.
Image loadImage(const std::string& path, const std::string& origin = "");

// The size of the image at `path` from its header alone, with the same checks as loadImage.
struct ImageSize {
    int width = 0;
    int height = 0;
};
ImageSize readImageSize(const std::string& path, const std::string& origin = "");

// The PNG settings of the fastest and of the smallest files.
constexpr int kPngFastLevel = 1;
constexpr int kPngSmallLevel = 9;
// OpenEXR's lossless compressions, as OpenImageIO names them.
constexpr const char* kExrCompressions[] = {"none", "rle", "zips", "zip", "piz"};

// PNG at 8 or 16 bits per channel (straight alpha, as PNG defines it) or OpenEXR at 32-bit
// float (premultiplied, as EXR defines it), chosen by the extension (.png / .exr). The picture
// is encoded in memory and written all or nothing (writeFileAtomically): a failed save never
// leaves a half-written file under the final name, nor touches the file already there. The
// message of the ImageIOError thrown names the file and the operating system's reason.
struct SaveOptions {
    int png_bits = 8;  // 8 or 16
    // zlib level 0-9. With png_up_filter each row is predicted from the one above only: level 1
    // with it encodes a frame about five times faster than level 6 with libpng's choice of
    // filter per row, for files about 1.5 times larger.
    int png_level = kPngFastLevel;
    bool png_up_filter = true;
    // One of kExrCompressions, all lossless. Run-length encoding is the fastest that still
    // halves a typical frame.
    std::string exr_compression = "rle";
    int threads = 1;  // for converting the pixels before encoding
};
void saveImage(const Image& image, const std::string& path, const SaveOptions& options = {});
// The same for a frame already in PNG channels: a PNG of its depth only.
void saveImage(const QuantisedImage& image, const std::string& path, const SaveOptions& options = {});
// The same for a float world: an OpenEXR only.
void saveImage(const FloatWorldFrame& frame, const std::string& path, const SaveOptions& options = {});

// The bytes of the OpenEXR file saveImage writes: the options checked and the picture encoded in
// memory (the image-IO module's writers; PNG is written through libpng). Throws ImageIOError.
std::vector<unsigned char> encodeExr(const Image& image, const std::string& path, const SaveOptions& options);
std::vector<unsigned char> encodeExrWorld(const FloatWorldFrame& frame, const std::string& path,
                                          const SaveOptions& options);

inline ImageIOError outOfMemoryWhileEncoding(int width, int height, const std::string& path) {
    return ImageIOError("cannot write image '" + path + "': out of memory while encoding its " +
                        std::to_string(width) + " x " + std::to_string(height) + " pixels");
}

}  // namespace host
