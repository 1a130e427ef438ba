#pragma once
// The highlight's power law pow(cosine, n).
//
// Smooth surfaces have exponents in the thousands (Roughness 0.02 % gives n = 3183), and then
// the power is exactly zero over most of the surface; std::pow still costs a full evaluation
// per light and hit to say so. The cutoff, computed once per frame, is a cosine at and below
// which the power is certainly +0: there the true value is at most 2^-1100, so far below half
// the smallest subnormal (2^-1075) that std::pow can only round it to zero. The cutoff is
// checked once with std::pow itself, and it only applies to the exponent it was made for.

#include <cmath>

struct HighlightCutoff {
    float exponent = 0.0f;     // the exponent the cutoff belongs to
    double zero_up_to = -1.0;  // pow(x, exponent) is +0 for 0 < x <= zero_up_to; -1: none
};

inline HighlightCutoff highlightCutoffFor(float exponent)
{
    HighlightCutoff cutoff;
    cutoff.exponent = exponent;
    if (!(exponent > 0.0f) || !std::isfinite(exponent))
        return cutoff;
    const double x = std::exp2(-1100.0 / exponent);
    if (x < 1.0 && std::pow(x, exponent) == 0.0)
        cutoff.zero_up_to = x;
    return cutoff;
}

// pow(x, exponent) for x > 0, without evaluating it where it is certainly zero.
inline double highlightPower(double x, float exponent, const HighlightCutoff& cutoff)
{
    if (x <= cutoff.zero_up_to && exponent == cutoff.exponent)
        return 0.0;
    return std::pow(x, exponent);
}
