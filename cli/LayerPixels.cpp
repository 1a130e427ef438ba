#include "cli/LayerPixels.h"

#include "cli/CliError.h"
#include "host/Composition.h"
#include "host/GeneratedImages.h"
#include "host/ImageIO.h"

#include <algorithm>
#include <cmath>
#include <cstring>

namespace cli {

namespace {

host::RGBA rgba(const host::Color& c) {
    return host::RGBA{static_cast<float>(c.red), static_cast<float>(c.green), static_cast<float>(c.blue),
                      static_cast<float>(c.alpha)};
}

// The downsample factor of a scale such as 1/2 (at least 1).
int factorOf(double scale) {
    if (!(scale > 0)) return 1;
    const long f = std::lround(1.0 / scale);
    return f < 1 ? 1 : static_cast<int>(f);
}

}  // namespace

host::Image generatedImage(const host::FootageSource& source) {
    const int w = source.width, h = source.height;
    switch (source.pattern) {
        case host::GeneratedPattern::Checkerboard:
            return host::checkerboardImage(w, h, source.cell > 0 ? source.cell : 32, rgba(source.color),
                                           rgba(source.color2));
        case host::GeneratedPattern::UvGrid: {
            host::UVGridOptions options;
            const int cell = source.cell > 0 ? source.cell : 32;
            options.cells = std::max(1, std::min(w, h) / cell);
            return host::uvGridImage(w, h, options);
        }
        case host::GeneratedPattern::Gradient:
            return host::gradientImage(w, h, rgba(source.color), rgba(source.color2),
                                       host::GradientDirection::Horizontal);
        default:
            return host::solidImage(w, h, rgba(source.color));
    }
}

std::shared_ptr<const host::Image> LayerPixels::sourceImage(const host::Layer& layer) {
    std::lock_guard<std::mutex> lock(mutex_);
    auto found = images_.find(layer.id);
    if (found != images_.end()) return found->second;
    std::shared_ptr<host::Image> image;
    if (layer.source.is_file()) {
        try {
            image = std::make_shared<host::Image>(host::loadImage(layer.source.path));
        } catch (const std::exception& e) {
            throw badInput(std::string("layer \"") + layer.display_name() + "\": " + e.what());
        }
    } else {
        image = std::make_shared<host::Image>(generatedImage(layer.source));
    }
    images_[layer.id] = image;
    return image;
}

void LayerPixels::preload(const host::Composition& comp) {
    for (std::size_t i = 0; i < comp.num_layers(); ++i) {
        const host::Layer& layer = comp.layer(i);
        if (layer.has_source()) sourceImage(layer);
    }
}

std::shared_ptr<const host::OwnedWorld> LayerPixels::downsampled(const host::Layer& layer, PF_PixelFormat format,
                                                                 int factor_x, int factor_y) {
    const auto key = std::make_tuple(layer.id, format, factor_x, factor_y);
    {
        std::lock_guard<std::mutex> lock(mutex_);
        auto found = worlds_.find(key);
        if (found != worlds_.end()) return found->second;
    }
    std::shared_ptr<const host::Image> image = sourceImage(layer);
    auto world = std::make_shared<host::OwnedWorld>();
    host::Downsample ds;
    ds.den_x = factor_x;
    ds.den_y = factor_y;
    // Called from inside the effect's checkout: a failure leaves the layer clear, never throws.
    if (host::imageToWorld(*image, format, ds, host::WorldOptions{}, *world) != PF_Err_NONE) return nullptr;
    std::lock_guard<std::mutex> lock(mutex_);
    worlds_[key] = world;
    return world;
}

void LayerPixels::fill(const host::Layer& layer, PF_PixelFormat format, double scale_x, double scale_y,
                       PF_EffectWorld& world) {
    const std::size_t pixel_bytes = host::bytesPerPixel(format);
    for (A_long j = 0; j < world.height; ++j)
        std::memset(reinterpret_cast<char*>(world.data) + j * world.rowbytes, 0, world.width * pixel_bytes);
    if (!layer.has_source()) return;
    std::shared_ptr<const host::OwnedWorld> src;
    try {
        src = downsampled(layer, format, factorOf(scale_x), factorOf(scale_y));
    } catch (const std::exception&) {
        return;  // unreadable files are reported by preload() before any render
    }
    if (!src) return;
    const PF_EffectWorld& s = src->get();
    // The part of the world that the source covers, in world pixels.
    const A_long x0 = std::max<A_long>(0, -world.origin_x);
    const A_long x1 = std::min<A_long>(world.width, s.width - world.origin_x);
    if (x1 <= x0) return;
    for (A_long j = 0; j < world.height; ++j) {
        const A_long sy = world.origin_y + j;
        if (sy < 0 || sy >= s.height) continue;
        std::memcpy(reinterpret_cast<char*>(world.data) + j * world.rowbytes + x0 * pixel_bytes,
                    reinterpret_cast<const char*>(s.data) + sy * s.rowbytes + (world.origin_x + x0) * pixel_bytes,
                    (x1 - x0) * pixel_bytes);
    }
}

host::LayerPixelSource LayerPixels::source() {
    return [this](const host::Layer& layer, double, PF_PixelFormat format, double scale_x, double scale_y,
                  PF_EffectWorld& world) { fill(layer, format, scale_x, scale_y, world); };
}

}  // namespace cli
