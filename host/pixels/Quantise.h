#pragma once
// Float channels (white 1.0) to the integer channels of a PNG: rounded to nearest, clamped to
// 0..white, NaN as 0. Both ways a frame reaches the PNG writer (as floats, or straight from an
// integer world through a table) use this one formula, so they give the same bytes.

#include <algorithm>
#include <cmath>

namespace host {

template <class T>
T quantiseChannel(float value, double white) {
    const double scaled = std::floor(static_cast<double>(value) * white + 0.5);
    return static_cast<T>(std::clamp(std::isnan(scaled) ? 0.0 : scaled, 0.0, white));
}

}  // namespace host
