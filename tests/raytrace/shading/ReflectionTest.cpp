// The reflection map: latitude-longitude lookup of the mirrored view direction, rim gain,
// metal tint and occlusion by the shape's own texture; and the three pixel depths agreeing.

#include <gtest/gtest.h>

#include <cmath>

#include "raytrace/shading/ShadingScene.h"

namespace {

using namespace shading_test;

const Vector3 kHit(0.0f, -kRadius, 0.0f);

// 10 x 4 map whose pixel (x, y) reads (x / 10, 1 - x / 10, y / 4): each pixel tells where it is.
PF_PixelFloat mapPixel(int x, int y)
{
    return pixel(1.0f, x / 10.0f, 1.0f - x / 10.0f, y / 4.0f);
}

// Only the reflection shows (no emission, no lights), sampled at a point (sharpness 1). The
// shape's local x stays composition x, local y becomes composition z and local z becomes -y,
// so a view ray in the local xy plane mirrors into the composition's horizon (map row 2).
class ReflectionTest : public ::testing::Test {
protected:
    ReflectionTest()
    {
        RenderInfo& info = scene.info();
        info.object_to_world = Matrix4(Vector4(1, 0, 0, 0), Vector4(0, 0, 1, 0),
                                       Vector4(0, -1, 0, 0), Vector4(0, 0, 0, 1));
        info.emit = 0.0f;
        info.sharpness_inv = 0.0;
        info.reflection_intensity = 0.5f;
        scene.setUniformTexture<PF_PixelFloat>(kTexel);
        scene.setReflectionMap<PF_PixelFloat>(10, 4, mapPixel);
    }

    // From outside at 37 degrees off the normal: the mirrored ray (0.6, -0.8, 0) becomes
    // (0.6, 0, -0.8) in the composition; atan2(-0.8, 0.6) / 2pi - 0.25 wraps to 0.6024, which
    // on the 10-pixel-wide map is pixel 6; latitude 0.5 of 4 rows is row 2.
    PF_PixelFloat oblique()
    {
        return shade<PF_PixelFloat>(scene, rayThrough(kHit, Vector3(0.6f, 0.8f, 0), 100.0f),
                                    100.0);
    }

