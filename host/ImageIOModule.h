#pragma once
// What the image-IO module (orbivane_imageio.so) hands the host. OpenImageIO brings in some
// 260 shared libraries whose relocation and start-up cost about 0.2 s of CPU per process, so
// it lives in a module of its own, opened the first time an image file is read or written:
// programs and tests that never touch a file never pay for it.

#include "host/ImageIO.h"

#include <string>

namespace host {

struct ImageIOModule {
    Image (*load)(const std::string& path);
    std::vector<unsigned char> (*encode)(const Image& image, const std::string& path, const SaveOptions& options);
    ImageSize (*size)(const std::string& path);
};

}  // namespace host

// The module's one exported symbol.
extern "C" const host::ImageIOModule* orbivane_image_io_module();
