#include "raytrace/Shading.h"

#include <algorithm>
#include <cmath>
#include <type_traits>

#include "AEConfig.h"
#include "AE_EffectCBSuites.h"
#include "AE_MyLib/AEObject/AEGP_SuiteHandler.h"
#include "math/PixelConvert.h"
#include "math/Vectormath.h"
#include "raytrace/Cylinder.h"
#include "raytrace/DepthComposite.h"
#include "raytrace/FootprintSampling.h"
#include "raytrace/HighlightPower.h"
#include "raytrace/Lights.h"

using Vectormath::Aos::Vector3;
using Vectormath::Aos::Vector4;

namespace {

constexpr int kAmbientLight = 3;
constexpr double kPi = 3.14159265358979323846;
// Half width, in u, of the line drawn at the fixed point.
constexpr double kPivotHalfWidth = 0.001;

// A straight colour without alpha, accumulated in double.
struct Rgb {
    double red, green, blue;
};

Rgb operator*(const Rgb& a, const Rgb& b)
{
    return {a.red * b.red, a.green * b.green, a.blue * b.blue};
}

Rgb operator*(const Rgb& a, double k)
{
    return {a.red * k, a.green * k, a.blue * k};
}

Rgb& operator+=(Rgb& a, const Rgb& b)
{
    a.red += b.red;
    a.green += b.green;
    a.blue += b.blue;
    return a;
}

Rgb rgbOf(const PF_PixelFloat& p)
{
    return {p.red, p.green, p.blue};
}

// A colour channel blended from white towards the texel by `amount`: (1 - m) + m * texel.
Rgb tintTowards(const Rgb& texel, double amount)
{
    const double white = 1.0 - amount;
    return {white + amount * texel.red, white + amount * texel.green,
            white + amount * texel.blue};
}

// A layer the driver did not check out is left all zero, so its pixels are null.
bool isLayerSet(const PF_LayerDef& layer)
{
    return layer.data != nullptr;
}

Ray makeRay(const Vector3& origin, const Vector3& direction)
{
    Ray ray;
    ray.direction = direction;
    ray.origin = Vector4(origin.getX(), origin.getY(), origin.getZ(), 1.0f);
    return ray;
}

// What the shading needs to know about the hit.
struct SurfaceHit {
    Vector3 view;      // unit ray direction D
    Vector3 position;  // hit point P, shape local space
    Vector3 normal;    // unit normal N, turned towards the viewer
    Rgb texel;         // straight texture colour C
};

// The texture colour at the hit, or the u/v test colour without a texture layer. False when
// there is nothing to light: a transparent texel, or a point outside the texture's copies.
// Without a texture layer u and v are remapped into their extension copy in place.
template <class T>
bool sampleSurface(const RenderInfoTemplate<Cylinder>& info, const Ray& ray, double t,
                   const Vector3& unit_position, const Vector3& gradient, double& u, double& v,
                   PF_PixelFloat& colour)
{
    if (isLayerSet(info.texture_layer)) {
        double x_radius = 0.0, y_radius = 0.0;
        getSampRadius(info, ray, t, unit_position, gradient, x_radius, y_radius);
        PF_LayerDef* texture = const_cast<PF_LayerDef*>(&info.texture_layer);
        colour = PF_PixelFloat{0.0f, 0.0f, 0.0f, 0.0f};
        TopologycalSampling<T>(info, unit_position, u, v, x_radius, y_radius, texture, colour);
        return colour.alpha > 0.0f;
    }

    info.extension.modifyUVByExtendedCylinder(unit_position, info, u, v);
    if (u >= 0.0 && u < 1.0 && v >= 0.0 && v < 1.0) {
        colour = PF_PixelFloat{1.0f, static_cast<float>(u), static_cast<float>(v), 0.0f};
        return true;
    }
    colour = PF_PixelFloat{0.0f, 0.0f, 0.0f, 0.0f};
    return false;
}

// How much of the light is left after the surface's own texture shadows it: 1 per channel
// when unshadowed, blended towards the transmitted colour by the light's shadow darkness.
template <class T>
Rgb shadowTint(const RenderInfoTemplate<Cylinder>& info, const vLight& light,
               const SurfaceHit& hit, const Vector3& light_direction)
{
    if (!info.self_shadow || light.type == kAmbientLight || !light.casts_shadows) {
        return {1.0, 1.0, 1.0};
    }
    const Vector4 passed =
        GetObstColor<T>(info, makeRay(hit.position, -light_direction), &light);
    const double k = light.shadow_darkness;
    return {(1.0 - k) + k * passed.getY(), (1.0 - k) + k * passed.getZ(),
            (1.0 - k) + k * passed.getW()};
}

// Integer texels are finite, so the shadow tint of an integer-depth texture is finite too.
// A light whose weight at the hit is zero (behind the face without transmission, outside its
// cone, beyond its falloff) then adds only zero terms, or the NaN of an infinite highlight
// power, whatever its tint: its shadow ray is not cast. (Only the sign of such a zero could
// differ, which integer output cannot show.) Float texels may be infinite and always cast it.
template <class T>
constexpr bool kFiniteTexels = !std::is_same<T, PF_PixelFloat>::value;

// Diffuse (or ambient) and specular light of one light source added to `accumulated`.
template <class T>
void addLight(const RenderInfoTemplate<Cylinder>& info, const vLight& light,
              const SurfaceHit& hit, Rgb& accumulated)
{
    double power = 0.0;
    Vector3 direction(0.0f, 0.0f, 0.0f);
    const Vector4 point(hit.position.getX(), hit.position.getY(), hit.position.getZ(), 1.0f);
    GetLightPower(info, light, point, power, direction);
    const bool ambient = light.type == kAmbientLight;
    if (ambient) direction = -hit.normal;

    const double strength = light.intensity * power;
    // Negative when the light falls on the visible face; positive light comes through it.
    const float cosine = Vectormath::Aos::dot(hit.normal, direction);
    const double transmission = info.light_transmission;
    const double lambert = cosine <= 0.0f ? -cosine : cosine * transmission;
    const double weight = strength * lambert;
    const Rgb shadow = weight == 0.0 && kFiniteTexels<T>
                           ? Rgb{1.0, 1.0, 1.0}
                           : shadowTint<T>(info, light, hit, direction);
    const Rgb light_colour = {light.color[1], light.color[2], light.color[3]};

    if (cosine < 0.0f || (cosine > 0.0f && transmission > 0.0)) {
        const double k = ambient ? info.ambient : info.diffuse;
        accumulated += shadow * hit.texel * light_colour * (k * weight);
    }
    if (ambient) return;

    // The Lambert factor stays inside the highlight's weight, so highlights fade with the
    // diffuse term and also show on faces lit through the surface.
    const Vector3 mirrored = direction - hit.normal * (2.0f * cosine);
    const double h = Vectormath::Aos::dot(mirrored, hit.view);
    if (h < 0.0) {
        const Rgb metal_tint = tintTowards(hit.texel, info.metal);
        // -h is a cosine; rounding can take it just past 1, which a huge exponent (Roughness 0)
        // would blow up to infinity.
        const double highlight =
            info.specular * weight * highlightPower(std::min(-h, 1.0), info.shininess, info.highlight_cutoff);
        accumulated += shadow * metal_tint * light_colour * highlight;
    }
}

// Area sample of the reflection map, through the suite of its pixel depth.
template <class T>
void sampleEnvironment(const RenderInfoTemplate<Cylinder>& info, PF_Fixed x, PF_Fixed y,
                       const PF_SampPB& pb, PF_PixelFloat& out)
{
    AreaSample<T>(info.in_data, info.suites, x, y, pb, out);
}

template <>
void sampleEnvironment<PF_PixelFloat>(const RenderInfoTemplate<Cylinder>& info, PF_Fixed x,
                                      PF_Fixed y, const PF_SampPB& pb, PF_PixelFloat& out)
{
    info.suites.SamplingFloatSuite1()->area_sample_float(info.in_data->effect_ref, x, y, &pb,
                                                         &out);
}

// The reflection map seen in the mirrored view direction, looked up as a latitude-longitude
// image over a footprint that grows towards the rim, added to `accumulated`.
template <class T>
void addReflection(const RenderInfoTemplate<Cylinder>& info, const SurfaceHit& hit,
                   Rgb& accumulated)
{
    using Vectormath::Aos::cross;
    using Vectormath::Aos::dot;
    using Vectormath::Aos::normalize;

    const float cv = dot(hit.normal, hit.view);
    const Vector3 mirrored = hit.view - hit.normal * (2.0f * cv);
    const Rgb tint = tintTowards(hit.texel, info.metal);

    Rgb occlusion = {1.0, 1.0, 1.0};
    if (info.self_shadow) {
        const Vector4 passed = GetObstColor<T>(info, makeRay(hit.position, mirrored), nullptr);
        occlusion = {passed.getY(), passed.getZ(), passed.getW()};
    }

    // Frame of the mirrored ray in composition space (a Vector3 product leaves out translation).
    const Vector3 r = normalize(Vector3(info.object_to_world * mirrored));
    const Vector3 tangent = normalize(Vector3(info.object_to_world * cross(hit.view, hit.normal)));
    const Vector3 bitangent = cross(r, tangent);
    const Vector3 map_u = normalize(cross(Vector3(0.0f, 1.0f, 0.0f), r));
    const Vector3 map_v = cross(r, map_u);

    const double vr = 1.0 - std::acos(static_cast<double>(r.getY())) / kPi;
    double ur = 0.0;
    if (!(r.getY() == 0.0f && r.getX() == 0.0f)) {
        ur = std::atan2(static_cast<double>(r.getZ()), static_cast<double>(r.getX())) /
                 (2.0 * kPi) -
             0.25;
    }
    const double x = (ur - std::floor(ur)) * info.reflection_layer.width;
    const double y = vr * info.reflection_layer.height;

    const double cv_sq = static_cast<double>(cv) * cv;
    const double tu = dot(tangent, map_u), bu = dot(bitangent, map_u);
    const double tv = dot(tangent, map_v), bv = dot(bitangent, map_v);
    const double su = std::sqrt(tu * tu + bu * bu / cv_sq);
    const double sv = std::sqrt(tv * tv + bv * bv / cv_sq);
    const double ring = 1.0 - vr * vr;
    const double g = ring > 0.0 ? std::sqrt(ring) : 1e-5;

    PF_SampPB pb = {};
    pb.x_radius = clampSampleRadius(su / g * info.sharpness_inv);
    pb.y_radius = clampSampleRadius(sv * info.sharpness_inv);
    pb.src = const_cast<PF_LayerDef*>(&info.reflection_layer);

    PF_PixelFloat environment = {0.0f, 0.0f, 0.0f, 0.0f};
    sampleEnvironment<T>(info, roundToFixed(x), roundToFixed(y), pb, environment);

    const double gain = std::pow(1.0 - std::fabs(static_cast<double>(cv)),
                                 10.0 * info.reflection_rolloff) *
                        info.reflection_intensity;
    accumulated += occlusion * tint * rgbOf(environment) * gain;
}

// Emission, every light in list order, then the reflection; the texel's alpha is kept.
template <class T>
PF_PixelFloat shade(const RenderInfoTemplate<Cylinder>& info, const SurfaceHit& hit,
                    float alpha)
{
    Rgb accumulated = hit.texel * info.emit;
    for (std::size_t i = 0; i < info.lights.size(); ++i) {
        addLight<T>(info, *info.lights[i], hit, accumulated);
    }
    if (isLayerSet(info.reflection_layer) && info.reflection_intensity > 0.0f) {
        addReflection<T>(info, hit, accumulated);
    }
    return PF_PixelFloat{alpha, static_cast<float>(accumulated.red),
                         static_cast<float>(accumulated.green),
                         static_cast<float>(accumulated.blue)};
}

bool isOnPivotLine(const RenderInfoTemplate<Cylinder>& info, double u, double v)
{
    return v >= 0.0 && v < 1.0 && u >= 0.0 && u < 1.0 && info.show_pivot &&
           std::fabs(u - info.fixed_u) < kPivotHalfWidth;
}

} // namespace

