#pragma once
// PNG files through libpng itself. Textures and frames are PNG in nearly every job, and
// OpenImageIO costs every process about 0.2 s of CPU to load (its 260 libraries): reading
// and writing PNG here lets a render that touches no other format skip it. The pixels are
// those OpenImageIO gives: the same expansions (palette, low-bit grey, transparency chunk)
// and the same scaling to floats.

#include "host/files/ImageIOModule.h"

#include <string>
#include <vector>

namespace host {

// True when the file starts with the PNG signature (false when it cannot be read).
bool isPngFile(const std::string& path);

// Throw ImageIOError naming the file and libpng's reason.
ImageHeader readPngHeader(const std::string& path);
Image readPngPixels(const std::string& path);

// The file's bytes for `image` at options.png_level, with the Up filter when
// options.png_up_filter (libpng's choice per row otherwise). Throws ImageIOError.
std::vector<unsigned char> encodePng(const QuantisedImage& image, const std::string& path, const SaveOptions& options);

}  // namespace host
