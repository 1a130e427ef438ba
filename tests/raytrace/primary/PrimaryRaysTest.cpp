#include <cmath>
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
// its silhouettes fall exactly on pixel borders 25 and 175. Every pixel of the (row-padded,
// poisoned) output is written: fully covered or empty, in each depth.
template <class Pixel>
class PrimaryRayImage : public ::testing::Test {};
using PixelTypes = ::testing::Types<PF_Pixel, PF_Pixel16, PF_PixelFloat>;
TYPED_TEST_SUITE(PrimaryRayImage, PixelTypes);

TYPED_TEST(PrimaryRayImage, StraightCylinderHeadOnCoversColumns25To174)
{
    using Pixel = TypeParam;
    TraceScene scene(trace_test::BitsOf<Pixel>::value);
    scene.setFacingCamera(100.0f, true, 100.0f);
    scene.setImageCenter(100.0f, 4.5f);
    scene.allocateOutput<Pixel>(200, 9);
    ASSERT_EQ(scene.render<Pixel>(), PF_Err_NONE);
    for (A_long y = 0; y < 9; ++y)
        for (A_long x = 0; x < 200; ++x) {
            const PF_PixelFloat p = toFloatPixel(scene.template pixel<Pixel>(x, y));
            if (x >= 25 && x <= 174) {
                ASSERT_EQ(p.alpha, 1.0f) << "x " << x << " y " << y;
            } else {
                ASSERT_EQ(p.alpha, 0.0f) << "x " << x << " y " << y;
                ASSERT_EQ(p.red + p.green + p.blue, 0.0f) << "x " << x << " y " << y;
            }
        }
}

// Coverage scales alpha only; the colour stays that of the representative sample, here the
// one at z = 0 where v = 0.5 (R = 75.4: a third of pixel 24 covered).
TYPED_TEST(PrimaryRayImage, PartialCoverageAlphaCarriesOneThirdColourStaysStraight)
{
    using Pixel = TypeParam;
    TraceScene scene(trace_test::BitsOf<Pixel>::value);
    scene.setParallelView(100.0f, 4.5f);
    scene.setCylinder(75.4f, 0.0f);
    scene.allocateOutput<Pixel>(200, 9);
    ASSERT_EQ(scene.render<Pixel>(), PF_Err_NONE);

    // Integer depths truncate: 255 / 3 = 85, 127.5 -> 127, 32768 / 3 = 10922.67 -> 10922.
    const double white = PixelTraits<Pixel>::white;
    auto stored = [&](double v) { return std::is_same_v<Pixel, PF_PixelFloat> ? v : std::floor(v * white); };
    const Pixel p = scene.template pixel<Pixel>(24, 4);
    EXPECT_NEAR(p.alpha, stored(1.0 / 3.0), 1e-7);
    EXPECT_NEAR(p.green, stored(0.5), 1e-7);
    EXPECT_EQ(scene.template pixel<Pixel>(100, 4).alpha, white);
    EXPECT_EQ(scene.template pixel<Pixel>(23, 4).alpha, 0);
}

// Under the parallel view about x = 100 a pixel's samples hit when |x + dx - 100| <= R.
// R = 60: pixel 100 is covered and shaded with the last corner ray (5/6, 5/6), not the centre.
// R = 75.4: in pixel 24 only the dx = 5/6 samples (3, 7, 8) hit, in pixel 175 only the dx = 1/6
// ones (1, 5, 6), and the first hit is kept; R = 75.6 adds the dx = 1/2 column (0, 2, 4).
// R = 0.2 about the centre ray of pixel (10, 0): the centre hits between missing corners and
// is dropped.
TEST(PrimaryRayCoverage, CountsNinthsAndKeepsTheFirstHitOrTheLastCorner)
{
    const struct {
        float radius, centre_x, centre_y;
        int x, y, count;
        double origin_x, tolerance_x, origin_z, tolerance_z;
    } cases[] = {
        {60.0f, 100.0f, 4.5f, 100, 4, 9, 5.0 / 6.0, 1e-5, 4.0 + 5.0 / 6.0 - 4.5, 1e-5},
        {75.4f, 100.0f, 4.5f, 24, 4, 3, 24.0 + 5.0 / 6.0 - 100.0, 1e-4, 0.0, 1e-6},  // sample 3
        {75.4f, 100.0f, 4.5f, 175, 4, 3, 175.0 + 1.0 / 6.0 - 100.0, 1e-4, 0.0, 1e-6},  // sample 1
        {75.6f, 100.0f, 4.5f, 24, 4, 6, 24.5 - 100.0, 1e-4, 0.0, 1e-6},  // the centre
        {0.2f, 10.5f, 0.5f, 10, 0, 0, 0.0, 0.0, 0.0, 0.0},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(::testing::Message() << "R " << c.radius << " pixel " << c.x);
        TraceScene scene(32);
        scene.setParallelView(c.centre_x, c.centre_y);
        scene.setCylinder(c.radius, 0.0f);
        const Trace t = trace(scene.info(), c.x, c.y);
        EXPECT_EQ(t.count, c.count);
        EXPECT_EQ(t.coverage, double(float(c.count) / 9.0f));
        EXPECT_GE(t.D, 0.0);  // a missing corner leaves D at 0, not negative
        if (c.count > 0) {
            EXPECT_NEAR(t.ray.origin.getX(), c.origin_x, c.tolerance_x);
            EXPECT_NEAR(t.ray.origin.getZ(), c.origin_z, c.tolerance_z);
        }
    }
}

