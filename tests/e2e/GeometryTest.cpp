// Where the surface lands in the frame. The default scene wraps a 100 x 50 texture (left half
// red, right half blue) around an upright cylinder at the centre of a 200 x 100 composition:
// radius a = 100 / 2pi = 15.92 px, height 50 px, seen by the default camera from
// d = 200 * 50 / 36 = 277.8 px in front of the layer plane. The front-most point of the
// surface is the pivot (texture u = 0.5), on the axis of the view, so the seam between the red
// and the blue half runs down the middle of the frame.

#include <gtest/gtest.h>

#include "e2e/ImageCompare.h"
#include "e2e/SceneFiles.h"

namespace {

constexpr int kCentreX = 100;
constexpr int kCentreY = 50;

bool covered(const PF_PixelFloat& p) { return p.alpha > 0.999f; }
bool empty(const PF_PixelFloat& p) { return p.alpha == 0.0f; }
bool red(const PF_PixelFloat& p) { return covered(p) && p.red > 0.9f && p.blue < 0.1f; }
bool blue(const PF_PixelFloat& p) { return covered(p) && p.blue > 0.9f && p.red < 0.1f; }

TEST(DefaultCamera, SilhouetteCoversTheProjectedCylinderOnly)
{
    const auto session = e2e::openScene("default_camera.json");
    const host::RenderResult frame = e2e::renderScene(*session);
    ASSERT_EQ(frame.err, PF_Err_NONE);
    ASSERT_TRUE(frame.rendered);
    // Tangent rays from the eye: half width a * d / sqrt(d^2 - a^2) = 15.94 px.
    for (int x = kCentreX - 14; x <= kCentreX + 13; ++x)
        EXPECT_TRUE(covered(e2e::pixelAt(frame, x, kCentreY))) << x;
    for (int x : {0, kCentreX - 18, kCentreX + 17, 199})
        EXPECT_TRUE(empty(e2e::pixelAt(frame, x, kCentreY))) << x;
    // Height 50: the near rim projects to 25 * d / (d - a) = 26.5 px from the centre line; the
    // texture's filtered border softens it by up to two pixels.
    for (int y = kCentreY - 24; y <= kCentreY + 23; ++y)
        EXPECT_TRUE(covered(e2e::pixelAt(frame, kCentreX, y))) << y;
    for (int y : {0, kCentreY - 29, kCentreY + 29, 99})
        EXPECT_TRUE(empty(e2e::pixelAt(frame, kCentreX, y))) << y;
}

// Opening keeps the pivot (the front-most point, texture u 0.5) where it is: the seam stays in
// the middle of the frame whether the surface is closed, half open, flat or inside out.
TEST(OpenParameter, KeepsThePivotInPlace)
{
    const auto session = e2e::openScene("default_camera.json");
    for (double open : {0.0, 0.5, 1.0, 1.5}) {
        session->set("Open Parameter", open);
        const host::RenderResult frame = e2e::renderScene(*session);
        ASSERT_EQ(frame.err, PF_Err_NONE) << open;
        EXPECT_TRUE(red(e2e::pixelAt(frame, kCentreX - 3, kCentreY))) << open;
        EXPECT_TRUE(blue(e2e::pixelAt(frame, kCentreX + 2, kCentreY))) << open;
        if (open == 0.0) {  // the closed surface: the halves hold away from the centre line too
            EXPECT_TRUE(red(e2e::pixelAt(frame, kCentreX - 10, kCentreY + 20)));
            EXPECT_TRUE(blue(e2e::pixelAt(frame, kCentreX + 10, kCentreY - 20)));
        }
    }
}

// Exactly 1 unrolls the texture into a flat sheet through the pivot, 100 px wide, 15.9 px in
// front of the layer plane: half width 50 * d / (d - a) = 53 px instead of 16.
TEST(OpenParameter, OneUnrollsTheTextureFlat)
{
    const auto session = e2e::openScene("default_camera.json");
    session->set("Open Parameter", 1.0);
    const host::RenderResult flat = e2e::renderScene(*session);
    ASSERT_TRUE(flat.rendered);
    EXPECT_TRUE(red(e2e::pixelAt(flat, kCentreX - 50, kCentreY)));
    EXPECT_TRUE(blue(e2e::pixelAt(flat, kCentreX + 50, kCentreY)));
    EXPECT_TRUE(empty(e2e::pixelAt(flat, kCentreX - 57, kCentreY)));
    EXPECT_TRUE(empty(e2e::pixelAt(flat, kCentreX + 56, kCentreY)));
}

// A control layer whose transform equals the default Transform parameters (rotations X -90 and
// Z -90 about the composition centre) places the surface exactly where they do; moving and
// scaling it matches Position XY / Z and Radius / Height Scale.
TEST(ControlLayer, PlacesTheSurfaceLikeTheTransformParameters)
{
    const auto by_parameters = e2e::openScene("default_camera.json");
    const host::RenderResult expected = e2e::renderScene(*by_parameters);
    for (bool handle_in_params : {true, false}) {
        host::HostOptions options;
        options.layer_handle_in_params = handle_in_params;
        const auto by_layer = e2e::openScene("control_layer.json", options);
        const host::RenderResult frame = e2e::renderScene(*by_layer);
        ASSERT_EQ(frame.err, PF_Err_NONE);
        EXPECT_EQ(e2e::compareFrames(frame, expected, 2e-3f), "") << handle_in_params;
    }
}

// The trimmed scene starts its control layer only at 1 s: at time 0 the layer brings no
// pixels, yet it is still the chosen layer and still places the surface.
TEST(ControlLayer, MovedAndScaledMatchesPositionAndScaleParameters)
{
    const auto by_parameters = e2e::openScene("default_camera.json");
    by_parameters->set_text("Position XY", "120,45");
    by_parameters->set("Position Z", 30);
    by_parameters->set("Radius Scale", 150);
    by_parameters->set("Height Scale", 150);
    const host::RenderResult expected = e2e::renderScene(*by_parameters);
    for (const char* scene : {"control_layer_moved.json", "control_layer_trimmed.json"}) {
        const auto by_layer = e2e::openScene(scene);
        const host::RenderResult frame = e2e::renderScene(*by_layer);
        ASSERT_TRUE(frame.rendered) << scene;
        EXPECT_EQ(e2e::compareFrames(frame, expected, 2e-3f), "") << scene;
        // And it did move: the seam follows the layer to x = 120.
        EXPECT_TRUE(red(e2e::pixelAt(frame, 117, 45))) << scene;
        EXPECT_TRUE(blue(e2e::pixelAt(frame, 122, 45))) << scene;
    }
}

}  // namespace
