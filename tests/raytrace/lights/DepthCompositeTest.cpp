// Fog and fade-out of a hit by its distance along the ray.

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "raytrace/DepthComposite.h"

namespace {

using DepthInfo = RenderInfoTemplate<Cylinder>::DepthCompositeInfo;

constexpr int kOff = 1;
constexpr int kFog = 2;
constexpr int kFadeOut = 3;

DepthInfo makeInfo(int mode, double start, double end)
{
    DepthInfo info;
    info.mode = mode;
    info.start = start;
    info.length = end - start;
    info.color = PF_PixelFloat{1.0f, 0.2f, 0.4f, 0.6f};
    return info;
}

PF_PixelFloat composite(const DepthInfo& info, double t, PF_PixelFloat colour)
{
    depthComposite(info, t, colour);
    return colour;
}

void expectPixel(const PF_PixelFloat& p, float a, float r, float g, float b)
{
    EXPECT_NEAR(p.alpha, a, 1e-6);
    EXPECT_NEAR(p.red, r, 1e-6);
    EXPECT_NEAR(p.green, g, 1e-6);
    EXPECT_NEAR(p.blue, b, 1e-6);
}

const PF_PixelFloat kHalfRed = {0.5f, 1.0f, 0.0f, 0.0f};

TEST(DepthCompositeFog, BeforeAndAtTheStartDepthTheColourIsUnchanged)
{
    const DepthInfo fog = makeInfo(kFog, 100.0, 200.0);
    expectPixel(composite(fog, 50.0, kHalfRed), 0.5f, 1.0f, 0.0f, 0.0f);
    expectPixel(composite(fog, 100.0, kHalfRed), 0.5f, 1.0f, 0.0f, 0.0f);
}

TEST(DepthCompositeFog, HalfwayBlendsOverTheSurfaceCoverageAndKeepsAlpha)
{
    // g = 0.5, w = 0.5 * 0.5 = 0.25, a' = 0.75:
    // red (0.2 * 0.5 + 1 * 0.25) / 0.75, green 0.4 * 0.5 / 0.75, blue 0.6 * 0.5 / 0.75.
    const DepthInfo fog = makeInfo(kFog, 100.0, 200.0);
    expectPixel(composite(fog, 150.0, kHalfRed), 0.5f, 0.35f / 0.75f, 0.2f / 0.75f, 0.4f);
}

TEST(DepthCompositeFog, AtAndBeyondTheEndDepthGivesTheFogColourWithTheHitsAlpha)
{
    const DepthInfo fog = makeInfo(kFog, 100.0, 200.0);
    expectPixel(composite(fog, 200.0, kHalfRed), 0.5f, 0.2f, 0.4f, 0.6f);
    expectPixel(composite(fog, 1e6, kHalfRed), 0.5f, 0.2f, 0.4f, 0.6f);
}

TEST(DepthCompositeFog, TransparentTexelTakesTheFogColourButStaysTransparent)
{
    const DepthInfo fog = makeInfo(kFog, 100.0, 200.0);
    const PF_PixelFloat clear_green = {0.0f, 0.0f, 1.0f, 0.0f};
    expectPixel(composite(fog, 150.0, clear_green), 0.0f, 0.2f, 0.4f, 0.6f);
}

TEST(DepthCompositeFog, ZeroLengthRangeSwitchesAtTheStartDepth)
{
    const DepthInfo fog = makeInfo(kFog, 100.0, 100.0);
    expectPixel(composite(fog, 99.0, kHalfRed), 0.5f, 1.0f, 0.0f, 0.0f);
    // (t - start) / 0 is NaN exactly at the start: no fog, and no NaN in the result.
    expectPixel(composite(fog, 100.0, kHalfRed), 0.5f, 1.0f, 0.0f, 0.0f);
    expectPixel(composite(fog, 101.0, kHalfRed), 0.5f, 0.2f, 0.4f, 0.6f);
}

TEST(DepthCompositeFog, ReversedRangeFogsTheNearSide)
{
    // End before start: the fraction runs backwards, so near hits are fogged.
    const DepthInfo fog = makeInfo(kFog, 200.0, 100.0);
    expectPixel(composite(fog, 50.0, kHalfRed), 0.5f, 0.2f, 0.4f, 0.6f);
    expectPixel(composite(fog, 250.0, kHalfRed), 0.5f, 1.0f, 0.0f, 0.0f);
}

TEST(DepthCompositeFadeOut, ScalesAlphaOnlyAcrossTheRange)
{
    const DepthInfo fade = makeInfo(kFadeOut, 100.0, 200.0);
    const PF_PixelFloat blue = {0.8f, 0.0f, 0.0f, 1.0f};
    expectPixel(composite(fade, 50.0, blue), 0.8f, 0.0f, 0.0f, 1.0f);
    expectPixel(composite(fade, 100.0, blue), 0.8f, 0.0f, 0.0f, 1.0f);
    expectPixel(composite(fade, 150.0, blue), 0.4f, 0.0f, 0.0f, 1.0f);
    expectPixel(composite(fade, 200.0, blue), 0.0f, 0.0f, 0.0f, 1.0f);
    expectPixel(composite(fade, 400.0, blue), 0.0f, 0.0f, 0.0f, 1.0f);
}

TEST(DepthCompositeFadeOut, ZeroLengthRangeCutsOffBehindTheStartDepth)
{
    const DepthInfo fade = makeInfo(kFadeOut, 100.0, 100.0);
    const PF_PixelFloat blue = {0.8f, 0.0f, 0.0f, 1.0f};
    expectPixel(composite(fade, 99.0, blue), 0.8f, 0.0f, 0.0f, 1.0f);
    expectPixel(composite(fade, 100.0, blue), 0.8f, 0.0f, 0.0f, 1.0f);
    expectPixel(composite(fade, 101.0, blue), 0.0f, 0.0f, 0.0f, 1.0f);
}

TEST(DepthCompositeOff, OffAndUnknownModesLeaveEverythingAlone)
{
    const PF_PixelFloat bright = {0.5f, 2.0f, -1.0f, 0.25f};
    expectPixel(composite(makeInfo(kOff, 0.0, 1.0), 1e6, bright), 0.5f, 2.0f, -1.0f, 0.25f);
    expectPixel(composite(makeInfo(7, 0.0, 1.0), 1e6, bright), 0.5f, 2.0f, -1.0f, 0.25f);
    expectPixel(composite(makeInfo(0, 0.0, 1.0), 1e6, bright), 0.5f, 2.0f, -1.0f, 0.25f);
}

} // namespace
