#pragma once
// Comparisons of rendered frames for the end-to-end tests.

#include <cmath>
#include <string>

#include "e2e/SceneFiles.h"

namespace e2e {

inline float largestChannelDifference(const PF_PixelFloat& a, const PF_PixelFloat& b)
{
    return std::fmax(std::fmax(std::fabs(a.alpha - b.alpha), std::fabs(a.red - b.red)),
                     std::fmax(std::fabs(a.green - b.green), std::fabs(a.blue - b.blue)));
}

// Empty when both frames have the same size and every pixel agrees within `tolerance` (channels
// as fractions of white); otherwise where they first differ.
inline std::string compareFrames(const host::RenderResult& a, const host::RenderResult& b, float tolerance)
{
    const PF_EffectWorld& wa = a.output->get();
    const PF_EffectWorld& wb = b.output->get();
    if (wa.width != wb.width || wa.height != wb.height)
        return "sizes differ";
    for (int y = 0; y < wa.height; ++y) {
        for (int x = 0; x < wa.width; ++x) {
            const PF_PixelFloat pa = pixelAt(a, x, y);
            const PF_PixelFloat pb = pixelAt(b, x, y);
            if (largestChannelDifference(pa, pb) > tolerance) {
                return "pixel (" + std::to_string(x) + ", " + std::to_string(y) + "): alpha " +
                       std::to_string(pa.alpha) + " / " + std::to_string(pb.alpha) + ", red " +
                       std::to_string(pa.red) + " / " + std::to_string(pb.red) + ", blue " +
                       std::to_string(pa.blue) + " / " + std::to_string(pb.blue);
            }
        }
    }
    return "";
}

}  // namespace e2e
