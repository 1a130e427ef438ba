// Shadow and reflection rays across the shape: what the texel at the second crossing lets
// through, and how far towards a light the shape can stand in the way.

#include <gtest/gtest.h>

#include "raytrace/Lights.h"
#include "raytrace/shading/ShadingScene.h"

namespace {

using namespace shading_test;

constexpr int kNoLight = -1;

// What the far wall lets through: a ray from the near wall at (0, -100, 0) along `direction`
// (along +y it crosses the far wall at (0, 100, 0), t = 200, where u = 0.75 and v = 0.5, the
// middle of the texture), on a uniform texture of the pixel type T.
template <class T>
Vector4 obstruction(const PF_PixelFloat& texel, float transmission, const Vector3& direction,
                    int light_type, float light_y)
{
    Scene scene;
    scene.setUniformTexture<T>(texel);
    scene.info().light_transmission = transmission;
    Ray ray;
    ray.direction = direction;
    ray.origin = Vector4(0, -kRadius, 0, 1);
    const vLight light = makeLight(light_type, Vector3(0, light_y, 0));
    return GetObstColor<T>(scene.info(), ray, light_type == kNoLight ? nullptr : &light);
}

// An opaque texel blocks or tints by the transmission; a half-transparent one mixes passing and
// transmitted light, (1 - a) + transmission a c per channel; a transparent texel or no crossing
// inside the texture blocks nothing. Towards a point light the shadow ray stops at the light,
// towards a parallel light it has no limit.
TEST(Obstruction, FarWallBlocksTintsOrLetsThrough)
{
    const Vector3 across(0, 1, 0);
    const PF_PixelFloat white = pixel(1, 1, 1, 1), none = pixel(0, 0, 0, 0);
    const PF_PixelFloat quarter = pixel(0.75f, 0.25f, 0.5f, 1.0f);
    // (1 - 0.75) + 0.4 x 0.75 x c
    const PF_PixelFloat through_quarter = pixel(0.475f, 0.325f, 0.4f, 0.55f);
    const struct {
        const char* name;
        Vector4 (*obstruction)(const PF_PixelFloat&, float, const Vector3&, int, float);
        PF_PixelFloat texel;
        float transmission;
        Vector3 direction;
        int light;
        float light_y;
        PF_PixelFloat expected;
        float tolerance;
    } cases[] = {
        {"opaque", obstruction<PF_Pixel>, kTexel, 0.0f, across, kNoLight, 0, none, 1e-6f},
        {"opaque, transmitting", obstruction<PF_Pixel>, kTexel, 1.0f, across, kNoLight, 0, kTexel, 1e-6f},
        {"half transparent", obstruction<PF_PixelFloat>, pixel(0.5f, 1.0f, 0.0f, 0.6f), 0.5f, across,
         kNoLight, 0, pixel(0.625f, 0.75f, 0.5f, 0.65f), 1e-6f},
        {"transparent", obstruction<PF_Pixel16>, pixel(0, 1, 1, 1), 0.0f, across, kNoLight, 0, white, 0.0f},
        // Climbing steeply, the ray meets the far wall at z = 400: v = 2.5, no texture there.
        {"beyond the texture", obstruction<PF_Pixel>, white, 0.0f, normalize(Vector3(0, 1, 2)), kNoLight, 0,
         white, 0.0f},
        {"leaving outwards", obstruction<PF_Pixel>, white, 0.0f, Vector3(0, -1, 0), kNoLight, 0, white, 0.0f},
        // Parallel to the axis on the wall: the quadric has no second crossing.
        {"along the wall", obstruction<PF_Pixel>, white, 0.0f, Vector3(0, 0, 1), kNoLight, 0, white, 0.0f},
        {"point light before the wall", obstruction<PF_Pixel>, white, 0.0f, across, kPoint, 50, white, 0.0f},
        {"point light beyond the wall", obstruction<PF_Pixel>, white, 0.0f, across, kPoint, 300, none, 1e-6f},
        {"parallel light", obstruction<PF_Pixel>, white, 0.0f, across, kParallel, 50, none, 1e-6f},
        {"8 bits", obstruction<PF_Pixel>, quarter, 0.4f, across, kNoLight, 0, through_quarter, 2.0f / 255.0f},
        {"16 bits", obstruction<PF_Pixel16>, quarter, 0.4f, across, kNoLight, 0, through_quarter, 1e-4f},
        {"float", obstruction<PF_PixelFloat>, quarter, 0.4f, across, kNoLight, 0, through_quarter, 1e-6f},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        const Vector4 f = c.obstruction(c.texel, c.transmission, c.direction, c.light, c.light_y);
        expectColour(pixel(f.getX(), f.getY(), f.getZ(), f.getW()), c.expected, c.tolerance);
    }
}

} // namespace
