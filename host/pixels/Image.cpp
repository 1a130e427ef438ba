#include "host/pixels/Image.h"

#include "host/pixels/AreaSampler.h"
#include "host/pixels/Quantise.h"
#include "host/pixels/RowBands.h"

#include <algorithm>
#include <cmath>
#include <type_traits>

namespace host {

namespace {

// One image pixel contributing to a world pixel along one axis, with its overlap in pixels.
struct Tap {
    int source;
    double weight;
};

// For each of `out` world pixels, the image pixels under [o·den/num, (o+1)·den/num) that lie
// inside the image.
std::vector<std::vector<Tap>> axisTaps(int extent, A_long out, A_long num, A_long den) {
    std::vector<std::vector<Tap>> taps(static_cast<std::size_t>(out));
    const double span = static_cast<double>(den) / static_cast<double>(num);
    for (A_long o = 0; o < out; ++o) {
        const double lo = o * span;
        const double hi = std::min((o + 1) * span, static_cast<double>(extent));
        for (int s = static_cast<int>(std::floor(lo)); s < hi && s < extent; ++s) {
            const double w = std::min(hi, s + 1.0) - std::max(lo, static_cast<double>(s));
            if (w > 0.0) taps[static_cast<std::size_t>(o)].push_back(Tap{s, w});
        }
    }
    return taps;
}

// White of each depth in channel units.
double channelScale(PF_PixelFormat format) {
    switch (format) {
        case PF_PixelFormat_ARGB32: return 255.0;
        case PF_PixelFormat_ARGB64: return 32768.0;
        default: return 1.0;
    }
}

// Box average over the taps: alpha over the covered area, colour weighted by alpha (plain
// average where everything is transparent, so a 1:1 copy keeps the colour of clear pixels).
ChannelSample boxAverage(const Image& image, const std::vector<Tap>& xs, const std::vector<Tap>& ys) {
    double area = 0.0, alpha = 0.0;
    double wr = 0.0, wg = 0.0, wb = 0.0;  // alpha weighted
    double pr = 0.0, pg = 0.0, pb = 0.0;  // plain
    for (const Tap& ty : ys) {
        for (const Tap& tx : xs) {
            const RGBA& p = image.at(tx.source, ty.source);
            const double w = tx.weight * ty.weight;
            const double wa = w * p.a;
            area += w;
            alpha += wa;
            wr += wa * p.r, wg += wa * p.g, wb += wa * p.b;
            pr += w * p.r, pg += w * p.g, pb += w * p.b;
        }
    }
    ChannelSample s;
    if (area <= 0.0) return s;
    s.alpha = alpha / area;
    if (alpha != 0.0) {
        s.red = wr / alpha, s.green = wg / alpha, s.blue = wb / alpha;
    } else {
        s.red = pr / area, s.green = pg / area, s.blue = pb / area;
    }
    return s;
}

// At full resolution each world pixel covers exactly one image pixel with weight 1, and the
// box average gives back that pixel's channels (a·c/a is c exactly in double), except for a
// non-finite alpha, which takes the general path.
template <class Pixel>
void fillWorldOneToOne(const Image& image, double scale, const PF_EffectWorld& world) {
    if (world.width <= 0) return;
    for (A_long y = 0; y < world.height; ++y) {
        Pixel* row = worldRow<Pixel>(world, y);
        const RGBA* in = &image.at(0, y);
        for (A_long x = 0; x < world.width; ++x) {
            const RGBA& p = in[x];
            ChannelSample s{p.a, p.r, p.g, p.b};
            if (!std::isfinite(p.a))
                s = boxAverage(image, {Tap{static_cast<int>(x), 1.0}}, {Tap{static_cast<int>(y), 1.0}});
            s.alpha *= scale, s.red *= scale, s.green *= scale, s.blue *= scale;
            row[x] = roundToPixel<Pixel>(s);
        }
    }
}

template <class Pixel>
void fillWorld(const Image& image, const std::vector<std::vector<Tap>>& xtaps,
               const std::vector<std::vector<Tap>>& ytaps, double scale, const PF_EffectWorld& world) {
    for (A_long y = 0; y < world.height; ++y) {
        Pixel* row = worldRow<Pixel>(world, y);
        for (A_long x = 0; x < world.width; ++x) {
            ChannelSample s = boxAverage(image, xtaps[static_cast<std::size_t>(x)], ytaps[static_cast<std::size_t>(y)]);
            s.alpha *= scale, s.red *= scale, s.green *= scale, s.blue *= scale;
            row[x] = roundToPixel<Pixel>(s);
        }
    }
}

// Channel value / scale for every value a channel type can hold, so reading a world back is a
// table look-up per channel (the same floats the division gives).
template <class Channel>
const std::vector<float>& channelTable(double scale) {
    static const std::vector<float> table = [scale] {
        std::vector<float> t(std::size_t{1} << (8 * sizeof(Channel)));
        for (std::size_t v = 0; v < t.size(); ++v) t[v] = static_cast<float>(v / scale);
        return t;
    }();
    return table;
}

template <class Pixel>
void readRows(const PF_EffectWorld& world, const float* table, A_long first, A_long end, Image& image) {
    for (A_long y = first; y < end; ++y) {
        const Pixel* row = worldRow<Pixel>(world, y);
        RGBA* out = &image.at(0, y);
        for (A_long x = 0; x < world.width; ++x) {
            const Pixel& p = row[x];
            out[x] = RGBA{table[p.red], table[p.green], table[p.blue], table[p.alpha]};
        }
    }
}

template <>
void readRows<PF_PixelFloat>(const PF_EffectWorld& world, const float*, A_long first, A_long end, Image& image) {
    for (A_long y = first; y < end; ++y) {
        const PF_PixelFloat* row = worldRow<PF_PixelFloat>(world, y);
        RGBA* out = &image.at(0, y);
        for (A_long x = 0; x < world.width; ++x) out[x] = RGBA{row[x].red, row[x].green, row[x].blue, row[x].alpha};
    }
}

template <class Pixel>
void readWorld(const PF_EffectWorld& world, double scale, int threads, Image& image) {
    const float* table = nullptr;
    if constexpr (!std::is_same_v<Pixel, PF_PixelFloat>) table = channelTable<decltype(Pixel::red)>(scale).data();
    forEachRowBand(world.height, threads, [&](int first, int end) { readRows<Pixel>(world, table, first, end, image); });
}

// PNG channel of type Out (white `white`) for every value of a world channel of type Channel:
// the world's float reading, quantised.
template <class Channel, class Out>
const std::vector<Out>& quantiseTable(double scale, double white) {
    static const std::vector<Out> table = [scale, white] {
        const std::vector<float>& floats = channelTable<Channel>(scale);
        std::vector<Out> t(floats.size());
        for (std::size_t v = 0; v < t.size(); ++v) t[v] = quantiseChannel<Out>(floats[v], white);
        return t;
    }();
    return table;
}

template <class Pixel, class Out>
void quantiseWorld(const PF_EffectWorld& world, double scale, int threads, std::vector<Out>& rgba) {
    constexpr double kWhite = sizeof(Out) == 1 ? 255.0 : 65535.0;
    const Out* table = quantiseTable<decltype(Pixel::red), Out>(scale, kWhite).data();
    const std::size_t width = static_cast<std::size_t>(world.width);
    forEachRowBand(world.height, threads, [&](int first, int end) {
        for (A_long y = first; y < end; ++y) {
            const Pixel* row = worldRow<Pixel>(world, y);
            Out* out = &rgba[static_cast<std::size_t>(y) * width * 4];
            for (std::size_t x = 0; x < width; ++x, out += 4) {
                out[0] = table[row[x].red], out[1] = table[row[x].green];
                out[2] = table[row[x].blue], out[3] = table[row[x].alpha];
            }
        }
    });
}

}  // namespace

A_long downsampledExtent(A_long extent, A_long num, A_long den) {
    if (extent <= 0 || num <= 0 || den <= 0) return 0;
    const long long scaled = static_cast<long long>(extent) * num;
    return static_cast<A_long>((scaled + den - 1) / den);
}

PF_Err imageToWorld(const Image& image, PF_PixelFormat format, const Downsample& downsample,
                    const WorldOptions& options, OwnedWorld& out) {
    out.reset();
    if (downsample.num_x <= 0 || downsample.den_x <= 0 || downsample.num_y <= 0 || downsample.den_y <= 0)
        return PF_Err_BAD_CALLBACK_PARAM;
    const A_long width = downsampledExtent(image.width(), downsample.num_x, downsample.den_x);
    const A_long height = downsampledExtent(image.height(), downsample.num_y, downsample.den_y);
    const PF_Err err = out.allocate(width, height, format, options);
    if (err != PF_Err_NONE) return err;
    if (width == image.width() && height == image.height() && downsample.num_x == downsample.den_x &&
        downsample.num_y == downsample.den_y) {
        dispatchPixelType(format, [&](auto tag) {
            fillWorldOneToOne<typename decltype(tag)::type>(image, channelScale(format), out.get());
        });
        return PF_Err_NONE;
    }
    const auto xtaps = axisTaps(image.width(), width, downsample.num_x, downsample.den_x);
    const auto ytaps = axisTaps(image.height(), height, downsample.num_y, downsample.den_y);
    dispatchPixelType(format, [&](auto tag) {
        fillWorld<typename decltype(tag)::type>(image, xtaps, ytaps, channelScale(format), out.get());
    });
    return PF_Err_NONE;
}

Image worldToImage(const PF_EffectWorld& world, PF_PixelFormat format, int threads) {
    if (!world.data || !isSupportedFormat(format)) return Image();
    Image image(world.width, world.height);
    dispatchPixelType(format, [&](auto tag) {
        readWorld<typename decltype(tag)::type>(world, channelScale(format), threads, image);
    });
    return image;
}

namespace {

std::vector<std::uint8_t>& channelVector(QuantisedImage& image, std::uint8_t) { return image.rgba8; }
std::vector<std::uint16_t>& channelVector(QuantisedImage& image, std::uint16_t) { return image.rgba16; }

// The image's channel vector for Out (8 or 16 bits), made room for `channels` values.
template <class Out>
std::vector<Out>& channelsOf(QuantisedImage& image, std::size_t channels) {
    std::vector<Out>& out = channelVector(image, Out{});
    try {
        out.resize(channels);
    } catch (const std::bad_alloc&) {
        throw ImageAllocationError(image.width, image.height);
    }
    return out;
}

template <class Out>
void quantiseImage(const Image& image, int threads, QuantisedImage& out) {
    constexpr double kWhite = sizeof(Out) == 1 ? 255.0 : 65535.0;
    const std::size_t width = static_cast<std::size_t>(image.width());
    Out* channels = channelsOf<Out>(out, width * static_cast<std::size_t>(image.height()) * 4).data();
    forEachRowBand(image.height(), threads, [&](int first, int end) {
        for (std::size_t i = first * width; i < end * width; ++i) {
            const RGBA& p = image.pixels()[i];
            Out* c = &channels[i * 4];
            c[0] = quantiseChannel<Out>(p.r, kWhite), c[1] = quantiseChannel<Out>(p.g, kWhite);
            c[2] = quantiseChannel<Out>(p.b, kWhite), c[3] = quantiseChannel<Out>(p.a, kWhite);
        }
    });
}

}  // namespace

QuantisedImage worldToQuantised(const PF_EffectWorld& world, PF_PixelFormat format, int bits, int threads) {
    QuantisedImage image;
    if (!world.data || (format != PF_PixelFormat_ARGB32 && format != PF_PixelFormat_ARGB64)) return image;
    image.width = world.width;
    image.height = world.height;
    const std::size_t channels = static_cast<std::size_t>(world.width) * static_cast<std::size_t>(world.height) * 4;
    auto convert = [&](auto tag) {
        using Out = decltype(tag);
        std::vector<Out>& rgba = channelsOf<Out>(image, channels);
        if (format == PF_PixelFormat_ARGB32)
            quantiseWorld<PF_Pixel>(world, channelScale(format), threads, rgba);
        else
            quantiseWorld<PF_Pixel16>(world, channelScale(format), threads, rgba);
    };
    if (bits == 16)
        convert(std::uint16_t{});
    else
        convert(std::uint8_t{});
    return image;
}

QuantisedImage imageToQuantised(const Image& image, int bits, int threads) {
    QuantisedImage out;
    out.width = image.width();
    out.height = image.height();
    if (bits == 16)
        quantiseImage<std::uint16_t>(image, threads, out);
    else
        quantiseImage<std::uint8_t>(image, threads, out);
    return out;
}

}  // namespace host
