#include "raytrace/FootprintSampling.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

#include "AEConfig.h"
#include "AE_EffectCBSuites.h"
#include "math/PixelConvert.h"

namespace {

using Vectormath::Aos::Vector3;

constexpr double kMaxFootprintRadius = 128.0;      // texture pixels; bounds the host's cost
constexpr double kRadiusBeforeSharpness = 32768.0;  // texture pixels

// Adds the sample `part`, which covers another piece of the same footprint, into `out`: the
// alphas add up (each sample counted the rest of the box as transparent) and the colours are
// alpha-weighted.
void mergeFootprintPart(const PF_PixelFloat& part, PF_PixelFloat& out)
{
    const float alpha = out.alpha + part.alpha;
    const float red = part.red * part.alpha + out.red * out.alpha;
    const float green = part.green * part.alpha + out.green * out.alpha;
    const float blue = part.blue * part.alpha + out.blue * out.alpha;
    if (alpha > 0.0f) {
        out.red = red / alpha;
        out.green = green / alpha;
        out.blue = blue / alpha;
    } else {
        out.red = red;
        out.green = green;
        out.blue = blue;
    }
    out.alpha = alpha;
}

PF_Err hostAreaSample(const AEGP_SuiteHandler& suites, PF_ProgPtr effect_ref, PF_Fixed x,
                      PF_Fixed y, const PF_SampPB& pb, PF_Pixel& sample)
{
    return suites.Sampling8Suite1()->area_sample(effect_ref, x, y, &pb, &sample);
}

PF_Err hostAreaSample(const AEGP_SuiteHandler& suites, PF_ProgPtr effect_ref, PF_Fixed x,
                      PF_Fixed y, const PF_SampPB& pb, PF_Pixel16& sample)
{
    return suites.Sampling16Suite1()->area_sample16(effect_ref, x, y, &pb, &sample);
}

using ExtensionInfo = ExtraRenderInfo<Cylinder>::ExtensionInfo;

// Whether copy k of the extended cylinder exists; copy 0 is the texture itself.
bool copyExists(const ExtensionInfo& extension, int32_t k)
{
    if (k == 0)
        return true;
    if (k < 0)
        return -k <= extension.head_extensions;
    return k <= extension.tail_extensions;
}

// Whether the copy above copy k exists. Unlike copyExists(k + 1), k = -1 + 1 = 0 is always
// allowed and -1 never asks the head count.
bool copyAboveExists(const ExtensionInfo& extension, int32_t k)
{
    const int32_t j = k + 1;
    if (j == 0)
        return true;
    if (k >= 0)
        return k < extension.tail_extensions;
    return k < -1 && -j <= extension.head_extensions;
}

// Samples copy `copy` at copy-local v `local_v`: u shifted by the screw and wrapped by K, v
// mirrored for odd copies. The mirror uses 1 - 1/Ht so mirrored rows land on texture rows.
template <class T>
int sampleCopy(const RenderInfoTemplate<Cylinder>& info, double K, double u, double local_v,
               int32_t copy, double xr, double yr, const PF_SampPB& pb, PF_PixelFloat& out)
{
    const ExtensionInfo& extension = info.extension;
    const double copy_u = u + extension.screw * copy;
    const double wrapped_u = copy_u - K * std::floor(copy_u / K);
    double copy_v = local_v;
    if (extension.flip_vertical && (copy & 1))
        copy_v = (1.0 - 1.0 / info.texture_layer.height) - local_v;
    return ULoopSampling<T>(info, K, wrapped_u, copy_v, xr, yr, pb, out);
}

}  // namespace

void getSampRadius(const RenderInfoTemplate<Cylinder>& info, const Ray& ray, const double& t,
                   const Vector3& p, const Vector3& n, double& xr, double& yr)
{
    // Unit tangent around the axis.
    const float a = info.size.getX(), b = info.size.getY();
    Vector3 tangent(-a * p.getY(), b * p.getX(), 0.0f);
    const float tangent_length = length(tangent);
    tangent = tangent_length > 0.0f ? tangent / tangent_length : Vector3(1.0f, 0.0f, 0.0f);
    const double c1 = dot(tangent, ray.direction);

    // Pixels on screen per world unit at the hit.
    const double distance_scale = info.perspective ? -t / info.neg_focal : 1.0;

    const double cn = std::clamp(double(std::fabs(dot(n, ray.direction))), 0.0001, 0.9999);

    const double q = 1.0 - c1 * c1 - cn * cn;
    const double sin_sq = 1.0 - cn * cn;
    const double g = sin_sq > 0.0 ? cn * std::sqrt(sin_sq) : 1.0;
    const double stretch_x = std::sqrt(c1 * c1 + cn * cn * q) / g;
    const double stretch_y = std::sqrt(q + c1 * c1 * cn * cn) / g;

    double du = 0.0, dv = 0.0;
    info.getJacobian(info, p, du, dv);

    const double K = info.open_scale;
    const double W = info.texture_layer.width;
    const double Ht = info.texture_layer.height;
    xr = std::min(std::fabs(K * distance_scale * stretch_x * W / du), kRadiusBeforeSharpness);
    yr = std::min(std::fabs(K * distance_scale * stretch_y * Ht / dv), kRadiusBeforeSharpness);

    xr = xr * info.sharpness_inv;
    yr = yr * info.sharpness_inv;

    if (xr >= kMaxFootprintRadius)
        xr = kMaxFootprintRadius;
    if (yr >= kMaxFootprintRadius)
        yr = kMaxFootprintRadius;
}

