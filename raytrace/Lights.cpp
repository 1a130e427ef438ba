#include "raytrace/Lights.h"

#include <algorithm>
#include <cmath>

#include "raytrace/Cylinder.h"
#include "raytrace/FootprintSampling.h"

using Vectormath::Aos::Vector3;
using Vectormath::Aos::Vector4;

namespace {

enum LightType { kParallel = 0, kSpot = 1, kPoint = 2, kAmbient = 3 };
enum FalloffMode { kFalloffNone = 1, kFalloffSmooth = 2, kFalloffInverseSquareClamped = 3 };

// Smallest distance to a light the falloff divides by, so a point on the light stays finite.
constexpr double kMinLightDistance = 1e-15;

// Clamps to [0, 1]; NaN (a zero-width smooth ramp or spot feather hit exactly) gives 0.
double clampUnit(double x)
{
    if (!(x > 0.0)) return 0.0;
    return x < 1.0 ? x : 1.0;
}

// Distance falloff factor at `distance` pixels from the light.
double falloffFactor(const RenderInfoTemplate<Cylinder>& info, double distance)
{
    switch (info.falloff_mode) {
    case kFalloffInverseSquareClamped: {
        // std::min(q, 1) returns q itself when q is NaN, so a NaN radius stays visible.
        const double k = std::min(info.falloff_radius / distance, 1.0);
        return k * k;
    }
    case kFalloffSmooth: {
        const double inner = info.falloff_radius;
        const double outer = info.falloff_radius + info.falloff_distance;
        const double s = clampUnit((distance - inner) / (outer - inner));
        return 1.0 - s * s * (3.0 - 2.0 * s);
    }
    default:
        return 1.0;
    }
}

// Soft edge of a spot's cone: 1 inside the cone less its feather, 0 outside the cone.
double spotFactor(const vLight& light, double cos_angle)
{
    const double s = (cos_angle - light.cos_half_cone) /
                     (light.feather * (1.0 - light.cos_half_cone));
    return clampUnit(s);
}

Vector3 lightPosition(const vLight& light)
{
    return Vector3(light.to_object.getCol3());
}

Vector3 lightAxis(const vLight& light)
{
    return Vector3(light.to_object.getCol2());
}

// Parameter of the crossing of the ray with the quadric that is farther from the origin, which
// lies on the surface; false when the ray only grazes or misses the shape.
bool secondCrossing(const RenderInfoTemplate<Cylinder>& info, const Ray& ray, double& t)
{
    const double dx = ray.direction.getX(), dy = ray.direction.getY(), dz = ray.direction.getZ();
    const double ox = ray.origin.getX(), oy = ray.origin.getY(), oz = ray.origin.getZ();
    const double kx = info.inv_size_sq.getX(), ky = info.inv_size_sq.getY(),
                 kz = info.inv_size_sq.getZ();

    const double a = dx * dx * kx + dy * dy * ky - dz * dz * kz;
    const double b = dx * ox * kx + dy * oy * ky - dz * oz * kz;
    const double c = ox * ox * kx + oy * oy * ky - oz * oz * kz - 1.0;
    const double disc = b * b - a * c;
    if (disc <= 0.0) return false;

    const double r = std::sqrt(disc);
    const double t1 = (r - b) / a;
    const double t2 = (-b - r) / a;
    t = std::fabs(t1) > std::fabs(t2) ? t1 : t2;
    return true;
}

// How far along the ray the shape may still stand between the origin and the light.
double obstructionLimit(const Ray& ray, const vLight* light, double t)
{
    if (light == nullptr || light->type == kParallel) return t + 1.0;
    const Vector3 to_light = lightPosition(*light) - Vector3(ray.origin);
    return Vectormath::Aos::dot(ray.direction, to_light);
}

} // namespace

void GetLightPower(const RenderInfoTemplate<Cylinder>& info, const vLight& light,
                   const Vector4& point, double& power, Vector3& direction)
{
    power = 1.0;

    const Vector3 d = Vector3(point) - lightPosition(light);
    const double dist = Vectormath::Aos::length(d);
    const double dc = dist > kMinLightDistance ? dist : kMinLightDistance;
    const double f = falloffFactor(info, dc);

    switch (light.type) {
    case kParallel:
        direction = Vectormath::Aos::normalize(lightAxis(light));
        power = f;
        break;
    case kSpot: {
        direction = d / static_cast<float>(dc);
        const double cos_angle = Vectormath::Aos::dot(lightAxis(light), direction);
        power = f * spotFactor(light, cos_angle);
        break;
    }
    case kPoint:
        direction = d / static_cast<float>(dc);
        power = f;
        break;
    case kAmbient:
        direction = Vector3(0.0f, 0.0f, 0.0f);
        break;
    default:
        break;
    }
}

template <class T>
Vector4 GetObstColor(const RenderInfoTemplate<Cylinder>& info, const Ray& ray,
                     const vLight* light)
{
    Vector4 result(1.0f, 1.0f, 1.0f, 1.0f);

    double t = 0.0;
    if (!secondCrossing(info, ray, t)) return result;
    if (!(t > 0.0 && t < obstructionLimit(ray, light, t))) return result;

    const Vector3 hit = Vector3(ray.origin) + ray.direction * static_cast<float>(t);
    double u = 0.0, v = 0.0;
    info.getUVFromCoordinate(info, hit, u, v);
    info.modifyUVByOpenParam(info, u, v);

    // A point sample of the texel at the crossing; the sampler wants a mutable source world.
    PF_PixelFloat texel = {0.0f, 0.0f, 0.0f, 0.0f};
    PF_LayerDef* texture = const_cast<PF_LayerDef*>(&info.texture_layer);
    TopologycalSampling<T>(info, hit, u, v, 0.0, 0.0, texture, texel);

    const double alpha = texel.alpha;
    const double passed = info.light_transmission * alpha;
    const double blocked = 1.0 - alpha;
    result.setX(static_cast<float>(blocked + passed * texel.alpha));
    result.setY(static_cast<float>(blocked + passed * texel.red));
    result.setZ(static_cast<float>(blocked + passed * texel.green));
    result.setW(static_cast<float>(blocked + passed * texel.blue));
    return result;
}

template Vector4 GetObstColor<PF_Pixel>(const RenderInfoTemplate<Cylinder>&, const Ray&,
                                        const vLight*);
template Vector4 GetObstColor<PF_Pixel16>(const RenderInfoTemplate<Cylinder>&, const Ray&,
                                          const vLight*);
template Vector4 GetObstColor<PF_PixelFloat>(const RenderInfoTemplate<Cylinder>&, const Ray&,
                                             const vLight*);
