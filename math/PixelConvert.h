// Conversions between the host's pixel types and the straight float colour of the ray tracer.
//
// Channel order is alpha, red, green, blue in every depth. Inside the ray tracer every colour is
// a PF_PixelFloat normalised so that white is 1.0; integer depths are scaled by their white
// level (255 for 8 bits, 32768 for 16 bits) on the way in and out. The way out truncates towards
// zero, clamps to [0, white] and maps NaN to 0; float pixels pass through unchanged and
// unclamped. Per-pixel code: inline, no allocation.
#pragma once

#include "AEConfig.h"
#include "AE_Effect.h"
#include "math/FixedPoint.h"

namespace pixel_detail {

// value x white, truncated towards zero into [0, white]; NaN and negatives give 0.
template <class Channel>
inline Channel quantize(float value, float white) {
    float scaled = value * white;
    scaled = scaled > 0.0f ? scaled : 0.0f;  // false for NaN as well
    scaled = scaled < white ? scaled : white;
    return static_cast<Channel>(scaled);
}

// Whole-pixel conversions of an integer depth, channel by channel through Traits, which
// supplies channelToFloat and channelFromFloat.
template <class Pixel, class Traits>
struct PerChannel {
    static PF_PixelFloat toFloat(const Pixel& p) {
        return PF_PixelFloat{Traits::channelToFloat(p.alpha), Traits::channelToFloat(p.red),
                             Traits::channelToFloat(p.green), Traits::channelToFloat(p.blue)};
    }
    static Pixel fromFloat(const PF_PixelFloat& p) {
        return Pixel{Traits::channelFromFloat(p.alpha), Traits::channelFromFloat(p.red),
                     Traits::channelFromFloat(p.green), Traits::channelFromFloat(p.blue)};
    }
};

}  // namespace pixel_detail

template <class Pixel>
struct PixelTraits;

template <>
struct PixelTraits<PF_Pixel> : pixel_detail::PerChannel<PF_Pixel, PixelTraits<PF_Pixel>> {
    using Channel = A_u_char;
    static constexpr float white = 255.0f;

    static float channelToFloat(Channel c) { return static_cast<float>(c) / white; }
    static Channel channelFromFloat(float v) { return pixel_detail::quantize<Channel>(v, white); }
};

template <>
struct PixelTraits<PF_Pixel16> : pixel_detail::PerChannel<PF_Pixel16, PixelTraits<PF_Pixel16>> {
    using Channel = A_u_short;
    static constexpr float white = 32768.0f;

    static float channelToFloat(Channel c) { return static_cast<float>(c) * (1.0f / white); }
    static Channel channelFromFloat(float v) { return pixel_detail::quantize<Channel>(v, white); }
};

template <>
struct PixelTraits<PF_PixelFloat> {
    using Channel = PF_FpShort;
    static constexpr float white = 1.0f;

    static float channelToFloat(Channel c) { return c; }
    static Channel channelFromFloat(float v) { return v; }

    static PF_PixelFloat toFloat(const PF_PixelFloat& p) { return p; }
    static PF_PixelFloat fromFloat(const PF_PixelFloat& p) { return p; }
};

// Free-function spellings, chosen by the pixel type: channelToFloat<PF_Pixel16>(c) etc.
template <class Pixel>
inline float channelToFloat(typename PixelTraits<Pixel>::Channel c) {
    return PixelTraits<Pixel>::channelToFloat(c);
}

template <class Pixel>
inline typename PixelTraits<Pixel>::Channel channelFromFloat(float v) {
    return PixelTraits<Pixel>::channelFromFloat(v);
}

template <class Pixel>
inline PF_PixelFloat toFloatPixel(const Pixel& p) {
    return PixelTraits<Pixel>::toFloat(p);
}

template <class Pixel>
inline Pixel fromFloatPixel(const PF_PixelFloat& p) {
    return PixelTraits<Pixel>::fromFloat(p);
}
