#include "reliability/OutputPixels.h"

#include <cmath>

#include "host/pixels/PixelWorld.h"

namespace reliability {

std::vector<float> outputChannels(const host::RenderResult& result) {
    std::vector<float> channels;
    if (!result.output) return channels;
    const PF_EffectWorld& world = result.output->get();
    host::dispatchPixelType(result.output->format(), [&](auto tag) {
        using Pixel = typename decltype(tag)::type;
        for (A_long y = 0; y < world.height; ++y) {
            for (A_long x = 0; x < world.width; ++x) {
                const Pixel& p = host::worldPixel<Pixel>(world, x, y);
                channels.insert(channels.end(), {static_cast<float>(p.alpha), static_cast<float>(p.red),
                                                 static_cast<float>(p.green), static_cast<float>(p.blue)});
            }
        }
    });
    return channels;
}

std::size_t nonFiniteChannels(const std::vector<float>& channels) {
    std::size_t count = 0;
    for (float c : channels)
        if (!std::isfinite(c)) ++count;
    return count;
}

}  // namespace reliability
