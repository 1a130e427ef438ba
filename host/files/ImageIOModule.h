#pragma once
// What the image-IO module (orbivane_imageio.so) hands the host. OpenImageIO brings in some
// 260 shared libraries whose relocation and start-up cost about 0.2 s of CPU per process, so
// it lives in a module of its own, opened the first time a file other than a PNG is read or
// written (PNG goes through libpng, host/files/PngFiles.h): renders of PNG textures to PNG
// frames never pay for it.

#include "host/files/ImageIO.h"

#include <string>
#include <vector>

namespace host {

// What a file's header says, read without its pixels.
struct ImageHeader {
    int width = 0;
    int height = 0;
    int channels = 0;
    int depth = 1;  // more than 1 for a volume
};

// The module's own readers and OpenEXR writers (encodeExr, encodeExrWorld). Their messages
// name the file; the host checks the file and its header against its input limits before asking
// for pixels.
Image readImagePixels(const std::string& path);
ImageHeader readImageHeader(const std::string& path);

struct ImageIOModule {
    Image (*load)(const std::string& path);
    std::vector<unsigned char> (*encode_exr)(const Image& image, const std::string& path, const SaveOptions& options);
    std::vector<unsigned char> (*encode_exr_world)(const FloatWorldFrame& frame, const std::string& path,
                                                   const SaveOptions& options);
    ImageHeader (*header)(const std::string& path);
};

}  // namespace host

// The module's one exported symbol.
extern "C" const host::ImageIOModule* orbivane_image_io_module();
