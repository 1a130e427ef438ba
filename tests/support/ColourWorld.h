#pragma once
// Straight float colours for the ray tracer tests: worlds of any pixel depth filled from a
// colour function (stored as the module stores its output, truncated), and a four-channel
// comparison that names the channel that differs.

#include <gtest/gtest.h>

#include "host/pixels/PixelWorld.h"
#include "math/PixelConvert.h"

namespace test_support {

inline PF_PixelFloat argb(float a, float r, float g, float b) { return PF_PixelFloat{a, r, g, b}; }

const PF_PixelFloat kRed = {1.0f, 1.0f, 0.0f, 0.0f};
const PF_PixelFloat kGreen = {1.0f, 0.0f, 1.0f, 0.0f};
const PF_PixelFloat kBlue = {1.0f, 0.0f, 0.0f, 1.0f};
const PF_PixelFloat kClear = {0.0f, 0.0f, 0.0f, 0.0f};

// A width x height world of `Pixel` whose pixel (x, y) is colour_at(x, y).
template <class Pixel, class ColourAt>
void fillWorld(host::OwnedWorld& world, A_long width, A_long height, ColourAt colour_at)
{
    ASSERT_EQ(world.allocate(width, height, host::PixelFormatOf<Pixel>::value), PF_Err_NONE);
    for (A_long y = 0; y < height; ++y)
        for (A_long x = 0; x < width; ++x)
            host::worldPixel<Pixel>(world.get(), x, y) = PixelTraits<Pixel>::fromFloat(colour_at(x, y));
}

inline void expectColour(const PF_PixelFloat& got, const PF_PixelFloat& want, float tolerance = 1e-5f)
{
    EXPECT_NEAR(got.alpha, want.alpha, tolerance) << "alpha";
    EXPECT_NEAR(got.red, want.red, tolerance) << "red";
    EXPECT_NEAR(got.green, want.green, tolerance) << "green";
    EXPECT_NEAR(got.blue, want.blue, tolerance) << "blue";
}

}  // namespace test_support
