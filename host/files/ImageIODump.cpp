// Image files in a build without OpenImageIO (the Windows test build): only pixel dumps are
// read, so scenes refer to the dumps the Linux build decoded their pictures into.

#include "host/files/ImageDump.h"
#include "host/files/ImageIO.h"

namespace host {

Image loadImage(const std::string& path, const std::string&) { return readImageDump(path); }

ImageSize readImageSize(const std::string& path, const std::string&) {
    ImageSize size;
    readImageDumpSize(path, size.width, size.height);
    return size;
}

void saveImage(const Image&, const std::string& path, const SaveOptions&) {
    throw ImageIOError("cannot write image '" + path + "': this build writes no image files");
}

void saveImage(const QuantisedImage&, const std::string& path, const SaveOptions& options) {
    saveImage(Image(), path, options);
}

void saveImage(const FloatWorldFrame&, const std::string& path, const SaveOptions& options) {
    saveImage(Image(), path, options);
}

}  // namespace host
