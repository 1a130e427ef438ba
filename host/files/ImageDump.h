#pragma once
// Pixel dumps: an Image's straight RGBA floats exactly as they are in memory, behind a 16-byte
// header ("ORBVPIX1", then width and height as 32-bit little-endian numbers), floats
// little-endian. A build without OpenImageIO (the Windows test build) reads the pictures the
// Linux build decoded through them, bit for bit.

#include "host/pixels/Image.h"

#include <string>

namespace host {

// Whether `path` starts like a pixel dump (false for a missing file).
bool isImageDump(const std::string& path);
// Throws ImageIOError naming the file.
void writeImageDump(const Image& image, const std::string& path);
Image readImageDump(const std::string& path);
// Width and height from the header alone. Throws ImageIOError for anything but a dump.
void readImageDumpSize(const std::string& path, int& width, int& height);

}  // namespace host
