// Direction and relative power of a light at a surface point: distance falloff and spot cone.

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "raytrace/Lights.h"
#include "raytrace/shading/ShadingScene.h"

namespace {

using namespace shading_test;

constexpr int kFalloffNone = 1;
constexpr int kFalloffSmooth = 2;
constexpr int kFalloffInverseSquareClamped = 3;

class LightPowerTest : public ::testing::Test {
protected:
    // Power of `light` at `point`; the direction goes to `direction`.
    double powerAt(const vLight& light, const Vector3& point)
    {
        double power = -1.0;
        GetLightPower(scene.info(), light, Vector4(point, 1.0f), power, direction);
        return power;
    }

    void setFalloff(int mode, double radius, double distance)
    {
        scene.info().falloff_mode = mode;
        scene.info().falloff_radius = radius;
        scene.info().falloff_distance = distance;
    }

    void expectDirection(float x, float y, float z)
    {
        EXPECT_NEAR(direction.getX(), x, 1e-6);
        EXPECT_NEAR(direction.getY(), y, 1e-6);
        EXPECT_NEAR(direction.getZ(), z, 1e-6);
    }

    Scene scene;
    Vector3 direction{9.0f, 9.0f, 9.0f};
};

// Point light at the origin; power at a distance along one axis for each falloff mode.
struct FalloffCase {
    int mode;
    double radius, distance;
    Vector3 point;
    double expected;
};

TEST_F(LightPowerTest, FalloffAtItsLandmarks)
{
    // Smooth (radius 100, distance 200): full power up to the radius, half way at
    // radius + distance / 2, none from radius + distance on; at a quarter (150):
    // 1 - 0.25^2 * (3 - 0.5) = 0.84375. Over zero distance: a step at the radius (0 / 0 on it).
    const FalloffCase cases[] = {
        {kFalloffNone, 100, 200, Vector3(1e5f, 0, 0), 1.0},
        {kFalloffSmooth, 100, 200, Vector3(100, 0, 0), 1.0},
        {kFalloffSmooth, 100, 200, Vector3(150, 0, 0), 0.84375},
        {kFalloffSmooth, 100, 200, Vector3(200, 0, 0), 0.5},
        {kFalloffSmooth, 100, 200, Vector3(1000, 0, 0), 0.0},
        {kFalloffSmooth, 100, 0, Vector3(100, 0, 0), 1.0},
        {kFalloffSmooth, 100, 0, Vector3(101, 0, 0), 0.0},
        {kFalloffInverseSquareClamped, 100, 1, Vector3(0, 100, 0), 1.0},
        {kFalloffInverseSquareClamped, 100, 1, Vector3(0, 200, 0), 0.25},
        {kFalloffInverseSquareClamped, 100, 1, Vector3(0, 400, 0), 0.0625},
    };
    const vLight light = makeLight(kPoint, Vector3(0, 0, 0));
    for (const FalloffCase& c : cases) {
        setFalloff(c.mode, c.radius, c.distance);
        EXPECT_DOUBLE_EQ(powerAt(light, c.point), c.expected)
            << "mode " << c.mode << " distance " << c.distance << " at " << length(c.point);
    }
}

TEST_F(LightPowerTest, InverseSquareClampedLetsANaNRadiusThrough)
{
    const vLight light = makeLight(kPoint, Vector3(0, 0, 0));
    setFalloff(kFalloffInverseSquareClamped, std::numeric_limits<double>::quiet_NaN(), 1.0);
    EXPECT_TRUE(std::isnan(powerAt(light, Vector3(0, 200, 0))));
}

// A point light's direction runs from the light to the point, zero on the light itself, where
// the power stays finite. A parallel light (axis stored with length 2 along -y) shines along its
// unit axis with falloff from its position; ambient lights ignore falloff and have no
// direction; an unknown type gives power one and leaves the direction alone.
TEST_F(LightPowerTest, DirectionAndFalloffOfEachLightType)
{
    vLight parallel = makeLight(kParallel, Vector3(0, 0, 0));
    parallel.to_object = Matrix4(Vector4(1, 0, 0, 0), Vector4(0, 0, 1, 0), Vector4(0, -2, 0, 0),
                                 Vector4(0, 0, 0, 1));
    const struct {
        const char* name;
        vLight light;
        int falloff;
        Vector3 point;
        double power;
        Vector3 direction;
    } cases[] = {
        {"point, above", makeLight(kPoint, Vector3(10, 20, 30)), kFalloffNone, Vector3(10, 20, 230), 1.0,
         Vector3(0, 0, 1)},
        {"point, aside", makeLight(kPoint, Vector3(10, 20, 30)), kFalloffNone, Vector3(-290, 20, 30), 1.0,
         Vector3(-1, 0, 0)},
        {"point, on it", makeLight(kPoint, Vector3(10, 20, 30)), kFalloffInverseSquareClamped,
         Vector3(10, 20, 30), 1.0, Vector3(0, 0, 0)},
        {"parallel", parallel, kFalloffInverseSquareClamped, Vector3(200, 0, 0), 0.25, Vector3(0, -1, 0)},
        {"ambient", makeLight(kAmbient, Vector3(0, 0, 0)), kFalloffInverseSquareClamped, Vector3(0, 1000, 0),
         1.0, Vector3(0, 0, 0)},
        {"unknown type", makeLight(7, Vector3(0, 0, 0)), kFalloffInverseSquareClamped, Vector3(0, 1000, 0),
         1.0, Vector3(9, 9, 9)},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        setFalloff(c.falloff, 100.0, 1.0);
        direction = Vector3(9, 9, 9);
        EXPECT_DOUBLE_EQ(powerAt(c.light, c.point), c.power);
        expectDirection(c.direction.getX(), c.direction.getY(), c.direction.getZ());
    }
}

// Spot at the origin pointing along +z (the translation matrix keeps the z axis), its cone
// of cos 0.6. Without feather the edge is hard; feather 0.5 of (1 - 0.6) ramps linearly in the
// cosine from 0.6 (0) to 0.8 (1); an axis stored with length 0.5 halves every cosine; the cone
// multiplies the distance falloff.
struct SpotCase {
    const char* name;
    double cos_half_cone, feather;
    int falloff;
    float axis_length;
    Vector3 point;
    double expected, tolerance;
};

TEST_F(LightPowerTest, SpotConeWithAndWithoutFeather)
{
    const float ramp_middle = std::sqrt(0.51f);  // cos 0.7
    const SpotCase cases[] = {
        {"inside, cos 0.8", 0.6, 0.0, kFalloffNone, 1.0f, Vector3(60, 0, 80), 1.0, 0.0},
        {"just outside, cos 0.589", 0.6, 0.0, kFalloffNone, 1.0f, Vector3(81, 0, 59), 0.0, 0.0},
        // (80, 0, 60) / 100 has a z of exactly 0.6f: (cos - cos_half_cone) / 0 is 0 / 0.
        {"on the edge", double(0.6f), 0.0, kFalloffNone, 1.0f, Vector3(80, 0, 60), 0.0, 0.0},
        {"feathered axis", 0.6, 0.5, kFalloffNone, 1.0f, Vector3(0, 0, 100), 1.0, 0.0},
        {"feather middle", 0.6, 0.5, kFalloffNone, 1.0f, Vector3(ramp_middle * 100.0f, 0, 70), 0.5, 1e-5},
        {"feathered side", 0.6, 0.5, kFalloffNone, 1.0f, Vector3(100, 0, 0), 0.0, 0.0},
        {"short axis", 0.6, 0.0, kFalloffNone, 0.5f, Vector3(0, 0, 100), 0.0, 0.0},
        {"falloff on the axis", 0.6, 0.5, kFalloffInverseSquareClamped, 1.0f, Vector3(0, 0, 200), 0.25, 1e-12},
        {"falloff times feather", 0.6, 0.5, kFalloffInverseSquareClamped, 1.0f,
         Vector3(ramp_middle * 200.0f, 0, 140), 0.125, 1e-5},
    };
    for (const SpotCase& c : cases) {
        SCOPED_TRACE(c.name);
        vLight light = makeLight(kSpot, Vector3(0, 0, 0));
        light.cos_half_cone = c.cos_half_cone;
        light.feather = c.feather;
        light.to_object.setCol(2, Vector4(0, 0, c.axis_length, 0));
        setFalloff(c.falloff, 100.0, 1.0);
        EXPECT_NEAR(powerAt(light, c.point), c.expected, c.tolerance);
    }
    expectDirection(ramp_middle, 0.0f, 0.7f);  // towards the last point, of length 200
}

} // namespace
