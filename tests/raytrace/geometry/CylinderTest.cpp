#include <cmath>

#include <gtest/gtest.h>

#include "render/RenderInfo.h"
#include "support/ShapeSize.h"

using Vectormath::Aos::Vector3;

namespace {

constexpr double kPi = 3.141592653589793;

// A closed circular straight cylinder of radius 100 with a 200-pixel texture; no host needed.
class CylinderTest : public ::testing::Test {
protected:
    CylinderTest() : info(nullptr)
    {
        setShapeSize(info, 100.0f, 100.0f, 0.0f);
        info.texture_height = 200.0;
        info.open_scale = 1.0;
        info.fixed_u = 0.0;
        info.slide = 0.0;
    }

    double uAt(const Vector3& p) const
    {
        double u = -1.0, v = -1.0;
        info.getUVFromCoordinate(info, p, u, v);
        return u;
    }

    RenderInfo info;
};

TEST_F(CylinderTest, UGrowsClockwiseSeenFromPlusZAndVRunsUpTheTexture)
{
    const struct {
        Vector3 p;
        double u, v;
    } cases[] = {
        {Vector3(0.0f, 0.0f, 50.0f), 0.0, 0.75},  // on the axis: u 0, not NaN; 50 / 200 + 0.5
        {Vector3(100.0f, 0.0f, -100.0f), 0.0, 0.0},
        {Vector3(0.0f, -100.0f, 0.0f), 0.25, 0.5},
        {Vector3(-100.0f, 0.0f, 0.0f), 0.5, 0.5},
        {Vector3(0.0f, 100.0f, 100.0f), 0.75, 1.0},
        // atan2 of a tiny positive y is a tiny negative u; adding 1 in float rounds to 1.0,
        // which callers treat as outside the texture. Never negative.
        {Vector3(100.0f, 1e-6f, 0.0f), 1.0, 0.5},
    };
    for (const auto& c : cases) {
        double u = -1.0, v = -1.0;
        info.getUVFromCoordinate(info, c.p, u, v);
        EXPECT_NEAR(u, c.u, 1e-6) << c.p.getX() << "," << c.p.getY() << "," << c.p.getZ();
        EXPECT_DOUBLE_EQ(v, c.v) << c.p.getX() << "," << c.p.getY() << "," << c.p.getZ();
    }
    EXPECT_EQ(uAt(Vector3(0.0f, 0.0f, 50.0f)), 0.0);
    EXPECT_DOUBLE_EQ(uAt(Vector3(100.0f, 0.0f, 0.0f)), 0.0);
    EXPECT_EQ(uAt(Vector3(100.0f, 1e-6f, 0.0f)), 1.0);

    setShapeSize(info, 300.0f, 100.0f, 0.0f);
    // (a cos 45deg, b sin 45deg) lies at 45 degrees of the unit circle, seen clockwise: 7/8.
    EXPECT_NEAR(uAt(Vector3(300.0f * 0.70710678f, 100.0f * 0.70710678f, 0.0f)), 0.875, 1e-6);
}

TEST_F(CylinderTest, UStaysInsideTheUnitRangeAllAround)
{
    for (int i = 0; i < 3600; ++i) {
        const double angle = (i + 0.5) * 2.0 * kPi / 3600.0;
        const double u = uAt(Vector3(float(100.0 * std::cos(angle)),
                                     float(100.0 * std::sin(angle)), 0.0f));
        ASSERT_GE(u, 0.0) << "angle " << angle;
        ASSERT_LT(u, 1.0) << "angle " << angle;
    }
}

TEST_F(CylinderTest, OpenFactorScalesAboutTheFixedPointThenRotatesAndWraps)
{
    const struct {
        double open_scale, fixed_u, slide, u, expected;
    } cases[] = {
        {1.0, 0.3, 0.25, 0.9, 0.15},  // K = 1 only rotates and wraps; the fixed point is moot
        {2.0, 0.5, 0.0, 0.25, 0.0},
        {2.0, 0.5, 0.0, 0.8, 1.1},    // 0.5 + 0.3 * 2 = 1.1: inside the opening
        {2.0, 0.5, 0.0, 0.1, 1.7},    // 0.5 - 0.4 * 2 = -0.3, wrapped by K = 2
        {2.0, 0.5, 0.25, 0.5, 0.75},  // the fixed point stays, then rotates
    };
    for (const auto& c : cases) {
        info.open_scale = c.open_scale;
        info.fixed_u = c.fixed_u;
        info.slide = c.slide;
        double u = c.u, v = 0.4;
        info.modifyUVByOpenParam(info, u, v);
        EXPECT_NEAR(u, c.expected, 1e-12) << "K " << c.open_scale << " u " << c.u;
        EXPECT_DOUBLE_EQ(v, 0.4);
    }
}

TEST_F(CylinderTest, HitcoordLiesAtTheRadiiRoundTripsAtTheMiddleRowAndWidensAHyperboloid)
{
    setShapeSize(info, 120.0f, 80.0f, 0.0f);
    const Vector3 front = info.getHitcoordFromUV(200.0, info.size, 0.0, 0.5);
    EXPECT_NEAR(front.getX(), 120.0f, 1e-4);
    EXPECT_NEAR(front.getY(), 0.0f, 1e-4);
    EXPECT_NEAR(front.getZ(), 0.0f, 1e-4);
    const Vector3 quarter = info.getHitcoordFromUV(200.0, info.size, 0.25, 0.5);
    EXPECT_NEAR(quarter.getX(), 0.0f, 1e-4);
    EXPECT_NEAR(quarter.getY(), -80.0f, 1e-4);
    for (double u : {0.05, 0.3, 0.55, 0.9}) {
        const Vector3 p = info.getHitcoordFromUV(info.texture_height, info.size, u, 0.5);
        double u2, v2;
        info.getUVFromCoordinate(info, p, u2, v2);
        EXPECT_NEAR(u2, u, 1e-6);
        EXPECT_NEAR(v2, 0.5, 1e-6);
    }
    // The axial sign is reversed against getUVFromCoordinate; only v = 0.5 is used.
    EXPECT_NEAR(info.getHitcoordFromUV(200.0, info.size, 0.0, 1.0).getZ(), -100.0f, 1e-4);

    // A hyperboloid widens away from the waist.
    setShapeSize(info, 100.0f, 50.0f, 50.0f);
    const Vector3 q = info.getHitcoordFromUV(100.0, info.size, 0.0, 0.0);  // z = 50 = c
    EXPECT_NEAR(q.getX(), 100.0f * std::sqrt(2.0f), 1e-3);
    EXPECT_NEAR(q.getZ(), 50.0f, 1e-4);
}

// World length of the surface per unit u and v, against central differences of the surface
// parametrisation of the closed surface (K = 1).
void expectJacobianMatchesSurface(const RenderInfo& info, double u, double v)
{
    const double h = 1e-3;
    auto point = [&](double uu, double vv) {
        return info.getHitcoordFromUV(info.texture_height, info.size, uu, vv);
    };
    const double du_numeric = length(point(u + h, v) - point(u - h, v)) / (2.0 * h);
    const double dv_numeric = length(point(u, v + h) - point(u, v - h)) / (2.0 * h);

    const Vector3 q = point(u, v);
    const Vector3 unit_position(q.getX() * info.inv_size.getX(), q.getY() * info.inv_size.getY(),
                                q.getZ() * info.inv_size.getZ());
    double du = 0.0, dv = 0.0;
    info.getJacobian(info, unit_position, du, dv);
    EXPECT_NEAR(du, du_numeric, 1e-3 * du_numeric) << "u " << u << " v " << v;
    EXPECT_NEAR(dv, dv_numeric, 1e-3 * dv_numeric) << "u " << u << " v " << v;
}

// A circle (circumference and height), an ellipse, and a hyperboloid whose c equals the texture
// height; the axial length scales with the open factor.
TEST_F(CylinderTest, JacobianMatchesTheArcLengthAndScalesWithTheOpening)
{
    double du, dv;
    info.getJacobian(info, Vector3(1.0f, 0.0f, 0.0f), du, dv);
    EXPECT_NEAR(du, 2.0 * kPi * 100.0, 1e-9);
    EXPECT_NEAR(dv, 200.0, 1e-9);
    info.open_scale = 3.0;
    info.getJacobian(info, Vector3(1.0f, 0.0f, 0.0f), du, dv);
    EXPECT_NEAR(dv, 600.0, 1e-9);
    info.open_scale = 1.0;

    setShapeSize(info, 300.0f, 100.0f, 0.0f);
    for (double u : {0.0, 0.1, 0.25, 0.4, 0.77})
        expectJacobianMatchesSurface(info, u, 0.5);
    setShapeSize(info, 150.0f, 100.0f, 200.0f);
    for (double v : {0.1, 0.5, 0.8})
        for (double u : {0.05, 0.6})
            expectJacobianMatchesSurface(info, u, v);
}

// From the axis minus the radius for a straight cylinder at any height; a hyperboloid adds the
// axial term: at (10 sqrt 2, 0, 10) on a = b = c = 10, X = 200, S = 200, W = 2, r = sqrt 2,
// zeta = 1, d = sqrt 2 - 1, t = sqrt(200 / 4).
TEST_F(CylinderTest, DistanceFromTheSurface)
{
    for (float z : {-500.0f, 0.0f, 70.0f}) {
        EXPECT_NEAR(info.evaluateDistance(Vector3(200.0f, 0.0f, z)), 100.0, 1e-4);
        EXPECT_NEAR(info.evaluateDistance(Vector3(0.0f, -130.0f, z)), 30.0, 1e-4);
        EXPECT_NEAR(info.evaluateDistance(Vector3(30.0f, 40.0f, z)), -50.0, 1e-4);
    }
    setShapeSize(info, 10.0f, 10.0f, 10.0f);
    const double t = std::sqrt(50.0);
    EXPECT_NEAR(info.evaluateDistance(Vector3(10.0f * std::sqrt(2.0f), 0.0f, 10.0f)),
                (std::sqrt(2.0) - 1.0) * t - t, 1e-4);
}

}  // namespace