template <class T>
int Ray_GetColor(const Ray& ray, double t, const RenderInfoTemplate<Cylinder>& info,
                 PF_PixelFloat& out)
{
    const Vector3 view = ray.direction;
    const Vector3 position = Vector3(ray.origin) + view * static_cast<float>(t);
    const Vector3 unit_position = Vectormath::Aos::mulPerElem(position, info.inv_size);
    // Gradient of x^2/a^2 + y^2/b^2 - z^2/c^2.
    const Vector3 gradient = Vectormath::Aos::normalize(
        Vector3(position.getX() * info.inv_size_sq.getX(),
                position.getY() * info.inv_size_sq.getY(),
                -position.getZ() * info.inv_size_sq.getZ()));

    double u = 0.0, v = 0.0;
    info.getUVFromCoordinate(info, position, u, v);
    info.modifyUVByOpenParam(info, u, v);

    PF_PixelFloat colour;
    if (sampleSurface<T>(info, ray, t, unit_position, gradient, u, v, colour)) {
        SurfaceHit hit;
        hit.view = view;
        hit.position = position;
        hit.normal = Vectormath::Aos::dot(view, gradient) > 0.0f ? -gradient : gradient;
        hit.texel = rgbOf(colour);
        colour = shade<T>(info, hit, colour.alpha);
    }

    depthComposite(info.depth_composite, t, colour);
    out = colour;

    // Drawn after the depth composite so that fog never tints it.
    if (isOnPivotLine(info, u, v)) out = PF_PixelFloat{1.0f, 0.0f, 1.0f, 0.0f};
    return 0;
}

template int Ray_GetColor<PF_Pixel>(const Ray&, double, const RenderInfoTemplate<Cylinder>&,
                                    PF_PixelFloat&);
template int Ray_GetColor<PF_Pixel16>(const Ray&, double, const RenderInfoTemplate<Cylinder>&,
                                      PF_PixelFloat&);
template int Ray_GetColor<PF_PixelFloat>(const Ray&, double,
                                         const RenderInfoTemplate<Cylinder>&, PF_PixelFloat&);
