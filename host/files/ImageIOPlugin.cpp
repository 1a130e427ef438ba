// The image-IO module's entry point: OpenImageIO's readers and writers behind a function table.
#include "host/files/ImageIOModule.h"

namespace host {
namespace {

const ImageIOModule kModule{&readImagePixels, &encodeExr, &encodeExrWorld, &readImageHeader};

}  // namespace
}  // namespace host

extern "C" __attribute__((visibility("default"))) const host::ImageIOModule* orbivane_image_io_module() {
    return &host::kModule;
}
