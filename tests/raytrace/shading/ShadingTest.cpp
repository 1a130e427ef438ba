// A ray hit becomes a colour: texel and emission, lights with shadows and transmission,
// highlights, the reflection map, the depth composite and the pivot line.

#include <gtest/gtest.h>

#include <cmath>
#include <cstdint>
#include <cstring>
#include <vector>

#include "raytrace/shading/ShadingScene.h"

namespace {

using namespace shading_test;

// The camera looks along +y at the near wall; the hit (0, -100, 0) has u = 0.25, v = 0.5 and
// the normal (0, -1, 0) facing the camera.
const Vector3 kHit(0.0f, -kRadius, 0.0f);
const Ray kHeadOn = rayThrough(kHit, Vector3(0, 1, 0), 900.0f);

// A textured scene with emission off, so each test sees only the term it switches on.
class ShadingTest : public ::testing::Test {
protected:
    ShadingTest()
    {
        scene.setUniformTexture<PF_Pixel>(kTexel);
        scene.info().emit = 0.0f;
    }

    PF_PixelFloat headOn() { return shade<PF_Pixel>(scene, kHeadOn, 900.0); }

    Scene scene;
};

// Head on, with the light (when a point light) at (0, -500, 0): light, hit and camera on one
// line, so Lambert is 1 and the mirrored light runs straight at the camera.
TEST(Shading, EmissionAmbientAndFrontLightAddUp)
{
    const struct {
        const char* name;
        void (*setup)(Scene&);
        PF_PixelFloat expected;
    } cases[] = {
        {"no lights: texel x emit", [](Scene& s) { s.info().emit = 1.0f; }, pixel(1, 0.8f, 0.4f, 0.2f)},
        {"emit not clamped", [](Scene& s) { s.info().emit = 2.0f; }, pixel(1, 1.6f, 0.8f, 0.4f)},
        // Ka 0.6 x intensity 0.5 x texel x light colour (1, 0.5, 0.25): no shadow, highlight
        // nor falloff for an ambient light.
        {"ambient", [](Scene& s) {
             s.info().ambient = 0.6f;
             s.info().diffuse = 1.0f;
             s.info().specular = 1.0f;
             s.info().self_shadow = true;
             s.info().falloff_mode = 3;
             s.info().falloff_radius = 1.0;
             s.addLight(makeLight(kAmbient, Vector3(0, 5000, 0), 0.5f, pixel(1, 1, 0.5f, 0.25f)));
         }, pixel(1, 0.24f, 0.06f, 0.015f)},
        {"diffuse and head-on highlight", [](Scene& s) {
             s.info().diffuse = 0.5f;
             s.info().specular = 0.3f;
             s.info().shininess = 8.0f;
             s.info().self_shadow = true;
             s.addLight(makeLight(kPoint, Vector3(0, -500, 0)));
         }, pixel(1, 0.5f * 0.8f + 0.3f, 0.5f * 0.4f + 0.3f, 0.5f * 0.2f + 0.3f)},
        // Intensity 2 at twice the clamp radius (power 0.25): 0.5 x texel x (0.5, 1, 0).
        {"intensity, colour and falloff multiply", [](Scene& s) {
             s.info().diffuse = 1.0f;
             s.info().falloff_mode = 3;
             s.info().falloff_radius = 200.0;
             s.addLight(makeLight(kPoint, Vector3(0, -500, 0), 2.0f, pixel(1, 0.5f, 1, 0)));
         }, pixel(1, 0.2f, 0.2f, 0.0f)},
        {"lights add up with emission", [](Scene& s) {
             s.info().emit = 0.5f;
             s.info().ambient = 0.2f;
             s.info().diffuse = 0.5f;
             s.addLight(makeLight(kAmbient, Vector3(0, 0, 0)));
             s.addLight(makeLight(kPoint, Vector3(0, -500, 0)));
         }, pixel(1, 1.2f * 0.8f, 1.2f * 0.4f, 1.2f * 0.2f)},
    };
    // Seen from inside, the reversed normal points across the shape at the opaque far wall:
    // the ambient light still shows.
    const Ray from_inside = rayThrough(kHit, Vector3(0.6f, -0.8f, 0), 100.0f);
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        Scene scene;
        scene.setUniformTexture<PF_Pixel>(kTexel);
        scene.info().emit = 0.0f;
        c.setup(scene);
        expectColour(shade<PF_Pixel>(scene, kHeadOn, 900.0), c.expected);
        if (&c == &cases[2])
            expectColour(shade<PF_Pixel>(scene, from_inside, 100.0), c.expected);
    }
}

