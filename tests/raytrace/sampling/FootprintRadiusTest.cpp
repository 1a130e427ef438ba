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

// Head on at the zoom distance the footprint covers about one texture pixel; the radii grow
// with the distance (perspective only), with 1 / cos of the tilt in the tilted direction only,
// with the sharpness, and by K in u alone for an opened surface (whose length per unit v grows
// by K as well); edge on or far away they stop at 128 pixels.
TEST_F(FootprintRadiusTest, RadiiFollowDistanceTiltSharpnessAndOpeningUpToTheCap)
{
    const Vector3 head_on(-1.0f, 0.0f, 0.0f);
    const struct {
        const char* name;
        Vector3 direction;
        double t;
        bool perspective;
        double sharpness_inv, open_scale, xr, yr, tolerance;
    } cases[] = {
        {"head on", head_on, 1000.0, true, 1.0, 1.0, head_on_x, head_on_y, 1e-6},
        {"five times as far", head_on, 5000.0, true, 1.0, 1.0, 5 * head_on_x, 5 * head_on_y, 1e-5},
        {"orthographic", head_on, 5000.0, false, 1.0, 1.0, head_on_x, head_on_y, 1e-6},
        {"tilted 60 along the axis", Vector3(-0.5f, 0.0f, -0.8660254f), 1000.0, true, 1.0, 1.0,
         head_on_x, 2.0, 1e-5},
        {"tilted 60 around the axis", Vector3(-0.5f, -0.8660254f, 0.0f), 1000.0, true, 1.0, 1.0,
         2.0 * head_on_x, 1.0, 1e-5},
        {"grazing", Vector3(0.0f, -0.8660254f, -0.5f), 1000.0, true, 1.0, 1.0, 128.0, 128.0, 0.0},
        {"far away", head_on, 1.0e6, true, 1.0, 1.0, 128.0, 128.0, 0.0},
        {"sharpness 0.5", head_on, 1000.0, true, 0.5, 1.0, 0.5 * head_on_x, 0.5 * head_on_y, 1e-6},
        {"sharpness 0", head_on, 1000.0, true, 0.0, 1.0, 0.0, 0.0, 0.0},
        {"opened", head_on, 1000.0, true, 1.0, 2.0, 2.0 * head_on_x, head_on_y, 1e-6},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        info.perspective = c.perspective;
        info.sharpness_inv = c.sharpness_inv;
        info.open_scale = c.open_scale;
        double xr, yr;
        radiiAt(c.direction, c.t, xr, yr);
        EXPECT_NEAR(xr, c.xr, c.tolerance);
        EXPECT_NEAR(yr, c.yr, c.tolerance);
    }
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
