#include <cmath>
#include <utility>

#include <gtest/gtest.h>

#include "raytrace/Sphere.h"
#include "render/RenderInfo.h"
#include "support/ShapeSize.h"

using Vectormath::Aos::Vector3;

namespace {

constexpr double kPi = 3.141592653589793;

class SphereTest : public ::testing::Test {
protected:
    SphereTest() : info(nullptr), shape()
    {
        setShapeSize(shape, 10.0f, 20.0f, 30.0f);
        info.texture_height = 100.0;
        info.open_scale = 1.0;
        info.fixed_u = 0.5;
        info.fixed_v = 0.5;
        info.slide = 0.0;
        info.texture_layer.height = 0;
    }

    std::pair<double, double> uvAt(const Vector3& p) const
    {
        double u, v;
        shape.getUVFromCoordinate(info, p, u, v);
        return {u, v};
    }

    RenderInfo info;
    Sphere shape;
};

TEST_F(SphereTest, VRunsFromTheLowerToTheUpperPole)
{
    EXPECT_NEAR(uvAt(Vector3(0.0f, 0.0f, 30.0f)).second, 1.0, 1e-6);
    EXPECT_NEAR(uvAt(Vector3(0.0f, 0.0f, -30.0f)).second, 0.0, 1e-6);
    EXPECT_NEAR(uvAt(Vector3(0.0f, 0.0f, 90.0f)).second, 1.0, 1e-6);  // any distance
    EXPECT_NEAR(uvAt(Vector3(10.0f, 0.0f, 0.0f)).second, 0.5, 1e-6);
    EXPECT_EQ(uvAt(Vector3(0.0f, 0.0f, 30.0f)).first, 0.0);  // pole: on the axis
    EXPECT_NEAR(uvAt(Vector3(0.0f, -20.0f, 0.0f)).first, 0.25, 1e-6);
}

TEST_F(SphereTest, HitcoordIgnoresTheAxialScale)
{
    const Vector3 equator = shape.getHitcoordFromUV(999.0, shape.size, 0.25, 0.5);
    EXPECT_NEAR(equator.getX(), 0.0f, 1e-4);
    EXPECT_NEAR(equator.getY(), -20.0f, 1e-4);
    EXPECT_NEAR(equator.getZ(), 0.0f, 1e-4);
    const Vector3 pole = shape.getHitcoordFromUV(1.0, shape.size, 0.7, 1.0);
    EXPECT_NEAR(pole.getZ(), 30.0f, 1e-4);
}

TEST_F(SphereTest, OpeningIsWidestAtTheEquatorAndClosedAtThePoles)
{
    info.open_scale = 3.0;
    double u = 0.4, v = 0.5;
    shape.modifyUVByOpenParam(info, u, v);
    EXPECT_NEAR(u, 0.2, 1e-12);  // period 3 at the equator
    EXPECT_NEAR(v, 0.5, 1e-12);

    u = 0.4, v = 1.0;
    shape.modifyUVByOpenParam(info, u, v);
    EXPECT_NEAR(u, 0.4, 1e-12);  // period 1 at the pole
    EXPECT_NEAR(v, 2.0, 1e-12);
}

TEST_F(SphereTest, KnownLayerHeightScalesVByOneRowLess)
{
    info.texture_layer.height = 100;
    double u = 0.1, v = 0.5;
    shape.modifyUVByOpenParam(info, u, v);
    EXPECT_NEAR(v, 0.495, 1e-12);
}

TEST_F(SphereTest, JacobianIsTheEllipsoidsArcLength)
{
    double du, dv;
    shape.getJacobian(info, Vector3(1.0f, 0.0f, 0.0f), du, dv);
    EXPECT_NEAR(du, 2.0 * kPi * 20.0, 1e-6);  // tangent runs along y at u = 0
    EXPECT_NEAR(dv, kPi * 30.0, 1e-6);

    // Latitude with sin 0.6, cos 0.8: ring of radius 0.6 b, meridian sqrt(c^2 st^2 + a^2 cz^2).
    shape.getJacobian(info, Vector3(0.6f, 0.0f, 0.8f), du, dv);
    EXPECT_NEAR(du, 2.0 * kPi * 20.0 * 0.6, 1e-4);
    EXPECT_NEAR(dv, kPi * std::sqrt(900.0 * 0.36 + 100.0 * 0.64), 1e-4);

    info.open_scale = 2.0;  // the opening widens u at that latitude by 0.6 / 0.8
    shape.getJacobian(info, Vector3(0.6f, 0.0f, 0.8f), du, dv);
    EXPECT_NEAR(du, 2.0 * kPi * 20.0 * 0.75, 1e-4);
}

TEST_F(SphereTest, DistanceIsFromTheLargestRadius)
{
    EXPECT_NEAR(shape.evaluateDistance(Vector3(0.0f, 0.0f, 50.0f)), 20.0, 1e-5);
    EXPECT_NEAR(shape.evaluateDistance(Vector3(3.0f, 4.0f, 0.0f)), -25.0, 1e-5);
}

}  // namespace
