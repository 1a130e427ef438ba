// The host's signed 16.16 fixed-point numbers (PF_Fixed): value x 65536 in a 32-bit integer.
// Sample positions and radii handed to the host's samplers go through these conversions.
#pragma once

#include <cmath>

#include "AEConfig.h"
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
// Runs for every sample position and radius, so it rounds inline rather than through the
// library's round(): within the 32-bit range, truncation and the fractional part it leaves
// are both exact, which makes this the same rounding.
inline PF_Fixed roundToFixed(double value) {
    const double scaled = value * fixed16::kOne;
    // Everything at or below -2^31 rounds to at most -2^31.
    if (!(scaled > -2147483648.0)) return PF_Fixed_MINVAL;
    // Everything from 2^31 - 1/2 up rounds to at least 2^31.
    if (scaled >= 2147483647.5) return PF_Fixed_MAXVAL;
    const long long whole = static_cast<long long>(scaled);  // towards zero
    const double fraction = scaled - static_cast<double>(whole);
    if (fraction >= 0.5) return static_cast<PF_Fixed>(whole + 1);
    if (fraction <= -0.5) return static_cast<PF_Fixed>(whole - 1);
    return static_cast<PF_Fixed>(whole);
}

// A radius in pixels as a 16.16 value for the samplers: rounded, then held to
// [fixed16::kMinSampleRadius, fixed16::kMaxSampleRadius]. NaN gives the minimum.
inline PF_Fixed clampSampleRadius(double pixels) {
    const PF_Fixed radius = roundToFixed(pixels);
    if (radius < fixed16::kMinSampleRadius) return fixed16::kMinSampleRadius;
    if (radius > fixed16::kMaxSampleRadius) return fixed16::kMaxSampleRadius;
    return radius;
}
