// The image-IO module's entry point: OpenImageIO's readers and writers behind a function table.
#include "host/ImageIOModule.h"

#include <OpenImageIO/imageio.h>

namespace host {
namespace {

ImageSize headerSize(const std::string& path) {
    auto in = OIIO::ImageInput::open(path);
    if (!in) throw ImageIOError("cannot read image '" + path + "': " + OIIO::geterror());
    return ImageSize{in->spec().width, in->spec().height};
}

const ImageIOModule kModule{&loadImage, &encodeImage, &headerSize};

}  // namespace
}  // namespace host

extern "C" __attribute__((visibility("default"))) const host::ImageIOModule* orbivane_image_io_module() {
    return &host::kModule;
}
