// The record built from the default scene: texture 100 x 50 on a 200 x 100 composition, Transform
// defaults (rotations X -90, Z -90, centre position), so a = b = 100 / 2pi and the axis is y.

#include <gtest/gtest.h>

#include <cmath>

#include "e2e/SceneFiles.h"
#include "render/ConstructRenderInfo.h"
#include "support/BuiltRecord.h"

namespace {

constexpr double kRadius = 100.0 / 6.283185307179586;  // 15.9155
constexpr double kDistance = 200.0 * 50.0 / 36.0;     // default camera, 277.78

using Built = test_support::BuiltRecord;

TEST(ConstructRenderInfo, DefaultsGiveAnUprightCircularCylinderSeenByTheDefaultCamera)
{
    const auto session = e2e::openScene("default_camera.json");
    Built built(*session);
    const RenderInfo& info = built.info;
    EXPECT_DOUBLE_EQ(info.open_scale, 1.0);
    EXPECT_FALSE(info.inverted);
    EXPECT_NEAR(info.size.getX(), kRadius, 1e-4);
    EXPECT_NEAR(info.size.getY(), kRadius, 1e-4);
    EXPECT_EQ(info.size.getZ(), 0.0f);
    EXPECT_EQ(info.inv_size.getZ(), 0.0f);
    EXPECT_EQ(info.inv_size_sq.getZ(), 0.0f);
    // Local z (the axis) is composition y; local x points into the screen.
    EXPECT_NEAR(info.object_to_world.getElem(2, 1), 1.0f, 1e-6);
    EXPECT_NEAR(info.object_to_world.getElem(0, 2), 1.0f, 1e-6);
    EXPECT_NEAR(info.object_to_world.getElem(3, 0), 100.0f, 1e-4);
    EXPECT_NEAR(info.object_to_world.getElem(3, 1), 50.0f, 1e-4);
    EXPECT_NEAR(info.neg_focal, -kDistance, 1e-3);
    EXPECT_FLOAT_EQ(info.image_center[0], 100.0f);
    EXPECT_FLOAT_EQ(info.image_center[1], 50.0f);
    // The eye sits d in front of the axis, along local -x.
    EXPECT_NEAR(info.eye_x, -kDistance, 1e-2);
    EXPECT_NEAR(info.eye_y, 0.0, 1e-3);
    EXPECT_NEAR(info.eye_implicit, (kDistance / kRadius) * (kDistance / kRadius) - 1.0, 0.05);
    EXPECT_EQ(info.lights.size(), 0u);
    EXPECT_FALSE(info.depth_pass);
    EXPECT_DOUBLE_EQ(info.texture_width, 100.0);
    EXPECT_DOUBLE_EQ(info.texture_height, 50.0);
    EXPECT_FLOAT_EQ(info.emit, 1.0f);
    EXPECT_FLOAT_EQ(info.diffuse, 0.5f);
    EXPECT_DOUBLE_EQ(info.sharpness_inv, 0.5);
}

// Opening by K moves the axis so that the pivot (the front-most point) stays at z = -a.
TEST(ConstructRenderInfo, OpeningMovesTheAxisToKeepThePivot)
{
    const auto session = e2e::openScene("default_camera.json");
    session->set("Open Parameter", 0.5);  // K = tan(pi/4) + 1 = 2
    {
        Built built(*session);
        EXPECT_NEAR(built.info.open_scale, 2.0, 1e-9);
        EXPECT_NEAR(built.info.size.getX(), 2 * kRadius, 1e-4);
        EXPECT_NEAR(built.info.object_to_world.getElem(3, 2), kRadius, 1e-4);  // -a + 2a
    }
    session->set("Open Parameter", 1.0);
    EXPECT_DOUBLE_EQ(Built(*session).info.open_scale, 10000.0);
    // 1.5: tan(3pi/4) = -1, K = 2, mirrored: the axis moves to -a - 2a.
    session->set("Open Parameter", 1.5);
    session->set("Render Side", 2);
    Built inverted(*session);
    EXPECT_TRUE(inverted.info.inverted);
    EXPECT_NEAR(inverted.info.open_scale, 2.0, 1e-9);
    EXPECT_NEAR(inverted.info.object_to_world.getElem(3, 2), -3 * kRadius, 1e-3);
    EXPECT_NEAR(inverted.info.object_to_world.getElem(0, 2), -1.0f, 1e-6);  // local x mirrored
    EXPECT_EQ(inverted.info.render_side, 3);
}

TEST(ConstructRenderInfo, HyperboloidEllipseNegativeHeightAndTurns)
{
    const auto session = e2e::openScene("default_camera.json");
    session->set("Hyperboloid", 0.5);   // tan(pi/4) = 1: c = height
    session->set("Ellipse X/Y", 0.5);   // k = tan(3pi/8)
    session->set("Height Scale", -100);
    session->set("Interval", 25);
    session->set("Extension Side", 2);
    session->set("Extensions", 3);
    session->set("Slide Texture", 90);  // angles become turns
    session->set("Screw", -180);
    Built built(*session);
    const double k = std::tan(1.5 * 3.141592653589793 / 4);
    EXPECT_NEAR(built.info.size.getX(), k * kRadius, 1e-3);
    EXPECT_NEAR(built.info.size.getY(), kRadius / k, 1e-4);
    EXPECT_NEAR(built.info.size.getZ(), -50.0f, 1e-3);  // negative height: not guarded in size
    EXPECT_EQ(built.info.inv_size.getZ(), 0.0f);          // but its reciprocal is
    EXPECT_DOUBLE_EQ(built.info.extension.interval, 0.5);
    EXPECT_EQ(built.info.extension.head_extensions, 0);
    EXPECT_EQ(built.info.extension.tail_extensions, 3);
    EXPECT_DOUBLE_EQ(built.info.slide, 0.25);
    EXPECT_NEAR(built.info.extension.screw, -0.5, 1e-15);
}

TEST(ConstructRenderInfo, CameraDepthOfFieldNeedsTheCompositionCamera)
{
    const auto session = e2e::openScene("camera.json");
    session->set("Depth Of Field", 3);
    session->set("Boost DOF Blur", 200);
    {
        Built built(*session);
        EXPECT_TRUE(built.info.depth_pass);
        EXPECT_NEAR(built.info.neg_focal, -277.7777778, 1e-3);
        EXPECT_NEAR(built.info.focus_distance, 138.8888889, 1e-4);
        // (zoom / focus) (aperture / 10) (blur / 100) boost = 2 * 2.53 * 1 * 2
        EXPECT_NEAR(built.info.dof_blur, 10.12, 1e-4);
    }
    session->set("Depth Of Field", 2);  // follows the camera, whose own switch is off
    EXPECT_FALSE(Built(*session).info.depth_pass);
    session->set("Depth Of Field", 3);
    session->set("Use Composition Camera", 0);
    Built ignored(*session);
    EXPECT_FALSE(ignored.info.depth_pass);
    EXPECT_DOUBLE_EQ(ignored.info.dof_blur, 1.0);
}

TEST(ConstructRenderInfo, OnlyActiveLightLayersAreTaken)
{
    const auto session = e2e::openScene("lights.json");
    Built built(*session, 0.5);
    ASSERT_EQ(built.info.lights.size(), 1u);
    const vLight& light = *built.info.lights[0];
    EXPECT_EQ(light.type, 3);  // ambient
    EXPECT_DOUBLE_EQ(light.intensity, 1.0);
    EXPECT_FLOAT_EQ(light.color[1], 1.0f);
    EXPECT_NEAR(light.cos_half_cone, std::cos(3.141592653589793 / 4), 1e-12);
    EXPECT_DOUBLE_EQ(light.feather, 0.5);
    EXPECT_FALSE(light.casts_shadows);
    Built later(*session, 1.5);  // "Later" now shines as well
    EXPECT_EQ(later.info.lights.size(), 2u);
}

TEST(ConstructRenderInfo, DepthCompositeTakesFogColourWithoutAlpha)
{
    const auto session = e2e::openScene("default_camera.json");
    session->set("Mode", 2);
    session->set("Start depth", 100);
    session->set("End depth", 50);
    session->host().set_param("Fog Color", host::ParamValue::color(51, 102, 255, 0));
    Built built(*session);
    EXPECT_EQ(built.info.depth_composite.mode, 2);
    EXPECT_DOUBLE_EQ(built.info.depth_composite.length, -50.0);
    EXPECT_FLOAT_EQ(built.info.depth_composite.color.alpha, 1.0f);
    EXPECT_FLOAT_EQ(built.info.depth_composite.color.red, 0.2f);
    EXPECT_FLOAT_EQ(built.info.depth_composite.color.blue, 1.0f);
}

TEST(ModifyAspectedCoordinate, ScalesXAboutTheFrameMiddle)
{
    A_Matrix4 m = {};
    for (int i = 0; i < 4; ++i)
        for (int j = 0; j < 4; ++j)
            m.mat[i][j] = 1 + i * 4 + j;
    m.mat[3][0] = 60;
    ModifyAspectedCoordinate(A_Ratio{2, 1}, 100, m);
    EXPECT_DOUBLE_EQ(m.mat[0][0], 2.0);
    EXPECT_DOUBLE_EQ(m.mat[1][0], 10.0);
    EXPECT_DOUBLE_EQ(m.mat[2][0], 18.0);
    EXPECT_DOUBLE_EQ(m.mat[3][0], 70.0);  // 50 + 2 * (60 - 50)
    EXPECT_DOUBLE_EQ(m.mat[0][1], 2.0);   // nothing else changes
    EXPECT_DOUBLE_EQ(m.mat[3][1], 14.0);
}

}  // namespace
