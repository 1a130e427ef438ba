#pragma once
// The pixels of the scene's footage and solid layers: image files read once, generated
// patterns made once, each kept per downsample factor and pixel format so a frame range does
// not read or convert the same source again.

#include "host/Composition.h"
#include "host/Host.h"
#include "host/Image.h"

#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <tuple>

namespace cli {

class LayerPixels {
public:
    // The full-resolution image of a layer's source. Throws CliError (bad input) when a file
    // cannot be read.
    std::shared_ptr<const host::Image> sourceImage(const host::Layer& layer);

    // Fills `world` as the host's layer pixel source: the world's pixel (i, j) is the
    // downsampled source pixel (origin_x + i, origin_y + j); outside the source it is clear.
    void fill(const host::Layer& layer, PF_PixelFormat format, double scale_x, double scale_y,
              PF_EffectWorld& world);

    // Reads every file the composition's layers use, so a missing or broken file is reported
    // before rendering starts.
    void preload(const host::Composition& comp);

    // This object as the host's pixel source; it must outlive the host's renders.
    host::LayerPixelSource source();

private:
    std::shared_ptr<const host::OwnedWorld> downsampled(const host::Layer& layer, PF_PixelFormat format,
                                                        int factor_x, int factor_y);

    std::mutex mutex_;
    std::map<int, std::shared_ptr<const host::Image>> images_;  // by layer id
    std::map<std::tuple<int, PF_PixelFormat, int, int>, std::shared_ptr<const host::OwnedWorld>> worlds_;
};

// A generated or solid source's image (no file).
host::Image generatedImage(const host::FootageSource& source);

}  // namespace cli