template <class T>
int TopologycalSampling(const RenderInfoTemplate<Cylinder>& info, const Vector3& p, double u,
                        double v, double xr, double yr, PF_LayerDef* layer, PF_PixelFloat& out)
{
    (void)p;
    const PF_SampPB pb = areaSampleBlock(xr, yr, layer);

    const ExtensionInfo& extension = info.extension;
    const double K = std::fabs(info.open_scale);
    const double period = extension.interval + 1.0;  // one copy and its gap, v units
    const double Ht = info.texture_layer.height;

    const int32_t k = copyIndexOf(v, period);
    const double w = v - period * k;  // v inside copy k's period

    int err = PF_Err_NONE;
    if (copyExists(extension, k)) {
        err = sampleCopy<T>(info, K, u, w, k, xr, yr, pb, out);
    } else {
        out.alpha = out.red = out.green = out.blue = 0.0f;
    }

    // At most one neighbouring copy: the one above when the footprint reaches the top of this
    // period, otherwise the one below when it reaches down to that copy's top edge.
    PF_PixelFloat neighbour = {};
    if (copyAboveExists(extension, k) && (period - w) * Ht < yr + 1.0) {
        err = sampleCopy<T>(info, K, u, w - period, k + 1, xr, yr, pb, neighbour);
    } else {
        const int32_t below = k - 1;
        if (!copyExists(extension, below) || !(yr > (w + extension.interval) * Ht))
            return err;
        err = sampleCopy<T>(info, K, u, w + period, below, xr, yr, pb, neighbour);
    }
    mergeFootprintPart(neighbour, out);
    return err;
}

template <class T>
int ULoopSampling(const RenderInfoTemplate<Cylinder>& info, const double& K, double u, double v,
                  double xr, double ignored, const PF_SampPB& pb, PF_PixelFloat& out)
{
    (void)ignored;
    const double W = info.texture_layer.width;
    const double Ht = info.texture_layer.height;
    const PF_Fixed y = roundToFixed(Ht * v);
    const PF_Fixed x = roundToFixed(W * u);
    int err = sampleStraight<T>(info, x, y, pb, out);

    // The right-end test carries a +1 pixel margin, the left-end test none.
    double far_side_x = 0.0;
    if ((K - u) * W < xr + 1.0)
        far_side_x = (u - K) * W;
    else if ((K + u - 1.0) * W < xr)
        far_side_x = (u + K) * W;
    else
        return err;

    PF_PixelFloat far_side = {};
    err = sampleStraight<T>(info, roundToFixed(far_side_x), y, pb, far_side);
    mergeFootprintPart(far_side, out);
    return err;
}

template <class T>
int AreaSample(const PF_InData* in_data, const AEGP_SuiteHandler& suites, int x, int y,
               const PF_SampPB& pb, PF_PixelFloat& out)
{
    T sample = {};
    const PF_Err err = hostAreaSample(suites, in_data->effect_ref, x, y, pb, sample);
    out = PixelTraits<T>::toFloat(sample);
    return err;
}

PF_SampPB areaSampleBlock(double x_radius, double y_radius, PF_LayerDef* src)
{
    PF_SampPB pb = {};
    pb.x_radius = clampSampleRadius(x_radius);
    pb.y_radius = clampSampleRadius(y_radius);
    pb.src = src;
    return pb;
}

template <class T>
int sampleStraight(const RenderInfoTemplate<Cylinder>& info, PF_Fixed x, PF_Fixed y,
                   const PF_SampPB& pb, PF_PixelFloat& out)
{
    return AreaSample<T>(info.in_data, info.suites, x, y, pb, out);
}

template <>
int sampleStraight<PF_PixelFloat>(const RenderInfoTemplate<Cylinder>& info, PF_Fixed x, PF_Fixed y,
                                  const PF_SampPB& pb, PF_PixelFloat& out)
{
    return info.suites.SamplingFloatSuite1()->area_sample_float(info.in_data->effect_ref, x, y,
                                                                &pb, &out);
}

template int TopologycalSampling<PF_Pixel>(const RenderInfoTemplate<Cylinder>&, const Vector3&,
                                           double, double, double, double, PF_LayerDef*,
                                           PF_PixelFloat&);
template int TopologycalSampling<PF_Pixel16>(const RenderInfoTemplate<Cylinder>&, const Vector3&,
                                             double, double, double, double, PF_LayerDef*,
                                             PF_PixelFloat&);
template int TopologycalSampling<PF_PixelFloat>(const RenderInfoTemplate<Cylinder>&,
                                                const Vector3&, double, double, double, double,
                                                PF_LayerDef*, PF_PixelFloat&);

template int ULoopSampling<PF_Pixel>(const RenderInfoTemplate<Cylinder>&, const double&, double,
                                     double, double, double, const PF_SampPB&, PF_PixelFloat&);
template int ULoopSampling<PF_Pixel16>(const RenderInfoTemplate<Cylinder>&, const double&, double,
                                       double, double, double, const PF_SampPB&, PF_PixelFloat&);
template int ULoopSampling<PF_PixelFloat>(const RenderInfoTemplate<Cylinder>&, const double&,
                                          double, double, double, double, const PF_SampPB&,
                                          PF_PixelFloat&);

template int AreaSample<PF_Pixel>(const PF_InData*, const AEGP_SuiteHandler&, int, int,
                                  const PF_SampPB&, PF_PixelFloat&);
template int AreaSample<PF_Pixel16>(const PF_InData*, const AEGP_SuiteHandler&, int, int,
                                    const PF_SampPB&, PF_PixelFloat&);

template int sampleStraight<PF_Pixel>(const RenderInfoTemplate<Cylinder>&, PF_Fixed, PF_Fixed,
                                      const PF_SampPB&, PF_PixelFloat&);
template int sampleStraight<PF_Pixel16>(const RenderInfoTemplate<Cylinder>&, PF_Fixed, PF_Fixed,
                                        const PF_SampPB&, PF_PixelFloat&);
