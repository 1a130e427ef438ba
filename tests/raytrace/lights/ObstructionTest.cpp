// Shadow and reflection rays across the shape: what the texel at the second crossing lets
// through, and how far towards a light the shape can stand in the way.

#include <gtest/gtest.h>

#include "raytrace/Lights.h"
#include "raytrace/shading/ShadingScene.h"

namespace {

using namespace shading_test;

// Starts on the near wall at (0, -100, 0) and crosses the far wall at (0, 100, 0), t = 200,
// where u = 0.75 and v = 0.5: the middle of the texture.
Ray acrossTheCylinder()
{
    Ray ray;
    ray.direction = Vector3(0, 1, 0);
    ray.origin = Vector4(0, -kRadius, 0, 1);
    return ray;
}

void expectFactors(const Vector4& f, float a, float r, float g, float b, float tolerance)
{
    expectColour(pixel(f.getX(), f.getY(), f.getZ(), f.getW()), pixel(a, r, g, b), tolerance);
}

class ObstructionTest : public ::testing::Test {
protected:
    Scene scene;
};

TEST_F(ObstructionTest, OpaqueTexelBlocksOrTintsByTheTransmission)
{
    scene.setUniformTexture<PF_Pixel>(pixel(1.0f, 0.8f, 0.4f, 0.2f));
    scene.info().light_transmission = 0.0f;
    expectFactors(GetObstColor<PF_Pixel>(scene.info(), acrossTheCylinder(), nullptr), 0, 0, 0,
                  0, 1e-6f);
    scene.info().light_transmission = 1.0f;
    expectFactors(GetObstColor<PF_Pixel>(scene.info(), acrossTheCylinder(), nullptr), 1.0f,
                  0.8f, 0.4f, 0.2f, 1e-6f);
}

TEST_F(ObstructionTest, HalfTransparentTexelMixesPassingAndTransmittedLight)
{
    // alpha 0.5, transmission 0.5: (1 - 0.5) + 0.5 * 0.5 * c per channel.
    scene.setUniformTexture<PF_PixelFloat>(pixel(0.5f, 1.0f, 0.0f, 0.6f));
    scene.info().light_transmission = 0.5f;
    expectFactors(GetObstColor<PF_PixelFloat>(scene.info(), acrossTheCylinder(), nullptr),
                  0.625f, 0.75f, 0.5f, 0.65f, 1e-6f);
}

TEST_F(ObstructionTest, TransparentTexelOrNoCrossingInTheTextureBlocksNothing)
{
    scene.setUniformTexture<PF_Pixel16>(pixel(0.0f, 1.0f, 1.0f, 1.0f));
    expectFactors(GetObstColor<PF_Pixel16>(scene.info(), acrossTheCylinder(), nullptr), 1, 1,
                  1, 1, 0.0f);

    scene.setUniformTexture<PF_Pixel>(pixel(1, 1, 1, 1));
    const struct {
        const char* name;
        Vector3 direction;
    } rays[] = {
        // Climbing steeply, the ray meets the far wall at z = 400: v = 2.5, no texture there.
        {"beyond the texture", Vectormath::Aos::normalize(Vector3(0, 1, 2))},
        {"leaving outwards", Vector3(0, -1, 0)},
        // Parallel to the axis on the wall: the quadric has no second crossing.
        {"along the wall", Vector3(0, 0, 1)},
    };
    for (const auto& r : rays) {
        SCOPED_TRACE(r.name);
        Ray ray = acrossTheCylinder();
        ray.direction = r.direction;
        expectFactors(GetObstColor<PF_Pixel>(scene.info(), ray, nullptr), 1, 1, 1, 1, 0.0f);
    }
}

TEST_F(ObstructionTest, ShadowRayStopsAtAPointLightButNotAtAParallelOne)
{
    // The light at y = 50 lies before the far wall (t = 200): the wall is behind the light.
    scene.setUniformTexture<PF_Pixel>(pixel(1, 1, 1, 1));
    const vLight point = makeLight(kPoint, Vector3(0, 50, 0));
    expectFactors(GetObstColor<PF_Pixel>(scene.info(), acrossTheCylinder(), &point), 1, 1, 1, 1,
                  0.0f);

    const vLight beyond = makeLight(kPoint, Vector3(0, 300, 0));
    expectFactors(GetObstColor<PF_Pixel>(scene.info(), acrossTheCylinder(), &beyond), 0, 0, 0,
                  0, 1e-6f);

    // Towards a parallel light the shadow ray has no limit.
    const vLight parallel = makeLight(kParallel, Vector3(0, 50, 0));
    expectFactors(GetObstColor<PF_Pixel>(scene.info(), acrossTheCylinder(), &parallel), 0, 0, 0,
                  0, 1e-6f);
}

TEST_F(ObstructionTest, ThreePixelDepthsAgree)
{
    const PF_PixelFloat texel = pixel(0.75f, 0.25f, 0.5f, 1.0f);
    scene.info().light_transmission = 0.4f;
    // (1 - 0.75) + 0.4 * 0.75 * c
    const float a = 0.25f + 0.3f * 0.75f, r = 0.25f + 0.3f * 0.25f, g = 0.25f + 0.3f * 0.5f,
                b = 0.25f + 0.3f;

    scene.setUniformTexture<PF_Pixel>(texel);
    expectFactors(GetObstColor<PF_Pixel>(scene.info(), acrossTheCylinder(), nullptr), a, r, g, b,
                  2.0f / 255.0f);
    scene.setUniformTexture<PF_Pixel16>(texel);
    expectFactors(GetObstColor<PF_Pixel16>(scene.info(), acrossTheCylinder(), nullptr), a, r, g,
                  b, 1e-4f);
    scene.setUniformTexture<PF_PixelFloat>(texel);
    expectFactors(GetObstColor<PF_PixelFloat>(scene.info(), acrossTheCylinder(), nullptr), a, r,
                  g, b, 1e-6f);
}

} // namespace
