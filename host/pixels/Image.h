#pragma once
// Images as the emulated host keeps layer sources: straight (not premultiplied) RGBA floats,
// white 1.0, row 0 at the top. Layers become effect worlds through imageToWorld, optionally at
// a downsampled resolution, and rendered worlds come back through worldToImage.

#include "host/files/Bytes.h"
#include "host/pixels/PixelWorld.h"

#include <cstddef>
#include <cstdint>
#include <new>
#include <stdexcept>
#include <string>
#include <vector>

namespace host {

struct RGBA {
    float r = 0.0f;
    float g = 0.0f;
    float b = 0.0f;
    float a = 0.0f;
};

inline bool operator==(const RGBA& x, const RGBA& y) { return x.r == y.r && x.g == y.g && x.b == y.b && x.a == y.a; }
inline bool operator!=(const RGBA& x, const RGBA& y) { return !(x == y); }

// Raised when the pixels of an image do not fit in memory; says which image. A bad_alloc, so
// code that answers out-of-memory errors still recognises it.
class ImageAllocationError : public std::bad_alloc {
public:
    ImageAllocationError(int width, int height)
        : message_("not enough memory for a " + std::to_string(width) + " x " + std::to_string(height) +
                   " image (" + describeBytes(double(width) * double(height) * sizeof(RGBA)) + ")") {}
    const char* what() const noexcept override { return message_.c_str(); }

private:
    std::string message_;
};

class Image {
public:
    Image() = default;
    // Inline, so the image-IO module needs nothing else from the host. Throws
    // ImageAllocationError when the pixels do not fit in memory.
    Image(int width, int height, RGBA fill = RGBA{}) : width_(width > 0 ? width : 0), height_(height > 0 ? height : 0) {
        try {
            pixels_.assign(static_cast<std::size_t>(width_) * static_cast<std::size_t>(height_), fill);
        } catch (const std::bad_alloc&) {
            throw ImageAllocationError(width_, height_);
        } catch (const std::length_error&) {  // more bytes than the address space holds
            throw ImageAllocationError(width_, height_);
        }
    }

    int width() const { return width_; }
    int height() const { return height_; }
    bool empty() const { return width_ == 0 || height_ == 0; }

    RGBA& at(int x, int y) { return pixels_[index(x, y)]; }
    const RGBA& at(int x, int y) const { return pixels_[index(x, y)]; }
    std::vector<RGBA>& pixels() { return pixels_; }
    const std::vector<RGBA>& pixels() const { return pixels_; }

private:
    std::size_t index(int x, int y) const {
        return static_cast<std::size_t>(y) * static_cast<std::size_t>(width_) + static_cast<std::size_t>(x);
    }

    int width_ = 0;
    int height_ = 0;
    std::vector<RGBA> pixels_;
};

// The render's downsample factors: a world pixel spans den/num image pixels horizontally
// (num_x/den_x = 1/2 is half resolution) and den_y/num_y vertically.
struct Downsample {
    A_long num_x = 1;
    A_long den_x = 1;
    A_long num_y = 1;
    A_long den_y = 1;
};

// Size of a downsampled extent: ceil(extent · num / den), so a partial pixel still counts.
A_long downsampledExtent(A_long extent, A_long num, A_long den);

// Makes a world of `format` holding `image` at the given downsampling. Each world pixel is the
// box average of the image area it covers (inside the image), alpha weighted so transparent
// pixels do not tint their neighbours. 8- and 16-bit channels are rounded to nearest and
// clamped (white 255 / 32768); float channels are stored as they are. Errors are those of
// allocateWorld, plus PF_Err_BAD_CALLBACK_PARAM for a factor that is not positive.
PF_Err imageToWorld(const Image& image, PF_PixelFormat format, const Downsample& downsample,
                    const WorldOptions& options, OwnedWorld& out);

// Reads a world of `format` back (8-bit / 255, 16-bit / 32768, float as is), in `threads` bands
// of rows.
Image worldToImage(const PF_EffectWorld& world, PF_PixelFormat format, int threads = 1);

// A frame as a PNG holds it: straight RGBA, 8 or 16 bits per channel, channels interleaved,
// row 0 at the top. One of the two vectors holds the pixels.
struct QuantisedImage {
    int width = 0;
    int height = 0;
    std::vector<std::uint8_t> rgba8;
    std::vector<std::uint16_t> rgba16;

    int bits() const { return rgba16.empty() ? 8 : 16; }
};

// A float world handed to the OpenEXR writer as it stands: the writer premultiplies its
// straight ARGB floats strip by strip, so no float frame is made in between. The world must
// outlive the write.
struct FloatWorldFrame {
    const PF_EffectWorld* world = nullptr;
};

// An 8- or 16-bit world straight into PNG channels of `bits` (8 or 16): the values that
// quantising worldToImage's floats gives, one table look-up per channel, without the float
// frame in between. Throws ImageAllocationError when the pixels do not fit in memory.
QuantisedImage worldToQuantised(const PF_EffectWorld& world, PF_PixelFormat format, int bits, int threads = 1);
// A float image in PNG channels of `bits` (8 or 16), quantised by quantiseChannel in `threads`
// bands of rows. Throws ImageAllocationError when the pixels do not fit in memory.
QuantisedImage imageToQuantised(const Image& image, int bits, int threads = 1);

}  // namespace host
