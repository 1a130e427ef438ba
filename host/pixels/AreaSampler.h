#pragma once
// The host's image samplers over one source world.
//
// Conventions shared by all three samplers:
// - positions are 16.16 fixed point and an integer position is a pixel centre, so pixel (i, j)
//   covers the square [i-1/2, i+1/2] x [j-1/2, j+1/2];
// - everything outside the world is transparent black;
// - pixels are straight (not premultiplied), so colours are averaged weighted by alpha and
//   returned straight: colour = sum(w·a·c) / sum(w·a), or 0 when no alpha was met;
// - 8- and 16-bit results are rounded to nearest and clamped to 0..255 / 0..32768, float
//   results are neither rounded nor clamped.
//
// The area sampler answers any box in constant time: a summed-area table of alpha and
// alpha × colour, built once per source, gives the integral over whole-pixel blocks, and a box
// with fractional edges is split into at most 3 x 3 blocks (partial first column or row, whole
// middle, partial last), each weighted by its overlap. The block sums are differences of table
// entries taken before any fractional weighting, so they are exact for 8- and 16-bit sources
// and a box of 1/65536 pixel is as accurate as a box of 128 pixels.

#include "AE_Effect.h"
#include "AE_EffectPixelFormat.h"

#include <cmath>
#include <cstdint>
#include <vector>

namespace host {

// A straight colour in the channel units of its source (0..255, 0..32768, or float), unrounded.
struct ChannelSample {
    double alpha = 0.0;
    double red = 0.0;
    double green = 0.0;
    double blue = 0.0;
};

// Radii are clamped to [1/65536, 128] pixels: the smallest box gives the nearest pixel, the
// largest keeps the box within 256 x 256 pixels.
constexpr PF_Fixed kMinAreaRadius = 1;
constexpr PF_Fixed kMaxAreaRadius = 128 * 65536;

inline PF_Fixed clampAreaRadius(PF_Fixed radius) {
    return radius < kMinAreaRadius ? kMinAreaRadius : (radius > kMaxAreaRadius ? kMaxAreaRadius : radius);
}

inline double fixedToDouble(PF_Fixed value) { return static_cast<double>(value) / 65536.0; }

// Converts a channel value to the pixel type's channel: rounded to nearest and clamped for
// the integer depths (NaN gives 0), unchanged for float.
template <class Pixel>
struct ChannelRounding;

template <>
struct ChannelRounding<PF_Pixel> {
    static A_u_char convert(double v) {
        if (!(v > 0.0)) return 0;
        // v + 0.5 is positive here, so truncation is the floor.
        return v >= 255.0 ? A_u_char(255) : static_cast<A_u_char>(v + 0.5);
    }
};

template <>
struct ChannelRounding<PF_Pixel16> {
    static A_u_short convert(double v) {
        if (!(v > 0.0)) return 0;
        // v + 0.5 is positive here, so truncation is the floor.
        return v >= 32768.0 ? A_u_short(32768) : static_cast<A_u_short>(v + 0.5);
    }
};

template <>
struct ChannelRounding<PF_PixelFloat> {
    static PF_FpShort convert(double v) { return static_cast<PF_FpShort>(v); }
};

template <class Pixel>
Pixel roundToPixel(const ChannelSample& s) {
    using R = ChannelRounding<Pixel>;
    Pixel p{};
    p.alpha = R::convert(s.alpha);
    p.red = R::convert(s.red);
    p.green = R::convert(s.green);
    p.blue = R::convert(s.blue);
    return p;
}

class AreaSampler {
public:
    // Builds the table over `world`, whose pixels are of `format` (ARGB32/64/128). A world
    // without pixels gives a sampler that returns transparent black. Throws std::bad_alloc.
    AreaSampler(const PF_EffectWorld& world, PF_PixelFormat format);

    A_long width() const { return width_; }
    A_long height() const { return height_; }
    PF_PixelFormat format() const { return format_; }
    // Memory held by the table, in bytes.
    std::size_t tableBytes() const { return table_.size() * sizeof(Sums); }

    // Average over the box [cx-rx, cx+rx] x [cy-ry, cy+ry] in pixels (radii > 0): alpha is the
    // covered alpha divided by the whole box area 4·rx·ry, colour is alpha-weighted.
    ChannelSample boxAverage(double cx, double cy, double rx, double ry) const;

    // The host's area_sample: 16.16 centre and radii, radii clamped by clampAreaRadius.
    // Pixel must match the sampler's format.
    template <class Pixel>
    Pixel sample(PF_Fixed x, PF_Fixed y, PF_Fixed x_radius, PF_Fixed y_radius) const {
        return roundToPixel<Pixel>(boxAverage(fixedToDouble(x), fixedToDouble(y),
                                              fixedToDouble(clampAreaRadius(x_radius)),
                                              fixedToDouble(clampAreaRadius(y_radius))));
    }

private:
    // Alpha and alpha × colour, in channel units.
    struct Sums {
        double alpha;
        double red;
        double green;
        double blue;
        Sums operator-(const Sums& o) const { return Sums{alpha - o.alpha, red - o.red, green - o.green, blue - o.blue}; }
    };
    // Pixels [first, last] (inclusive) along one axis, all with the same overlap weight.
    struct Span {
        A_long first;
        A_long last;
        double weight;
    };

    template <class Pixel>
    void buildTable(const PF_EffectWorld& world);
    // Sums over pixels x < i, y < j (0 <= i <= width, 0 <= j <= height).
    const Sums& corner(A_long i, A_long j) const { return table_[static_cast<std::size_t>(j) * (width_ + 1) + i]; }
    // Sum of every block (xs[a], ys[b]) times its overlap weight.
    template <bool kSnapNoise>
    Sums weightedBlocks(const Span* xs, int nx, const Span* ys, int ny) const;
    // The same for a table of exact integers and kColumns spans across, reading each shared
    // corner once.
    template <int kColumns, int kRows>
    Sums weightedBlocksExact(const Span* xs, const Span* ys) const;
    template <int kColumns>
    Sums weightedBlocksExact(const Span* xs, const Span* ys, int ny) const;
    // The weighted sum by the fastest path that gives the same bits.
    Sums weightedSums(const Span* xs, int nx, const Span* ys, int ny) const;
    bool tableIsExact() const;
    static int splitAxis(double lo, double hi, A_long count, Span spans[3]);

    A_long width_ = 0;
    A_long height_ = 0;
    PF_PixelFormat format_;
    // Float sources are not summed exactly; block sums within rounding noise of zero are
    // snapped to zero so transparent areas do not return noise colours.
    bool snap_noise_ = false;
    // Rounding noise of a table entry relative to its magnitude, when snap_noise_.
    double noise_ = 0.0;
    // Every entry is an integer of at most 2^53 (integer sources short of huge frames), so
    // any combination of corners gives a block's sum exactly.
    bool exact_ = false;
    std::vector<Sums> table_;  // (width + 1) x (height + 1)
};

// The host's nn_sample: pixel (floor(x + 1/2), floor(y + 1/2)) copied as is, or transparent
// black outside the world. Pixel must match the world's format.
template <class Pixel>
Pixel nearestSample(const PF_EffectWorld& world, PF_Fixed x, PF_Fixed y);

// The host's subpixel_sample: bilinear between the four surrounding pixel centres, alpha
// weighted. Pixel must match the world's format.
template <class Pixel>
Pixel bilinearSample(const PF_EffectWorld& world, PF_Fixed x, PF_Fixed y);

}  // namespace host
