#include <cmath>
#include <cstring>
#include <type_traits>

#include <gtest/gtest.h>

#include "raytrace/PrimaryRays.h"
#include "raytrace/primary/TraceScene.h"

using trace_test::TraceScene;
using Vectormath::Aos::Matrix4;
using Vectormath::Aos::Vector4;

namespace {

constexpr double kTwoPi = 6.283185307179586;

// u of a point on the near face (local y > 0) of a circle of radius r at local x: the face
// point straight towards the camera is u = 0.75 and u grows clockwise seen from +z.
double nearFaceU(double x, double r) { return 0.75 + std::asin(x / r) / kTwoPi; }

struct Trace {
    double coverage;
    int count;
    double A, B, D;
    Ray ray;
};

Trace trace(const RenderInfo& info, int x, int y)
{
    Trace t{};
    t.coverage = msaaRayTest(x, y, info, t.count, t.A, t.B, t.D, t.ray);
    return t;
}

// --- Coverage and the representative ray -------------------------------------------------

// Seen head-on with the default camera (distance = focal length = 100) a cylinder of radius 60
// subtends |sx| <= 60 * 100 / sqrt(100^2 - 60^2) = 75 pixels about the image centre 100, so
// its silhouettes fall exactly on pixel borders 25 and 175.
TEST(PrimaryRayCoverage, StraightCylinderHeadOnCoversColumns25To174)
{
    TraceScene scene(8);
    scene.setFacingCamera(100.0f, true, 100.0f);
    scene.setImageCenter(100.0f, 4.5f);
    scene.allocateOutput<PF_Pixel>(200, 9);
    ASSERT_EQ(scene.render<PF_Pixel>(), PF_Err_NONE);

    for (A_long y = 0; y < 9; ++y) {
        for (A_long x = 0; x < 200; ++x) {
            const PF_Pixel p = scene.pixel<PF_Pixel>(x, y);
            if (x >= 25 && x <= 174) {
                ASSERT_EQ(p.alpha, 255) << "x " << x << " y " << y;
            } else {
                ASSERT_EQ(p.alpha, 0) << "x " << x << " y " << y;
                ASSERT_EQ(p.red + p.green + p.blue, 0) << "x " << x << " y " << y;
            }
        }
    }
}

// Parallel rays along -y: sample (dx, dy) of pixel (x, y) starts at local
// (x + dx - 100, 500 + 60, y + dy - 4.5) and hits when |x + dx - 100| <= R.
TEST(PrimaryRayCoverage, FullyCoveredPixelCountsNineAndIsShadedWithTheLastCornerRay)
{
    TraceScene scene(32);
    scene.setFacingCamera(500.0f, false, 100.0f);
    scene.setImageCenter(100.0f, 4.5f);
    const Trace t = trace(scene.info(), 100, 4);

    EXPECT_EQ(t.coverage, 1.0);
    EXPECT_EQ(t.count, 9);
    EXPECT_NEAR(t.ray.origin.getX(), 5.0 / 6.0, 1e-5);  // corner (5/6, 5/6), not the centre
    EXPECT_NEAR(t.ray.origin.getZ(), 4.0 + 5.0 / 6.0 - 4.5, 1e-5);
    EXPECT_NEAR(t.ray.origin.getY(), 560.0, 1e-4);  // one radius behind the image plane
    EXPECT_FLOAT_EQ(t.ray.origin.getW(), 1.0f);
    EXPECT_FLOAT_EQ(t.ray.direction.getY(), -1.0f);
    // Near crossing at 560 - sqrt(60^2 - x^2), far one at 560 + sqrt(...).
    const double half_chord = std::sqrt(3600.0 - 25.0 / 36.0);
    const double s = std::sqrt(t.D);
    EXPECT_NEAR((t.B - s) / t.A, 560.0 - half_chord, 1e-3);
    EXPECT_NEAR((t.B + s) / t.A, 560.0 + half_chord, 1e-3);

    // The pixel is shaded with that corner ray.
    scene.allocateOutput<PF_PixelFloat>(200, 9);
    ASSERT_EQ(scene.render<PF_PixelFloat>(), PF_Err_NONE);

    const PF_PixelFloat p = scene.pixel<PF_PixelFloat>(100, 4);
    EXPECT_FLOAT_EQ(p.alpha, 1.0f);
    EXPECT_NEAR(p.red, nearFaceU(5.0 / 6.0, 60.0), 1e-5);
    EXPECT_NEAR(p.green, (4.0 + 5.0 / 6.0 - 4.5) / 1000.0 + 0.5, 1e-6);  // centre: 0.5
    EXPECT_EQ(p.blue, 0.0f);
}

// R = 75.4 about x = 100: in pixel 24 only the dx = 5/6 samples (3, 7, 8) hit, in pixel 175
// only the dx = 1/6 ones (1, 5, 6). R = 75.6 adds the dx = 1/2 column (0, 2, 4) to each.
TEST(PrimaryRayCoverage, PartialCoverageCountsNinthsAndKeepsTheFirstHit)
{
    TraceScene scene(32);
    scene.setFacingCamera(500.0f, false, 100.0f);
    scene.setImageCenter(100.0f, 4.5f);

    scene.setCylinder(75.4f, 0.0f);
    Trace left = trace(scene.info(), 24, 4);
    EXPECT_EQ(left.count, 3);
    EXPECT_EQ(left.coverage, double(3.0f / 9.0f));
    EXPECT_NEAR(left.ray.origin.getX(), 24.0 + 5.0 / 6.0 - 100.0, 1e-4);  // sample 3
    EXPECT_NEAR(left.ray.origin.getZ(), 0.0, 1e-6);
    Trace right = trace(scene.info(), 175, 4);
    EXPECT_EQ(right.count, 3);
    EXPECT_NEAR(right.ray.origin.getX(), 175.0 + 1.0 / 6.0 - 100.0, 1e-4);  // sample 1
    EXPECT_NEAR(right.ray.origin.getZ(), 0.0, 1e-6);
    EXPECT_GE(right.D, 0.0);

    scene.setCylinder(75.6f, 0.0f);
    left = trace(scene.info(), 24, 4);
    EXPECT_EQ(left.count, 6);
    EXPECT_EQ(left.coverage, double(6.0f / 9.0f));
    EXPECT_NEAR(left.ray.origin.getX(), 24.5 - 100.0, 1e-4);  // the centre
}

TEST(PrimaryRayCoverage, CentreHitBetweenMissingCornersIsDropped)
{
    TraceScene scene(8);
    scene.setFacingCamera(500.0f, false, 100.0f);
    scene.setCylinder(0.2f, 0.0f);
    scene.setImageCenter(10.5f, 0.5f);  // the centre ray of pixel (10, 0) runs along the axis
    const Trace t = trace(scene.info(), 10, 0);
    EXPECT_EQ(t.coverage, 0.0);
    EXPECT_EQ(t.count, 0);
    EXPECT_GE(t.D, 0.0);  // a missing corner leaves D at 0, not negative

    scene.allocateOutput<PF_Pixel>(21, 1);
    ASSERT_EQ(scene.render<PF_Pixel>(), PF_Err_NONE);
    const PF_Pixel p = scene.pixel<PF_Pixel>(10, 0);
    EXPECT_EQ(p.alpha, 0);
    EXPECT_EQ(p.red, 0);
    EXPECT_EQ(p.green, 0);
}

// Coverage scales alpha only; the colour stays that of the representative sample, here the
// one at z = 0 where v = 0.5.
template <class Pixel>
class PartialCoverageOutput : public ::testing::Test {};
using PixelTypes = ::testing::Types<PF_Pixel, PF_Pixel16, PF_PixelFloat>;
TYPED_TEST_SUITE(PartialCoverageOutput, PixelTypes);

TYPED_TEST(PartialCoverageOutput, AlphaCarriesOneThirdColourStaysStraight)
{
    using Pixel = TypeParam;
    TraceScene scene(trace_test::BitsOf<Pixel>::value);
    scene.setFacingCamera(500.0f, false, 100.0f);
    scene.setImageCenter(100.0f, 4.5f);
    scene.setCylinder(75.4f, 0.0f);
    scene.allocateOutput<Pixel>(200, 9);
    ASSERT_EQ(scene.render<Pixel>(), PF_Err_NONE);

    const Pixel p = scene.template pixel<Pixel>(24, 4);
    const Pixel full = scene.template pixel<Pixel>(100, 4);
    if constexpr (std::is_same_v<Pixel, PF_Pixel>) {
        EXPECT_EQ(p.alpha, 85);   // 255 / 3
        EXPECT_EQ(p.green, 127);  // 0.5 * 255 = 127.5, truncated
        EXPECT_EQ(full.alpha, 255);
    } else if constexpr (std::is_same_v<Pixel, PF_Pixel16>) {
        EXPECT_EQ(p.alpha, 10922);  // 32768 / 3 = 10922.67
        EXPECT_EQ(p.green, 16384);
        EXPECT_EQ(full.alpha, 32768);
    } else {
        EXPECT_FLOAT_EQ(p.alpha, 1.0f / 3.0f);
        EXPECT_FLOAT_EQ(p.green, 0.5f);
        EXPECT_FLOAT_EQ(full.alpha, 1.0f);
    }
    EXPECT_EQ(scene.template pixel<Pixel>(23, 4).alpha, 0);
}

// --- Render side and face order ------------------------------------------------------------

enum Side { kFull = 1, kInside = 2, kOutside = 3 };

// Colour of the middle pixel of a 3 x 3 float image seen by `camera` (perspective, focal 100).
PF_PixelFloat middlePixel(TraceScene& scene, const Matrix4& camera, Side side)
{
    scene.info().perspective = true;
    scene.info().neg_focal = -100.0f;
    scene.setCamera(camera);
    scene.setImageCenter(1.5f, 1.5f);
    scene.info().render_side = side;
    scene.allocateOutput<PF_PixelFloat>(3, 3);
    EXPECT_EQ(scene.render<PF_PixelFloat>(), PF_Err_NONE);
    return scene.pixel<PF_PixelFloat>(1, 1);
}

// Camera x -> local x, camera y -> local z, camera z (view) -> local -y, at local (0, d, 0).
Matrix4 lookingDownY(float d)
{
    return Matrix4(Vector4(1, 0, 0, 0), Vector4(0, 0, 1, 0), Vector4(0, -1, 0, 0),
                   Vector4(0, d, 0, 1));
}

// The outer face towards a camera at +y is around u = 0.75, the inner face behind the axis
// around u = 0.25. From outside the full render shows the opaque front only, not the back
// blended in; from inside only the inner face shows.
TEST(PrimaryRayRenderSide, CameraSeesTheFacesOfItsSide)
{
    const struct {
        float distance;
        Side side;
        float alpha, red;
    } cases[] = {
        {100.0f, kFull, 1.0f, 0.75f}, {100.0f, kOutside, 1.0f, 0.75f}, {100.0f, kInside, 1.0f, 0.25f},
        {0.0f, kFull, 1.0f, 0.25f},   {0.0f, kInside, 1.0f, 0.25f},    {0.0f, kOutside, 0.0f, 0.0f},
    };
    for (const auto& c : cases) {
        TraceScene scene(32);
        const PF_PixelFloat p = middlePixel(scene, lookingDownY(c.distance), c.side);
        EXPECT_FLOAT_EQ(p.alpha, c.alpha) << "distance " << c.distance << " side " << c.side;
        if (c.alpha > 0.0f)
            EXPECT_NEAR(p.red, c.red, 0.01) << "distance " << c.distance << " side " << c.side;
        else
            EXPECT_EQ(p.red, 0.0f) << "distance " << c.distance << " side " << c.side;
    }
}

TEST(PrimaryRayRenderSide, SurfaceBehindTheCameraIsNotDrawn)
{
    TraceScene scene(32);
    // At local (0, 100, 0) looking along +y, away from the cylinder.
    const Matrix4 away(Vector4(1, 0, 0, 0), Vector4(0, 0, 1, 0), Vector4(0, 1, 0, 0),
                       Vector4(0, 100, 0, 1));
    const PF_PixelFloat p = middlePixel(scene, away, kFull);
    EXPECT_EQ(p.alpha, 0.0f);
    EXPECT_EQ(p.red, 0.0f);
    EXPECT_EQ(p.green, 0.0f);
}

// A waist of radius 100 (a = b = c = 100) seen from local (300, 0, 0) along +z: the ray is
// steeper than the asymptotic cone, so A < 0. It crosses the surface once behind the camera
// (the inner face, t = -283) and once in front (the outer face, t = +283).
TEST(PrimaryRayRenderSide, SteepRayThroughWaistOrdersFacesBySignOfA)
{
    TraceScene scene(32);
    scene.setCylinder(100.0f, 100.0f);
    const Matrix4 along_axis(Vector4(1, 0, 0, 0), Vector4(0, 1, 0, 0), Vector4(0, 0, 1, 0),
                             Vector4(300, 0, 0, 1));
    PF_PixelFloat p = middlePixel(scene, along_axis, kOutside);
    EXPECT_FLOAT_EQ(p.alpha, 1.0f);
    EXPECT_NEAR(p.green, 283.0 / 1000.0 + 0.5, 0.01);  // hit at z = 200 * sqrt(2)

    const Trace t = trace(scene.info(), 1, 1);
    EXPECT_LT(t.A, 0.0);

    p = middlePixel(scene, along_axis, kFull);
    EXPECT_FLOAT_EQ(p.alpha, 1.0f);

    p = middlePixel(scene, along_axis, kInside);
    EXPECT_EQ(p.alpha, 0.0f);
}

// --- Conversion to the output depth ----------------------------------------------------------

// Orthographic, image centre y = 5/6: the corner ray of row 0 runs at z = 0, where v = 0.5, so
// green = 0.5 * Emit exactly.
template <class Pixel>
Pixel greenHalfOfEmit(float emit)
{
    TraceScene scene(trace_test::BitsOf<Pixel>::value);
    scene.setFacingCamera(500.0f, false, 100.0f);
    scene.setImageCenter(2.5f, 5.0f / 6.0f);
    scene.info().emit = emit;
    scene.allocateOutput<Pixel>(5, 1);
    EXPECT_EQ(scene.render<Pixel>(), PF_Err_NONE);
    return scene.pixel<Pixel>(2, 0);
}

TEST(PrimaryRayOutput, IntegerDepthsTruncateAndClampFloatPassesThrough)
{
    EXPECT_EQ(greenHalfOfEmit<PF_Pixel>(1.998f).green, 254);  // 0.999 * 255 = 254.7
    EXPECT_EQ(greenHalfOfEmit<PF_Pixel>(1.998f).alpha, 255);
    EXPECT_EQ(greenHalfOfEmit<PF_Pixel>(4.0f).green, 255);
    EXPECT_EQ(greenHalfOfEmit<PF_Pixel>(-1.0f).green, 0);
    EXPECT_EQ(greenHalfOfEmit<PF_Pixel16>(1.998f).green, 32735);  // 32735.2
    EXPECT_EQ(greenHalfOfEmit<PF_Pixel16>(4.0f).green, 32768);
    EXPECT_EQ(greenHalfOfEmit<PF_Pixel16>(4.0f).alpha, 32768);
    EXPECT_EQ(greenHalfOfEmit<PF_Pixel16>(-1.0f).green, 0);
    EXPECT_EQ(greenHalfOfEmit<PF_PixelFloat>(1.998f).green, 0.999f);
    EXPECT_EQ(greenHalfOfEmit<PF_PixelFloat>(4.0f).green, 2.0f);
    EXPECT_EQ(greenHalfOfEmit<PF_PixelFloat>(-1.0f).green, -0.5f);
    EXPECT_EQ(greenHalfOfEmit<PF_PixelFloat>(4.0f).alpha, 1.0f);
}

// --- Callback contract -----------------------------------------------------------------------

TEST(PrimaryRayCallback, NegativeThreadIndexWritesNothing)
{
    TraceScene scene(8);
    scene.setFacingCamera(100.0f, true, 100.0f);
    scene.setImageCenter(1.0f, 1.0f);
    scene.allocateOutput<PF_Pixel>(2, 2);
    const PF_Pixel before = scene.pixel<PF_Pixel>(1, 1);
    EXPECT_EQ(RayTrace_PixelCallback<PF_Pixel>(&scene.info(), -1, 3, 4), PF_Err_NONE);
    const PF_Pixel after = scene.pixel<PF_Pixel>(1, 1);
    EXPECT_EQ(std::memcmp(&before, &after, sizeof before), 0);

    EXPECT_EQ(RayTrace_PixelCallback<PF_Pixel>(&scene.info(), 0, 3, 4), PF_Err_NONE);
    EXPECT_EQ(scene.pixel<PF_Pixel>(1, 1).alpha, 255);
}

TEST(PrimaryRayCallback, EveryPixelOfARowPaddedWorldIsWritten)
{
    TraceScene scene(16);
    scene.setFacingCamera(100.0f, true, 100.0f);
    scene.setImageCenter(50.0f, 3.5f);
    scene.allocateOutput<PF_Pixel16>(100, 7);
    ASSERT_EQ(scene.render<PF_Pixel16>(), PF_Err_NONE);
    // Poison bytes would read 0xA7A7 = 42919, above white.
    for (A_long y = 0; y < 7; ++y)
        for (A_long x = 0; x < 100; ++x)
            ASSERT_LE(scene.pixel<PF_Pixel16>(x, y).alpha, 32768) << x << "," << y;
}

TEST(PrimaryRayCallback, MissingSamplingSuiteIsReturnedNotThrown)
{
    TraceScene scene(32);
    host::OwnedWorld texture;
    ASSERT_EQ(texture.allocate(8, 8, PF_PixelFormat_ARGB128), PF_Err_NONE);
    scene.info().texture_layer = texture.get();
    scene.info().texture_width = 8;
    scene.setFacingCamera(100.0f, true, 100.0f);
    scene.setImageCenter(1.0f, 1.0f);
    scene.allocateOutput<PF_PixelFloat>(2, 2);
    scene.host().faults().fail_every("AcquireSuite", PF_Err_OUT_OF_MEMORY);
    EXPECT_EQ(scene.render<PF_PixelFloat>(), PF_Err_BAD_CALLBACK_PARAM);
    scene.host().faults().reset();
    scene.info().texture_layer = PF_LayerDef{};
}

}  // namespace
