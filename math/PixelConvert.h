// Conversions between the host's pixel types and the straight float colour of the ray tracer.
//
// Channel order is alpha, red, green, blue in every depth. Inside the ray tracer every colour is
// a PF_PixelFloat normalised so that white is 1.0; integer depths are scaled by their white
// level (255 for 8 bits, 32768 for 16 bits) on the way in and out. The way out truncates towards
// zero, clamps to [0, white] and maps NaN to 0; float pixels pass through unchanged and
// unclamped. Per-pixel code: inline, no allocation.
#pragma once

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

}  // namespace pixel_detail

template <class Pixel>
struct PixelTraits;

template <>
struct PixelTraits<PF_Pixel> {
    using Channel = A_u_char;
    static constexpr float white = 255.0f;

    static float channelToFloat(Channel c) { return static_cast<float>(c) / white; }
    static Channel channelFromFloat(float v) { return pixel_detail::quantize<Channel>(v, white); }

    static PF_PixelFloat toFloat(const PF_Pixel& p) {
        return PF_PixelFloat{channelToFloat(p.alpha), channelToFloat(p.red), channelToFloat(p.green),
                             channelToFloat(p.blue)};
    }
    static PF_Pixel fromFloat(const PF_PixelFloat& p) {
        return PF_Pixel{channelFromFloat(p.alpha), channelFromFloat(p.red), channelFromFloat(p.green),
                        channelFromFloat(p.blue)};
    }
};

template <>
struct PixelTraits<PF_Pixel16> {
    using Channel = A_u_short;
    static constexpr float white = 32768.0f;

    static float channelToFloat(Channel c) { return static_cast<float>(c) * (1.0f / white); }
    static Channel channelFromFloat(float v) { return pixel_detail::quantize<Channel>(v, white); }

    static PF_PixelFloat toFloat(const PF_Pixel16& p) {
        return PF_PixelFloat{channelToFloat(p.alpha), channelToFloat(p.red), channelToFloat(p.green),
                             channelToFloat(p.blue)};
    }
    static PF_Pixel16 fromFloat(const PF_PixelFloat& p) {
        return PF_Pixel16{channelFromFloat(p.alpha), channelFromFloat(p.red), channelFromFloat(p.green),
                          channelFromFloat(p.blue)};
    }
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
