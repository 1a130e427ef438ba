#pragma once
// What the host accepts as input: scene and image files must be regular files, and an image or
// composition must fit the host's size limits before any of its pixels are allocated.

#include "host/files/Bytes.h"

#include <string>

namespace host {

// Largest images and compositions the host takes. Every image is held as float RGBA (16 bytes a
// pixel) while it is converted, whatever its file's depth.
struct InputLimits {
    long long max_extent = 30000;                  // widest or tallest, pixels (the host's world limit)
    long long max_bytes = 4LL * 1024 * 1024 * 1024;  // per image, as float RGBA

    static constexpr long long kBytesPerPixel = 16;

    // "" when a `width` x `height` image fits; otherwise why not, with its size, e.g.
    // "20000 x 20000 pixels need 5.96 GiB as float RGBA, more than the 4 GiB allowed per image".
    std::string refusal(long long width, long long height) const;
};

// The limits in force for this process (the defaults above unless the program set others).
// Set once at start, before any input is read.
const InputLimits& inputLimits();
void setInputLimits(const InputLimits& limits);

// "" when `path` is a regular file this process can open for reading; otherwise the reason:
// "is a directory", "is a device, not a file", "is a FIFO, not a file", or the operating
// system's own ("No such file or directory", "Permission denied").
std::string unreadableReason(const std::string& path);


}  // namespace host