TEST(PrimaryRayCoverage, FullyCoveredPixelIsShadedWithTheLastCornerRay)
{
    TraceScene scene(32);
    scene.setParallelView(100.0f, 4.5f);
    const Trace t = trace(scene.info(), 100, 4);
    EXPECT_NEAR(t.ray.origin.getY(), 560.0, 1e-4);  // one radius behind the image plane
    EXPECT_FLOAT_EQ(t.ray.origin.getW(), 1.0f);
    EXPECT_FLOAT_EQ(t.ray.direction.getY(), -1.0f);
    // Near crossing at 560 - sqrt(60^2 - x^2), far one at 560 + sqrt(...).
    const double half_chord = std::sqrt(3600.0 - 25.0 / 36.0);
    const double s = std::sqrt(t.D);
    EXPECT_NEAR((t.B - s) / t.A, 560.0 - half_chord, 1e-3);
    EXPECT_NEAR((t.B + s) / t.A, 560.0 + half_chord, 1e-3);

    scene.allocateOutput<PF_PixelFloat>(200, 9);
    ASSERT_EQ(scene.render<PF_PixelFloat>(), PF_Err_NONE);
    const PF_PixelFloat p = scene.pixel<PF_PixelFloat>(100, 4);
    EXPECT_FLOAT_EQ(p.alpha, 1.0f);
    EXPECT_NEAR(p.red, nearFaceU(5.0 / 6.0, 60.0), 1e-5);
    EXPECT_NEAR(p.green, (4.0 + 5.0 / 6.0 - 4.5) / 1000.0 + 0.5, 1e-6);  // centre: 0.5
    EXPECT_EQ(p.blue, 0.0f);
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

// Local (300, 0, 0) looking along +z, up a waist of radius 100 (a = b = c = 100): the ray is
// steeper than the asymptotic cone, so A < 0. It crosses the surface once behind the camera
// (the inner face, t = -283) and once in front (the outer face, t = +283, at z = 200 sqrt 2).
const Matrix4 kAlongAxis(Vector4(1, 0, 0, 0), Vector4(0, 1, 0, 0), Vector4(0, 0, 1, 0),
                         Vector4(300, 0, 0, 1));

// The outer face towards a camera at +y is around u = 0.75, the inner face behind the axis
// around u = 0.25. From outside the full render shows the opaque front only, not the back
// blended in; from inside only the inner face shows; a surface behind the camera not at all.
TEST(PrimaryRayRenderSide, CameraSeesTheFacesOfItsSide)
{
    // At local (0, 100, 0) looking along +y, away from the cylinder.
    const Matrix4 away(Vector4(1, 0, 0, 0), Vector4(0, 0, 1, 0), Vector4(0, 1, 0, 0),
                       Vector4(0, 100, 0, 1));
    const float kAny = -1.0f;
    const struct {
        const char* name;
        Matrix4 camera;
        float c;
        Side side;
        float alpha, red, green;
    } cases[] = {
        {"outside full", lookingDownY(100.0f), 0.0f, kFull, 1.0f, 0.75f, kAny},
        {"outside outside", lookingDownY(100.0f), 0.0f, kOutside, 1.0f, 0.75f, kAny},
        {"outside inside", lookingDownY(100.0f), 0.0f, kInside, 1.0f, 0.25f, kAny},
        {"axis full", lookingDownY(0.0f), 0.0f, kFull, 1.0f, 0.25f, kAny},
        {"axis inside", lookingDownY(0.0f), 0.0f, kInside, 1.0f, 0.25f, kAny},
        {"axis outside", lookingDownY(0.0f), 0.0f, kOutside, 0.0f, 0.0f, 0.0f},
        {"behind the camera", away, 0.0f, kFull, 0.0f, 0.0f, 0.0f},
        {"steep outside", kAlongAxis, 100.0f, kOutside, 1.0f, kAny, 283.0f / 1000.0f + 0.5f},
        {"steep full", kAlongAxis, 100.0f, kFull, 1.0f, kAny, kAny},
        {"steep inside", kAlongAxis, 100.0f, kInside, 0.0f, 0.0f, 0.0f},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        TraceScene scene(32);
        scene.setCylinder(c.c > 0.0f ? 100.0f : 60.0f, c.c);
        const PF_PixelFloat p = middlePixel(scene, c.camera, c.side);
        EXPECT_FLOAT_EQ(p.alpha, c.alpha);
        if (c.alpha == 0.0f) {  // nothing drawn: transparent black
            EXPECT_EQ(p.red, 0.0f);
            EXPECT_EQ(p.green, 0.0f);
        }
        if (c.alpha > 0.0f && c.red != kAny) {
            EXPECT_NEAR(p.red, c.red, 0.01);
        }
        if (c.alpha > 0.0f && c.green != kAny) {
            EXPECT_NEAR(p.green, c.green, 0.01);
        }
    }
    TraceScene scene(32);
    scene.setCylinder(100.0f, 100.0f);
    middlePixel(scene, kAlongAxis, kFull);
    EXPECT_LT(trace(scene.info(), 1, 1).A, 0.0);
}

// --- Callback contract -----------------------------------------------------------------------

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
