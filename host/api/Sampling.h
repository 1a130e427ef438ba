#pragma once
// The sampling callbacks' common step: one sample of `params->src` at the running command's
// quality, area samples from the command's summed-area tables. Inline, because the module
// calls it for every texture footprint of every pixel.

#include "host/checks/CallContext.h"
#include "host/pixels/SamplerCache.h"

namespace host {

enum SampleKind { kNearestSample = 0, kSubpixelSample = 1, kAreaSample = 2 };

template <class Pixel>
PF_Err sampleForCommand(CallContext& command, int kind, PF_Fixed x, PF_Fixed y, const PF_SampPB* params,
                        Pixel* dst) {
    const PF_Quality quality = command.in_data.quality;
    if (kind == kAreaSample) return sampleArea<Pixel>(command.samplers(), quality, x, y, params, dst);
    if (kind == kSubpixelSample) return sampleSubpixel<Pixel>(quality, x, y, params, dst);
    return sampleNearest<Pixel>(x, y, params, dst);
}

}  // namespace host
