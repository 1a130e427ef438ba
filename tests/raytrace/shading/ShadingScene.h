#pragma once
// A small, hand-checkable scene for the shading and lighting tests: a straight circular
// cylinder of radius 100 around the local z axis, texture height 200 (v = 0.5 at z = 0),
// closed (open factor 1), placed at the composition origin and seen by a perspective camera of
// focal length 1000. Texture and reflection map are worlds of the emulated host, sampled
// through its real sampling suites.

#include <functional>

#include "support/ColourWorld.h"
#include "raytrace/Shading.h"
#include "support/RecordScene.h"
#include "support/ShapeSize.h"

namespace shading_test {

using Vectormath::Aos::Matrix4;
using Vectormath::Aos::Vector3;
using Vectormath::Aos::Vector4;

constexpr float kRadius = 100.0f;
constexpr double kTextureHeight = 200.0;

enum LightType { kParallel = 0, kSpot = 1, kPoint = 2, kAmbient = 3 };

using test_support::expectColour;
constexpr auto pixel = test_support::argb;

inline vLight makeLight(int type, const Vector3& position, float intensity = 1.0f,
                        const PF_PixelFloat& colour = pixel(1, 1, 1, 1))
{
    vLight light = {};
    light.to_object = Matrix4::translation(position);
    light.color[0] = colour.alpha;
    light.color[1] = colour.red;
    light.color[2] = colour.green;
    light.color[3] = colour.blue;
    light.type = type;
    light.intensity = intensity;
    light.cos_half_cone = 0.5;
    light.feather = 0.0;
    light.shadow_darkness = 1.0f;
    light.casts_shadows = true;
    return light;
}

// A ray that reaches `hit` at parameter t along the unit `direction`.
inline Ray rayThrough(const Vector3& hit, const Vector3& direction, float t)
{
    const Vector3 origin = hit - direction * t;
    Ray ray;
    ray.direction = direction;
    ray.origin = Vector4(origin, 1.0f);
    return ray;
}

class Scene : public test_support::RecordScene {
public:
    explicit Scene(short bitdepth = 8) : RecordScene(bitdepth)
    {
        RenderInfo& record = info();
        record.object_to_world = Matrix4::identity();
        record.world_to_object = Matrix4::identity();
        setShapeSize(record, kRadius, kRadius, 0.0f);
        record.texture_height = kTextureHeight;
        record.open_scale = 1.0;
        record.fixed_u = 0.0;
        record.neg_focal = -1000.0f;
        record.perspective = true;
        record.emit = 1.0f;
    }

    // Texture of the pixel type T, one colour everywhere.
    template <class T>
    void setUniformTexture(const PF_PixelFloat& colour, int width = 64, int height = 64)
    {
        test_support::fillWorld<T>(texture_, width, height, [&](int, int) { return colour; });
        info().texture_width = width;
        info().texture_layer = texture_.get();
    }

    template <class T>
    void setReflectionMap(int width, int height,
                          const std::function<PF_PixelFloat(int x, int y)>& colour_at)
    {
        test_support::fillWorld<T>(reflection_, width, height, colour_at);
        info().reflection_layer = reflection_.get();
    }

    void addLight(const vLight& light) { info().appendLight(light); }

private:
    host::OwnedWorld texture_;
    host::OwnedWorld reflection_;
};

// The texel every uniform texture shows: exact in 8 bits (255, 204, 102, 51).
const PF_PixelFloat kTexel = pixel(1.0f, 0.8f, 0.4f, 0.2f);

// The colour of the hit at t along `ray`, starting from a sentinel so an unwritten channel shows.
template <class T>
PF_PixelFloat shade(Scene& scene, const Ray& ray, double t)
{
    PF_PixelFloat out = pixel(-7, -7, -7, -7);
    Ray_GetColor<T>(ray, t, scene.info(), out);
    return out;
}

inline void expectPixel(const PF_PixelFloat& p, float a, float r, float g, float b,
                        float tolerance = 1e-5f)
{
    expectColour(p, pixel(a, r, g, b), tolerance);
}

}  // namespace shading_test