    Scene scene{32};
};

// Map pixel 6 of row 2 reads (0.6, 0.4, 0.5), scaled by intensity 0.5 and the rim gain
// (1 - |N.D|)^(10 rolloff), |N.D| = 0.8; metal tints it by the texel; no intensity or no map
// turns it off.
TEST_F(ReflectionTest, LooksUpTheMirroredDirectionInTheLatLongMap)
{
    const float k = 0.5f * std::pow(0.2f, 10.0f);
    const struct {
        const char* name;
        float rolloff, metal, intensity;
        bool map;
        PF_PixelFloat expected;
        float tolerance;
    } cases[] = {
        {"plain", 0.0f, 0.0f, 0.5f, true, pixel(1, 0.5f * 0.6f, 0.5f * 0.4f, 0.5f * 0.5f), 1e-5f},
        {"rolloff 0.1", 0.1f, 0.0f, 0.5f, true, pixel(1, 0.1f * 0.6f, 0.1f * 0.4f, 0.1f * 0.5f), 1e-5f},
        {"rolloff 1", 1.0f, 0.0f, 0.5f, true, pixel(1, k * 0.6f, k * 0.4f, k * 0.5f), 1e-9f},
        {"metal", 0.0f, 1.0f, 0.5f, true,
         pixel(1, 0.5f * 0.8f * 0.6f, 0.5f * 0.4f * 0.4f, 0.5f * 0.2f * 0.5f), 1e-5f},
        {"no intensity", 0.0f, 0.0f, 0.0f, true, pixel(1, 0, 0, 0), 1e-5f},
        {"no map", 0.0f, 0.0f, 1.0f, false, pixel(1, 0, 0, 0), 1e-5f},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        scene.info().reflection_rolloff = c.rolloff;
        scene.info().metal = c.metal;
        scene.info().reflection_intensity = c.intensity;
        if (!c.map)
            scene.info().reflection_layer = PF_LayerDef{};
        expectColour(oblique(), c.expected, c.tolerance);
    }
    // Head on, the mirrored ray is composition -z: its y and x are both 0, which reads
    // longitude 0 (column 0) rather than atan2(-1, 0) (column 5).
    scene.info().reflection_intensity = 1.0f;
    scene.setReflectionMap<PF_PixelFloat>(10, 4, mapPixel);
    expectColour(shade<PF_PixelFloat>(scene, rayThrough(kHit, Vector3(0, 1, 0), 900.0f), 900.0),
                 pixel(1, 0, 1, 0.5f));
}

TEST_F(ReflectionTest, FootprintStretchesWithTheViewAngleAndTheLatitude)
{
    // Sharpness 0: the box is 1.25 / sqrt(1 - 0.5^2) pixels wide each side (1 / |N.D| = 1.25
    // across the view, the latitude divisor at v = 0.5) and 1 pixel high each side. Only
    // column 7 is white, so red reads the share of the box that column 7 covers.
    scene.info().sharpness_inv = 1.0;
    scene.setReflectionMap<PF_PixelFloat>(
        10, 4, [](int x, int) { return x == 7 ? pixel(1, 1, 1, 1) : pixel(1, 0, 0, 0); });
    const double centre = (std::atan2(-0.8, 0.6) / (2.0 * M_PI) - 0.25 + 1.0) * 10.0;
    const double half_width = 1.25 / std::sqrt(0.75);
    const double column7 = centre + half_width - 6.5;
    const float red = static_cast<float>(0.5 * column7 / (2.0 * half_width));
    expectPixel(oblique(), 1.0f, red, red, red, 1e-4f);
}

// From inside the shape the mirrored ray (0.6, 0.8, 0) crosses the far wall before it leaves;
// in the composition it reads (0.6, 0, 0.8): longitude 0.8976, pixel 9 of row 2. Without self
// shadow the wall is ignored; an opaque wall hides the environment, a transmitting one tints it.
TEST_F(ReflectionTest, FromInsideTheFarWallFiltersTheEnvironment)
{
    const struct {
        const char* name;
        bool self_shadow;
        float transmission;
        PF_PixelFloat expected;
    } cases[] = {
        {"no self shadow", false, 0.0f, pixel(1, 0.5f * 0.9f, 0.5f * 0.1f, 0.5f * 0.5f)},
        {"opaque wall", true, 0.0f, pixel(1, 0, 0, 0)},
        {"transmitting wall", true, 1.0f,
         pixel(1, 0.5f * 0.8f * 0.9f, 0.5f * 0.4f * 0.1f, 0.5f * 0.2f * 0.5f)},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        scene.info().self_shadow = c.self_shadow;
        scene.info().light_transmission = c.transmission;
        expectColour(shade<PF_PixelFloat>(scene, rayThrough(kHit, Vector3(0.6f, -0.8f, 0), 100.0f), 100.0),
                     c.expected);
    }
}

// Emission, an ambient and a point light with a highlight, a uniform reflection map and a fade,
// rendered with textures and maps of each pixel depth.
template <class T>
PF_PixelFloat shadeFullScene()
{
    const short bitdepth = sizeof(T) == 4 ? 8 : (sizeof(T) == 8 ? 16 : 32);
    Scene scene(bitdepth);
    RenderInfo& info = scene.info();
    info.emit = 0.5f;
    info.ambient = 0.6f;
    info.diffuse = 0.5f;
    info.specular = 0.3f;
    info.shininess = 8.0f;
    info.reflection_intensity = 0.5f;
    info.self_shadow = true;
    info.depth_composite = {3, 200.0, 0.0, pixel(1, 0, 0, 0)};  // fade out: mode, length, start
    scene.setUniformTexture<T>(kTexel);
    scene.setReflectionMap<T>(10, 4, [](int, int) { return pixel(1.0f, 0.2f, 0.4f, 0.6f); });
    scene.addLight(makeLight(kAmbient, Vector3(0, 0, 0), 0.5f));
    scene.addLight(makeLight(kPoint, Vector3(0, -500, 0)));
    return shade<T>(scene, rayThrough(kHit, Vector3(0.6f, 0.8f, 0), 100.0f), 100.0);
}

TEST(ShadingPixelDepths, AllThreeAgreeOnTheSameScene)
{
    // Texel x (emit 0.5 + ambient 0.6 x 0.5 + diffuse 0.5) + highlight 0.3 x 0.8^8
    // + reflection 0.5 x (0.2, 0.4, 0.6); fade at half of its range halves the alpha.
    const float highlight = 0.3f * std::pow(0.8f, 8.0f);
    const float r = 1.3f * 0.8f + highlight + 0.1f;
    const float g = 1.3f * 0.4f + highlight + 0.2f;
    const float b = 1.3f * 0.2f + highlight + 0.3f;
    expectColour(shadeFullScene<PF_Pixel>(), pixel(0.5f, r, g, b), 1e-4f);
    expectColour(shadeFullScene<PF_Pixel16>(), pixel(0.5f, r, g, b), 1e-4f);
    expectColour(shadeFullScene<PF_PixelFloat>(), pixel(0.5f, r, g, b));
}

} // namespace