// Lambert 1 x transmission 0.5 x diffuse 0.5 = 0.25 x texel when let through. On its way the
// light crosses the far wall: an opaque texel at transmission 0.5 passes 0.5 x texel =
// (0.4, 0.2, 0.1) at full shadow darkness; darkness 0.5 blends that tint half way to white.
TEST_F(ShadingTest, TransmissionAndSelfShadowFilterABackLight)
{
    scene.info().diffuse = 0.5f;
    scene.info().specular = 1.0f;  // the mirrored back light points away: no highlight
    scene.addLight(makeLight(kPoint, Vector3(0, 500, 0)));
    const struct {
        const char* name;
        float transmission;
        bool self_shadow, casts_shadows;
        float darkness;
        PF_PixelFloat tint;
    } cases[] = {
        {"no transmission", 0.0f, false, true, 1.0f, pixel(1, 0, 0, 0)},
        {"transmission", 0.5f, false, true, 1.0f, pixel(1, 0.25f, 0.25f, 0.25f)},
        {"through the far wall", 0.5f, true, true, 1.0f, pixel(1, 0.25f * 0.4f, 0.25f * 0.2f, 0.25f * 0.1f)},
        {"half darkness", 0.5f, true, true, 0.5f, pixel(1, 0.25f * 0.7f, 0.25f * 0.6f, 0.25f * 0.55f)},
        {"casts no shadows", 0.5f, true, false, 1.0f, pixel(1, 0.25f, 0.25f, 0.25f)},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        scene.info().light_transmission = c.transmission;
        scene.info().self_shadow = c.self_shadow;
        scene.info().lights[0]->casts_shadows = c.casts_shadows;
        scene.info().lights[0]->shadow_darkness = c.darkness;
        expectPixel(headOn(), 1.0f, 0.8f * c.tint.red, 0.4f * c.tint.green, 0.2f * c.tint.blue);
    }
}

// Light at 45 degrees: Lambert cos 45 stays inside, the mirrored light lies 45 degrees from the
// camera; the exponent sharpens the highlight; metal tints it by the texel.
TEST_F(ShadingTest, HighlightSharpensWithTheExponentTakesMetalTintAndShowsThroughTheSurface)
{
    scene.info().specular = 1.0f;
    scene.addLight(makeLight(kPoint, Vector3(-100, -200, 0)));
    const float cos45 = std::sqrt(0.5f);
    const struct {
        float shininess, metal;
        PF_PixelFloat tint;
        float k;
    } cases[] = {
        {2.0f, 0.0f, pixel(1, 1, 1, 1), cos45 * 0.5f},
        {4.0f, 0.0f, pixel(1, 1, 1, 1), cos45 * 0.25f},
        {4.0f, 1.0f, pixel(1, 0.8f, 0.4f, 0.2f), cos45 * 0.25f},
        {4.0f, 0.5f, pixel(1, 0.9f, 0.7f, 0.6f), cos45 * 0.25f},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(::testing::Message() << "shininess " << c.shininess << " metal " << c.metal);
        scene.info().shininess = c.shininess;
        scene.info().metal = c.metal;
        expectPixel(headOn(), 1.0f, c.tint.red * c.k, c.tint.green * c.k, c.tint.blue * c.k);
    }

    // Seen at (0.6, 0.8), lit from behind at a grazing (-0.96, -0.28): Lambert 0.28 through
    // the surface; the mirrored light (-0.96, 0.28) meets the view at -0.352.
    scene.info().lights[0]->to_object = Matrix4::translation(Vector3(96, -72, 0));
    scene.info().shininess = 1.0f;
    scene.info().metal = 0.0f;
    const Ray oblique = rayThrough(kHit, Vector3(0.6f, 0.8f, 0), 100.0f);
    expectPixel(shade<PF_Pixel>(scene, oblique, 100.0), 1.0f, 0.0f, 0.0f, 0.0f);
    scene.info().light_transmission = 1.0f;
    const float k = 0.28f * 0.352f;
    expectPixel(shade<PF_Pixel>(scene, oblique, 100.0), 1.0f, k, k, k);
}

// The per-frame cutoff skips std::pow only where it returns +0, bit for bit, and only for the
// exponent it was made for.
TEST(HighlightPower, AgreesWithPowBitForBit)
{
    const float nan = std::nanf(""), inf = HUGE_VALF;
    const float exponents[] = {0.0f, -2.0f, 1.0f, 31.8f, 3183.0f, 1e6f, 1.6e16f, inf, nan};
    auto bits = [](double d) {
        std::uint64_t b;
        std::memcpy(&b, &d, sizeof b);
        return b;
    };
    for (float n : exponents) {
        const HighlightCutoff cutoff = highlightCutoffFor(n);
        std::vector<double> xs = {1e-300, 1e-10, 0.5, 0.999, 1.0, 1.0000001};
        if (cutoff.zero_up_to > 0.0) {
            xs.push_back(cutoff.zero_up_to);
            xs.push_back(std::nextafter(cutoff.zero_up_to, 2.0));
        }
        for (double x : xs) {
            SCOPED_TRACE(::testing::Message() << "x " << x << " n " << n);
            EXPECT_EQ(bits(highlightPower(x, n, cutoff)), bits(std::pow(x, n)));
            EXPECT_EQ(bits(highlightPower(x, n * 0.5f, cutoff)), bits(std::pow(x, n * 0.5f)));
        }
    }
    EXPECT_GT(highlightCutoffFor(3183.0f).zero_up_to, 0.7) << "a sharp highlight skips most hits";
}

