#include <cmath>

#include <gtest/gtest.h>

#include "raytrace/FootprintSampling.h"
#include "support/ShapeSize.h"

using Vectormath::Aos::Vector3;
using Vectormath::Aos::Vector4;

namespace {

constexpr double kPi = 3.141592653589793;

// A circular cylinder of radius 100 wearing a 628 x 200 texture (about one texture pixel per
// world unit around the axis, exactly one along it), seen through a camera whose zoom is 1000:
// at distance 1000 one screen pixel spans one world unit.
class FootprintRadiusTest : public ::testing::Test {
protected:
    FootprintRadiusTest() : info(nullptr)
    {
        setShapeSize(info, 100.0f, 100.0f, 0.0f);
        info.texture_height = 200.0;
        info.texture_layer.width = 628;
        info.texture_layer.height = 200;
        info.open_scale = 1.0;
        info.perspective = true;
        info.neg_focal = -1000.0f;
        info.sharpness_inv = 1.0;
    }

    // Radii of a hit at the front of the cylinder, u = 0, seen along `direction`.
    void radiiAt(const Vector3& direction, double t, double& xr, double& yr) const
    {
        Ray ray;
        ray.direction = direction;
        ray.origin = Vector4(0.0f, 0.0f, 0.0f, 1.0f);
        const Vector3 unit_position(1.0f, 0.0f, 0.0f);
        const Vector3 normal(1.0f, 0.0f, 0.0f);
        getSampRadius(info, ray, t, unit_position, normal, xr, yr);
    }

    RenderInfo info;
    const double head_on_x = 628.0 / (200.0 * kPi);  // W / du
    const double head_on_y = 1.0 / 0.9999;            // the normal cosine stops at 0.9999
};

TEST_F(FootprintRadiusTest, HeadOnAtTheZoomDistanceCoversAboutOneTexturePixel)
{
    double xr, yr;
    radiiAt(Vector3(-1.0f, 0.0f, 0.0f), 1000.0, xr, yr);
    EXPECT_NEAR(xr, head_on_x, 1e-6);
    EXPECT_NEAR(yr, head_on_y, 1e-6);
}

TEST_F(FootprintRadiusTest, RadiiGrowWithDistanceForAPerspectiveCamera)
{
    double xr, yr;
    radiiAt(Vector3(-1.0f, 0.0f, 0.0f), 5000.0, xr, yr);
    EXPECT_NEAR(xr, 5.0 * head_on_x, 1e-5);
    EXPECT_NEAR(yr, 5.0 * head_on_y, 1e-5);
}

TEST_F(FootprintRadiusTest, OrthographicRadiiIgnoreDistance)
{
    info.perspective = false;
    double xr, yr;
    radiiAt(Vector3(-1.0f, 0.0f, 0.0f), 5000.0, xr, yr);
    EXPECT_NEAR(xr, head_on_x, 1e-6);
    EXPECT_NEAR(yr, head_on_y, 1e-6);
}

TEST_F(FootprintRadiusTest, ObliqueViewStretchesOnlyTheTiltedDirection)
{
    double xr, yr;
    // Tilted 60 degrees along the axis: 1 / cos 60 = 2 in v only.
    radiiAt(Vector3(-0.5f, 0.0f, -0.8660254f), 1000.0, xr, yr);
    EXPECT_NEAR(xr, head_on_x, 1e-5);
    EXPECT_NEAR(yr, 2.0, 1e-5);
    // Tilted 60 degrees around the axis: 2 in u only.
    radiiAt(Vector3(-0.5f, -0.8660254f, 0.0f), 1000.0, xr, yr);
    EXPECT_NEAR(xr, 2.0 * head_on_x, 1e-5);
    EXPECT_NEAR(yr, 1.0, 1e-5);
}

TEST_F(FootprintRadiusTest, EdgeOnAndFarAwayAreCappedAt128Pixels)
{
    double xr, yr;
    radiiAt(Vector3(0.0f, -0.8660254f, -0.5f), 1000.0, xr, yr);  // grazing: cosine 0
    EXPECT_EQ(xr, 128.0);
    EXPECT_EQ(yr, 128.0);
    radiiAt(Vector3(-1.0f, 0.0f, 0.0f), 1.0e6, xr, yr);
    EXPECT_EQ(xr, 128.0);
    EXPECT_EQ(yr, 128.0);
}

TEST_F(FootprintRadiusTest, SharpnessScalesTheRadiiDownToAPoint)
{
    double xr, yr;
    info.sharpness_inv = 0.5;
    radiiAt(Vector3(-1.0f, 0.0f, 0.0f), 1000.0, xr, yr);
    EXPECT_NEAR(xr, 0.5 * head_on_x, 1e-6);
    EXPECT_NEAR(yr, 0.5 * head_on_y, 1e-6);

    info.sharpness_inv = 0.0;
    radiiAt(Vector3(-1.0f, 0.0f, 0.0f), 1000.0, xr, yr);
    EXPECT_EQ(xr, 0.0);
    EXPECT_EQ(yr, 0.0);
}

TEST_F(FootprintRadiusTest, OpeningWidensUButNotV)
{
    // Radii grow by K while the surface's length per unit v grows by K as well.
    info.open_scale = 2.0;
    double xr, yr;
    radiiAt(Vector3(-1.0f, 0.0f, 0.0f), 1000.0, xr, yr);
    EXPECT_NEAR(xr, 2.0 * head_on_x, 1e-6);
    EXPECT_NEAR(yr, head_on_y, 1e-6);
}

TEST_F(FootprintRadiusTest, EllipseUsesTheArcLengthAtTheHit)
{
    setShapeSize(info, 200.0f, 100.0f, 0.0f);
    Ray ray;
    ray.direction = Vector3(0.0f, -1.0f, 0.0f);
    ray.origin = Vector4(0.0f, 1000.0f, 0.0f, 1.0f);
    double xr, yr;
    // At (0, b) the tangent runs along x and the circumference density is 2 pi a.
    getSampRadius(info, ray, 1000.0, Vector3(0.0f, 1.0f, 0.0f), Vector3(0.0f, 1.0f, 0.0f), xr,
                  yr);
    EXPECT_NEAR(xr, 628.0 / (400.0 * kPi), 1e-6);
    EXPECT_NEAR(yr, head_on_y, 1e-6);
}

}  // namespace
