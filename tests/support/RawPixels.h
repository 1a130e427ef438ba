#pragma once
// A rendered output world's channels as they are stored (8-bit 0..255, 16-bit 0..32768, float
// as is), with no scaling: for comparing frames exactly and finding non-finite values.

#include <cmath>

#include "host/pixels/Image.h"
#include "host/pixels/PixelWorld.h"
#include "host/session/Host.h"

namespace test_support {

inline host::Image rawChannels(const host::RenderResult& result) {
    if (!result.output) return host::Image();
    const PF_EffectWorld& world = result.output->get();
    host::Image image(world.width, world.height);
    host::dispatchPixelType(result.output->format(), [&](auto tag) {
        using Pixel = typename decltype(tag)::type;
        for (A_long y = 0; y < world.height; ++y) {
            for (A_long x = 0; x < world.width; ++x) {
                const Pixel& p = host::worldPixel<Pixel>(world, x, y);
                image.at(x, y) = host::RGBA{float(p.red), float(p.green), float(p.blue), float(p.alpha)};
            }
        }
    });
    return image;
}

// Number of channels that are NaN or infinite.
inline std::size_t nonFiniteChannels(const host::Image& image) {
    std::size_t count = 0;
    for (const host::RGBA& p : image.pixels())
        for (float c : {p.r, p.g, p.b, p.a}) count += !std::isfinite(c);
    return count;
}

}  // namespace test_support
