// Fog and fade-out of a hit by its distance along the ray.

#include <gtest/gtest.h>

#include "raytrace/DepthComposite.h"
#include "support/ColourWorld.h"

namespace {

using DepthInfo = RenderInfoTemplate<Cylinder>::DepthCompositeInfo;

enum Mode { kOff = 1, kFog = 2, kFadeOut = 3 };

const PF_PixelFloat kHalfRed = {0.5f, 1.0f, 0.0f, 0.0f};
const PF_PixelFloat kClearGreen = {0.0f, 0.0f, 1.0f, 0.0f};
const PF_PixelFloat kBlue = {0.8f, 0.0f, 0.0f, 1.0f};
const PF_PixelFloat kBright = {0.5f, 2.0f, -1.0f, 0.25f};
const PF_PixelFloat kFogColour = {1.0f, 0.2f, 0.4f, 0.6f};

struct DepthCase {
    const char* name;
    int mode;
    double start, end, t;
    PF_PixelFloat in, expected;
};

// Fog colour (0.2, 0.4, 0.6). Fog halfway over half coverage: g = 0.5, w = 0.5 * 0.5 = 0.25,
// a' = 0.75: red (0.2 * 0.5 + 1 * 0.25) / 0.75, green 0.4 * 0.5 / 0.75, blue 0.6 * 0.5 / 0.75,
// and the hit keeps its own alpha.
const DepthCase kCases[] = {
    {"fog before start", kFog, 100, 200, 50, kHalfRed, kHalfRed},
    {"fog halfway", kFog, 100, 200, 150, kHalfRed, {0.5f, 0.35f / 0.75f, 0.2f / 0.75f, 0.4f}},
    {"fog beyond end", kFog, 100, 200, 1e6, kHalfRed, {0.5f, 0.2f, 0.4f, 0.6f}},
    {"fog on a transparent texel", kFog, 100, 200, 150, kClearGreen, {0.0f, 0.2f, 0.4f, 0.6f}},
    // start = end: (t - start) / 0 is NaN exactly at the start: no fog, and no NaN.
    {"zero fog behind", kFog, 100, 100, 101, kHalfRed, {0.5f, 0.2f, 0.4f, 0.6f}},
    // End before start: the fraction runs backwards, so near hits are fogged.
    {"reversed fog near", kFog, 200, 100, 50, kHalfRed, {0.5f, 0.2f, 0.4f, 0.6f}},
    // Fade-out scales alpha only.
    {"fade before", kFadeOut, 100, 200, 50, kBlue, kBlue},
    {"fade halfway", kFadeOut, 100, 200, 150, kBlue, {0.4f, 0.0f, 0.0f, 1.0f}},
    {"fade at end", kFadeOut, 100, 200, 200, kBlue, {0.0f, 0.0f, 0.0f, 1.0f}},
    {"fade beyond", kFadeOut, 100, 200, 400, kBlue, {0.0f, 0.0f, 0.0f, 1.0f}},
    {"zero fade at start", kFadeOut, 100, 100, 100, kBlue, kBlue},
    // Off and unknown modes leave everything alone.
    {"off", kOff, 0, 1, 1e6, kBright, kBright},
    {"unknown 7", 7, 0, 1, 1e6, kBright, kBright},
};

TEST(DepthComposite, FogAndFadeOutAcrossTheirRange)
{
    for (const DepthCase& c : kCases) {
        SCOPED_TRACE(c.name);
        DepthInfo info;
        info.mode = c.mode;
        info.start = c.start;
        info.length = c.end - c.start;
        info.color = kFogColour;
        PF_PixelFloat p = c.in;
        depthComposite(info, c.t, p);
        test_support::expectColour(p, c.expected, 1e-6f);
    }
}

} // namespace
