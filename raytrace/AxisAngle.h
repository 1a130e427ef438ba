#pragma once

#include <cmath>

// Texture u of a direction (qx, qy) around the local z axis, in turns: it grows clockwise seen
// from +z and lies in [0, 1). Single precision throughout, so a tiny negative angle can wrap
// to exactly 1.0f; callers treat u >= 1 as outside the texture. A point on the axis gets 0.
inline double textureUAroundAxis(float qx, float qy)
{
    constexpr float kMinusTwoPi = -6.283185307179586f;
    if (qx == 0.0f && qy == 0.0f)
        return 0.0;
    float u = std::atan2(qy, qx) / kMinusTwoPi;
    if (u < 0.0f)
        u = u + 1.0f;
    return u;
}

// Wraps x into [0, period) by whole periods.
inline double wrapByPeriod(double x, double period)
{
    return x - period * std::floor(x / period);
}
