#pragma once
// Pixels of a composition's footage and solid layers, as the host renders them into the worlds
// it hands to the effect: the layer's source (an image file or a generated image) at the
// render's pixel depth and downsample, with ceil-sized downsampled extents.
//
// A source is read or generated once and kept (straight RGBA floats), and each depth and
// downsample of it is converted once, so rendering a sequence does not redo either.

#include "host/session/Host.h"
#include "host/pixels/Image.h"

#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <tuple>

namespace host {

struct FootageSource;

// Row padding of the worlds layer pixels arrive in (input and layer checkouts alike).
constexpr A_long kLayerExtraRowBytes = 48;

// The image a footage or solid source stands for at full resolution. Throws ImageIOError when
// the file cannot be read. Layers without pixels of their own (cameras, lights, nulls) have none.
Image sourceImage(const FootageSource& source);

class LayerPixels {
public:
    LayerPixels() = default;
    LayerPixels(const LayerPixels&) = delete;
    LayerPixels& operator=(const LayerPixels&) = delete;

    // Reads (or generates) every source of `comp` now, so a missing file is reported before
    // any render rather than as a transparent layer in the middle of one.
    void preload(const Composition& comp);

    // Fills `world` with `layer`'s downsampled pixels (origin_x + i, origin_y + j), in
    // `format`. Pixels outside the source are transparent. `scale_x/y` are the downsample
    // factors (1, 1/2, 1/3, ...). Throws ImageIOError for an unreadable file.
    // `full_width/height` size generated sources that have no size of their own (the layer
    // then covers its composition).
    void fill(const Layer& layer, int full_width, int full_height, PF_PixelFormat format, double scale_x,
              double scale_y, PF_EffectWorld& world);

    // The converted world behind fill() when it holds pixels: `layer` at `format` and the
    // downsample, the whole source. None for a layer without pixels or an unreadable source.
    // Its pixels never change; worlds handed out may show them without a copy (viewWorld), as
    // After Effects hands out its cached layer pixels.
    std::shared_ptr<const OwnedWorld> whole(const Layer& layer, int full_width, int full_height,
                                            PF_PixelFormat format, double scale_x, double scale_y);

    std::size_t images_loaded() const;

private:
    struct Converted {
        std::string source;
        PF_PixelFormat format;
        long den_x, den_y;
        bool operator<(const Converted& o) const {
            return std::tie(source, format, den_x, den_y) < std::tie(o.source, o.format, o.den_x, o.den_y);
        }
    };

    std::shared_ptr<const Image> image(const FootageSource& source);
    // `layer`'s source converted (none for a layer without pixels of its own), under the lock.
    std::shared_ptr<const OwnedWorld> convertedLayer(const Layer& layer, int full_width, int full_height,
                                                     PF_PixelFormat format, double scale_x, double scale_y);
    std::shared_ptr<const OwnedWorld> converted(const FootageSource& source, PF_PixelFormat format, long den_x,
                                                long den_y);

    mutable std::mutex mutex_;
    std::map<std::string, std::shared_ptr<const Image>> images_;  // by sourceKey
    std::map<Converted, std::shared_ptr<const OwnedWorld>> worlds_;
};

// Identifies a source's pixels: equal keys give equal images.
std::string sourceKey(const FootageSource& source);

}  // namespace host
