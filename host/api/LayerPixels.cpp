#include "host/api/LayerPixels.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstring>

#include "host/comp/Composition.h"
#include "host/pixels/GeneratedImages.h"
#include "host/files/ImageIO.h"

namespace host {

namespace {

RGBA toRGBA(const Color& c) {
    return RGBA{float(c.red), float(c.green), float(c.blue), float(c.alpha)};
}

// Downsample factors arrive as 1/n; the conversion wants the whole n.
long denominatorOf(double scale) { return scale > 0 ? std::max(1L, std::lround(1.0 / scale)) : 1L; }

// The source with a size: sizeless generated sources cover the layer's full-resolution extent.
FootageSource sized(const FootageSource& source, int width, int height) {
    FootageSource s = source;
    if (!s.is_file() && (s.width <= 0 || s.height <= 0)) {
        s.width = width;
        s.height = height;
    }
    return s;
}

}  // namespace

Image sourceImage(const FootageSource& s) {
    if (s.is_file()) return loadImage(s.path, s.origin);
    if (s.width <= 0 || s.height <= 0) return Image();
    switch (s.pattern) {
        case GeneratedPattern::Checkerboard:
            return checkerboardImage(s.width, s.height, std::max(1, s.cell), toRGBA(s.color), toRGBA(s.color2));
        case GeneratedPattern::UvGrid: {
            UVGridOptions options;
            options.cells = std::max(1, std::min(s.width, s.height) / std::max(1, s.cell));
            return uvGridImage(s.width, s.height, options);
        }
        case GeneratedPattern::Gradient:
            return gradientImage(s.width, s.height, toRGBA(s.color), toRGBA(s.color2), GradientDirection::Horizontal);
        case GeneratedPattern::Solid:
        case GeneratedPattern::None: break;
    }
    return solidImage(s.width, s.height, toRGBA(s.color));
}

std::string sourceKey(const FootageSource& s) {
    if (s.is_file()) return "file:" + s.path;
    char text[256];
    std::snprintf(text, sizeof text, "gen:%d:%dx%d:%d:%.9g,%.9g,%.9g,%.9g:%.9g,%.9g,%.9g,%.9g", int(s.pattern),
                  s.width, s.height, s.cell, s.color.alpha, s.color.red, s.color.green, s.color.blue,
                  s.color2.alpha, s.color2.red, s.color2.green, s.color2.blue);
    return text;
}

std::shared_ptr<const Image> LayerPixels::image(const FootageSource& source) {
    const std::string key = sourceKey(source);
    auto it = images_.find(key);
    if (it != images_.end()) return it->second;
    auto loaded = std::make_shared<const Image>(sourceImage(source));
    images_.emplace(key, loaded);
    return loaded;
}

std::shared_ptr<const OwnedWorld> LayerPixels::converted(const FootageSource& source, PF_PixelFormat format,
                                                         long den_x, long den_y) {
    const Converted key{sourceKey(source), format, den_x, den_y};
    auto it = worlds_.find(key);
    if (it != worlds_.end()) return it->second;
    std::shared_ptr<const Image> img = image(source);
    auto world = std::make_shared<OwnedWorld>();
    WorldOptions options;
    options.initial = WorldOptions::Initial::Unset;  // imageToWorld writes every pixel
    options.extra_row_bytes = kLayerExtraRowBytes;   // as every input world, for the views
    const Downsample downsample{1, A_long(den_x), 1, A_long(den_y)};
    if (!img->empty() && imageToWorld(*img, format, downsample, options, *world) != PF_Err_NONE) world->reset();
    worlds_.emplace(key, world);
    return world;
}

void LayerPixels::preload(const Composition& comp) {
    std::lock_guard<std::mutex> lock(mutex_);
    for (std::size_t i = 0; i < comp.num_layers(); ++i) {
        const Layer& layer = comp.layer(i);
        if (layer.has_source()) image(sized(layer.source, comp.width(), comp.height()));
    }
}

void LayerPixels::fill(const Layer& layer, int full_width, int full_height, PF_PixelFormat format,
                       double scale_x, double scale_y, PF_EffectWorld& world) {
    const std::size_t bpp = bytesPerPixel(format);
    std::shared_ptr<const OwnedWorld> pixels;
    try {
        pixels = convertedLayer(layer, full_width, full_height, format, scale_x, scale_y);
    } catch (...) {
        // An unreadable source leaves the layer transparent.
        for (A_long j = 0; j < world.height; ++j) std::memset(worldRow<char>(world, j), 0, bpp * world.width);
        throw;
    }
    const PF_EffectWorld* src = pixels && pixels->get().data ? &pixels->get() : nullptr;
    // The overlap of the world's area (in downsampled layer pixels) with the source is copied;
    // everything else is cleared, each byte written once.
    const A_long x0 = src ? std::max<A_long>(0, -world.origin_x) : 0;
    const A_long x1 = src ? std::max(x0, std::min<A_long>(world.width, src->width - world.origin_x)) : 0;
    for (A_long j = 0; j < world.height; ++j) {
        char* row = worldRow<char>(world, j);
        const A_long sy = world.origin_y + j;
        if (!src || x1 == x0 || sy < 0 || sy >= src->height) {
            std::memset(row, 0, bpp * world.width);
            continue;
        }
        std::memset(row, 0, x0 * bpp);
        std::memcpy(row + x0 * bpp, worldRow<char>(*src, sy) + (world.origin_x + x0) * bpp, (x1 - x0) * bpp);
        std::memset(row + x1 * bpp, 0, (world.width - x1) * bpp);
    }
    if (src && x1 > x0) markLayerPixels(world);
}

std::shared_ptr<const OwnedWorld> LayerPixels::whole(const Layer& layer, int full_width, int full_height,
                                                     PF_PixelFormat format, double scale_x, double scale_y) {
    try {
        std::shared_ptr<const OwnedWorld> pixels =
            convertedLayer(layer, full_width, full_height, format, scale_x, scale_y);
        return pixels && pixels->get().data ? pixels : nullptr;
    } catch (const std::exception&) {
        return nullptr;  // fill() reports it
    }
}

std::shared_ptr<const OwnedWorld> LayerPixels::convertedLayer(const Layer& layer, int full_width, int full_height,
                                                              PF_PixelFormat format, double scale_x, double scale_y) {
    if (!layer.has_source()) return nullptr;
    std::lock_guard<std::mutex> lock(mutex_);
    return converted(sized(layer.source, full_width, full_height), format, denominatorOf(scale_x),
                     denominatorOf(scale_y));
}

std::size_t LayerPixels::images_loaded() const {
    std::lock_guard<std::mutex> lock(mutex_);
    return images_.size();
}

}  // namespace host