TEST_F(ShadingTest, TransparentTexelSkipsLightingButNotTheDepthComposite)
{
    scene.setUniformTexture<PF_Pixel>(pixel(0, 1, 1, 1));
    scene.info().emit = 1.0f;
    scene.info().diffuse = 1.0f;
    scene.addLight(makeLight(kPoint, Vector3(0, -500, 0)));
    expectPixel(headOn(), 0.0f, 0.0f, 0.0f, 0.0f);

    // Fog at full strength still colours it, without giving it coverage.
    scene.info().depth_composite = {2, 100.0, 0.0, pixel(1, 0.1f, 0.2f, 0.3f)};  // mode, length, start
    expectPixel(headOn(), 0.0f, 0.1f, 0.2f, 0.3f);
}

TEST_F(ShadingTest, PartialCoverageAndFadeOutKeepTheStraightColour)
{
    scene.info().emit = 1.0f;
    // Fade out over the ray's first 1800: half at 900.
    scene.info().depth_composite = {3, 1800.0, 0.0, pixel(1, 0, 0, 0)};
    expectPixel(headOn(), 0.5f, 0.8f, 0.4f, 0.2f);

    scene.info().depth_composite.mode = 1;
    scene.setUniformTexture<PF_PixelFloat>(pixel(0.5f, 0.8f, 0.4f, 0.2f));
    expectPixel(shade<PF_PixelFloat>(scene, kHeadOn, 900.0), 0.5f, 0.8f, 0.4f, 0.2f);
}

// No texture layer: emission 1 shows the (u, v) test colour, red u and green v, inside the
// texture only; copies are remapped with their screw and the colour is lit like a texel.
// The ray `above` hits the near wall at z = 150: v = 1.25, above the texture.
TEST(UvTestColour, ShowsUAndVInsideTheTextureAndItsCopies)
{
    const Ray above = rayThrough(Vector3(0, -kRadius, 150), Vector3(0, 1, 0), 900.0f);
    Scene scene;
    expectPixel(shade<PF_Pixel>(scene, kHeadOn, 900.0), 1.0f, 0.25f, 0.5f, 0.0f);
    expectPixel(shade<PF_Pixel>(scene, above, 900.0), 0.0f, 0.0f, 0.0f, 0.0f);  // outside

    // Copy 1 above: v 1.25 -> 0.25, u 0.25 + half a turn -> 0.75. The pivot line follows the
    // remapped u.
    scene.info().extension.tail_extensions = 1;
    scene.info().extension.screw = 0.5;
    expectPixel(shade<PF_Pixel>(scene, above, 900.0), 1.0f, 0.75f, 0.25f, 0.0f);
    scene.info().show_pivot = true;
    scene.info().fixed_u = 0.75;
    expectPixel(shade<PF_Pixel>(scene, above, 900.0), 1.0f, 0.0f, 1.0f, 0.0f, 0.0f);
    scene.info().fixed_u = 0.25;
    expectPixel(shade<PF_Pixel>(scene, above, 900.0), 1.0f, 0.75f, 0.25f, 0.0f);

    scene.info().show_pivot = false;
    scene.info().emit = 0.0f;
    scene.info().diffuse = 0.5f;
    scene.addLight(makeLight(kPoint, Vector3(0, -500, 0)));
    expectPixel(shade<PF_Pixel>(scene, kHeadOn, 900.0), 1.0f, 0.125f, 0.25f, 0.0f);
}

// Under fog over everything, which the line must not take.
TEST_F(ShadingTest, PivotLineReplacesTheColourWithOpaqueGreenAfterTheFogOnlyOnTheLine)
{
    scene.info().emit = 1.0f;
    scene.info().depth_composite = {2, 1.0, 0.0, pixel(1, 0.5f, 0.5f, 0.5f)};  // mode, length, start
    const Ray above = rayThrough(Vector3(0, -kRadius, 150), Vector3(0, 1, 0), 900.0f);
    const struct {
        const char* name;
        double fixed_u;
        bool show;
        const Ray& ray;
        PF_PixelFloat expected;
        float tolerance;
    } cases[] = {
        {"on the line", 0.2505, true, kHeadOn, pixel(1, 0, 1, 0), 0.0f},
        {"two thousandths wide", 0.252, true, kHeadOn, pixel(1, 0.5f, 0.5f, 0.5f), 1e-5f},
        {"switched off", 0.25, false, kHeadOn, pixel(1, 0.5f, 0.5f, 0.5f), 1e-5f},
        {"outside the texture", 0.25, true, above, pixel(0, 0.5f, 0.5f, 0.5f), 1e-5f},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        scene.info().fixed_u = c.fixed_u;
        scene.info().show_pivot = c.show;
        expectColour(shade<PF_Pixel>(scene, c.ray, 900.0), c.expected, c.tolerance);
    }
}

} // namespace
