#include <cmath>

#include <gtest/gtest.h>

#include "raytrace/Hyperboloid.h"
#include "render/RenderInfo.h"
#include "support/ShapeSize.h"

using Vectormath::Aos::Vector3;

namespace {

constexpr double kPi = 3.141592653589793;

// Two sheets with vertices at z = +-10, read through the cylinder record for H, K, U0 and n.
class HyperboloidTest : public ::testing::Test {
protected:
    HyperboloidTest() : info(nullptr), shape()
    {
        setShapeSize(shape, 10.0f, 20.0f, 10.0f);
        info.texture_height = 100.0;
        info.open_scale = 1.0;
        info.fixed_u = 0.5;
        info.fixed_v = 0.5;
        info.slide = 0.0;
        info.texture_layer.height = 50;
    }

    double vAt(const Vector3& p) const
    {
        double u, v;
        shape.getUVFromCoordinate(info, p, u, v);
        return v;
    }

    RenderInfo info;
    Hyperboloid shape;
};

TEST_F(HyperboloidTest, VStartsAtEachVertexAndTheLowerSheetShiftsByOneRow)
{
    EXPECT_NEAR(vAt(Vector3(0.0f, 0.0f, 20.0f)), 0.1, 1e-9);
    EXPECT_NEAR(vAt(Vector3(0.0f, 0.0f, -10.0f)), -0.02, 1e-9);  // 0 - 1/50
    EXPECT_NEAR(vAt(Vector3(0.0f, 0.0f, 0.0f)), 0.08, 1e-9);     // z = 0 counts as lower

    info.texture_layer.height = 0;  // no shift without a layer height
    EXPECT_NEAR(vAt(Vector3(0.0f, 0.0f, -10.0f)), 0.0, 1e-9);

    info.open_scale = 2.0;
    EXPECT_NEAR(vAt(Vector3(0.0f, 0.0f, 20.0f)), 0.05, 1e-9);
}

TEST_F(HyperboloidTest, HitcoordLiesOnTheSheetOfItsSign)
{
    const Vector3 upper = shape.getHitcoordFromUV(100.0, shape.size, 0.0, 0.1);  // t = 2
    EXPECT_NEAR(upper.getX(), 10.0f * std::sqrt(3.0f), 1e-4);
    EXPECT_NEAR(upper.getY(), 0.0f, 1e-4);
    EXPECT_NEAR(upper.getZ(), 20.0f, 1e-4);
    const Vector3 lower = shape.getHitcoordFromUV(100.0, shape.size, 0.25, -0.1);  // t = -2
    EXPECT_NEAR(lower.getY(), -20.0f * std::sqrt(3.0f), 1e-4);
    EXPECT_NEAR(lower.getZ(), -20.0f, 1e-4);
}

TEST_F(HyperboloidTest, OpeningNarrowsToNothingAtTheVertex)
{
    info.open_scale = 3.0;
    double u = 0.4, v = 0.0;  // at the vertex the period is 1
    shape.modifyUVByOpenParam(info, u, v);
    EXPECT_NEAR(u, 0.4, 1e-12);
    EXPECT_NEAR(v, -1.0, 1e-12);  // 0.5 + 3 * (0 - 0.5)

    u = 0.6, v = 0.1;  // t = 4, period 2 sqrt 15 + 1
    shape.modifyUVByOpenParam(info, u, v);
    EXPECT_NEAR(u, 0.5 + 0.1 * (2.0 * std::sqrt(15.0) + 1.0), 1e-9);
    EXPECT_NEAR(v, -0.7, 1e-12);
}

TEST_F(HyperboloidTest, JacobianMatchesTheSurfaceOfTheClosedSheet)
{
    // At t = 2 on the upper sheet, u = 0: unit-shape position (sqrt 3, 0, 2).
    const double h = 1e-4;
    auto point = [&](double u, double v) {
        return shape.getHitcoordFromUV(info.texture_height, shape.size, u, v);
    };
    const double du_numeric = length(point(h, 0.1) - point(-h, 0.1)) / (2.0 * h);
    const double dv_numeric = length(point(0.0, 0.1 + h) - point(0.0, 0.1 - h)) / (2.0 * h);

    double du, dv;
    shape.getJacobian(info, Vector3(std::sqrt(3.0f), 0.0f, 2.0f), du, dv);
    EXPECT_NEAR(du, 2.0 * kPi * 20.0 * std::sqrt(3.0), 1e-3);
    EXPECT_NEAR(du, du_numeric, 1e-3 * du);
    EXPECT_NEAR(dv, dv_numeric, 1e-3 * dv);
}

TEST_F(HyperboloidTest, DistanceUsesItsOwnSizes)
{
    setShapeSize(shape, 10.0f, 10.0f, 0.0f);
    EXPECT_NEAR(shape.evaluateDistance(Vector3(20.0f, 0.0f, 5.0f)), 10.0, 1e-4);
}

}  // namespace
