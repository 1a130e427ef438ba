// The host's signed 16.16 fixed-point numbers (PF_Fixed): value x 65536 in a 32-bit integer.
// Sample positions and radii handed to the host's samplers go through these conversions.
#pragma once

#include <cmath>

#include "AE_Effect.h"

namespace fixed16 {

// One unit in 16.16.
constexpr double kOne = 65536.0;

// Sample radii are kept between 1/65536 pixel (nearest-pixel sampling) and 128 pixels.
constexpr PF_Fixed kMinSampleRadius = 1;
constexpr PF_Fixed kMaxSampleRadius = 128 * 65536;  // 8388608

}  // namespace fixed16

// value x 65536 rounded half away from zero. Results beyond the 32-bit range saturate;
// NaN gives the most negative value, as the processor's own conversion does.
inline PF_Fixed roundToFixed(double value) {
    const double scaled = std::round(value * fixed16::kOne);
    if (!(scaled > -2147483648.0)) return PF_Fixed_MINVAL;
    if (scaled > 2147483647.0) return PF_Fixed_MAXVAL;
    return static_cast<PF_Fixed>(scaled);
}

// A radius in pixels as a 16.16 value for the samplers: rounded, then held to
// [fixed16::kMinSampleRadius, fixed16::kMaxSampleRadius]. NaN gives the minimum.
inline PF_Fixed clampSampleRadius(double pixels) {
    const PF_Fixed radius = roundToFixed(pixels);
    if (radius < fixed16::kMinSampleRadius) return fixed16::kMinSampleRadius;
    if (radius > fixed16::kMaxSampleRadius) return fixed16::kMaxSampleRadius;
    return radius;
}
