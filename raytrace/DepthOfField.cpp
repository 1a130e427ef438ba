#include "raytrace/DepthOfField.h"

#include <algorithm>
#include <cmath>
#include <cstring>

#include "AEConfig.h"
#include "AE_EffectCB.h"
#include "AE_EffectCBSuites.h"
#include "AE_MyLib/AEObject/AEO_EffectWorld.h"
#include "math/FixedPoint.h"
#include "math/PixelConvert.h"
#include "raytrace/FootprintSampling.h"
#include "raytrace/PrimaryRays.h"
#include "raytrace/Shading.h"

using Vectormath::Aos::Vector3;

namespace {

constexpr A_long kRenderSideInside = 2;
constexpr A_long kRenderSideOutside = 3;
constexpr float kNoDepth = -1.0f;
// Smallest defocus distance, pixels: keeps the circle of confusion finite in the focal plane.
constexpr double kMinDefocus = 1e-5;

enum DepthWorld { kNearColour = 0, kFarColour = 1, kNearDepth = 2, kFarDepth = 3 };

const PF_PixelFloat kTransparent = {0.0f, 0.0f, 0.0f, 0.0f};

PF_LayerDef& depthWorld(const RenderInfoTemplate<Cylinder>& info, DepthWorld which)
{
    return info.depth_worlds[which]->world();
}

// Depth worlds keep one float in each pixel's four bytes.
void writeDepth(const PF_LayerDef& world, A_long x, A_long y, float depth)
{
    std::memcpy(worldPixelAt<PF_Pixel>(world, x, y), &depth, sizeof depth);
}

float readDepth(const PF_LayerDef& world, A_long x, A_long y)
{
    float depth = 0.0f;
    std::memcpy(&depth, worldPixelAt<PF_Pixel>(world, x, y), sizeof depth);
    return depth;
}

// One surface layer of the depth pass: the hit at t when it is in front of the camera and the
// render side shows it; otherwise nothing, though a waisted surface still reports how deep the
// hidden face lies so the blur of its neighbours can reach over it.
template <class T>
void storeLayer(const RenderInfoTemplate<Cylinder>& info, const Ray& ray, double t, bool side_shown,
                double coverage, const PF_LayerDef& colour_world, const PF_LayerDef& depth_world,
                A_long x, A_long y)
{
    PF_PixelFloat colour = kTransparent;
    float depth = kNoDepth;
    if (t > 0.0 && side_shown) {
        Ray_GetColor<T>(ray, t, info, colour);
        depth = float(t);
    } else if (info.inv_size.getZ() != 0.0f) {
        depth = float(std::fabs(t));
    }
    colour.alpha = float(colour.alpha * coverage);
    *worldPixelAt<T>(colour_world, x, y) = fromFloatPixel<T>(colour);
    writeDepth(depth_world, x, y, depth);
}

// Depth of a ray that misses: its closest approach to the surface when that passes within the
// largest blur radius (in pixels) of the silhouette, so the blurred edge can spread over it.
float missDepth(const RenderInfoTemplate<Cylinder>& info, const Ray& ray, double A, double B)
{
    const double tc = A != 0.0 ? B / A : 0.0;
    const Vector3 closest = Vector3(ray.origin) + ray.direction * float(tc);
    const double distance = info.evaluateDistance(closest);
    const double focal = std::fabs(info.neg_focal);
    return distance * focal / tc < info.dof_blur ? float(tc) : kNoDepth;
}

// The layer in `world` around pixel (x, y), blurred for a layer at `depth`. The box is clipped
// to the image, so near an edge it shrinks and its centre moves inward.
template <class T>
PF_Err blurredLayer(const RenderInfoTemplate<Cylinder>& info, PF_LayerDef& world, A_long x,
                    A_long y, double depth, PF_PixelFloat& out)
{
    const double r = circleOfConfusion(depth, info.focus_distance, info.dof_blur);
    const double rx = r * info.downsample_x;
    const double ry = r * info.downsample_y;
    const double x0 = std::max(x - rx, 0.0);
    const double x1 = std::min(x + rx, double(world.width - 1));
    const double y0 = std::max(y - ry, 0.0);
    const double y1 = std::min(y + ry, double(world.height - 1));

    const PF_SampPB pb = areaSampleBlock((x1 - x0) * 0.5, (y1 - y0) * 0.5, &world);
    return sampleStraight<T>(info, roundToFixed((x0 + x1) * 0.5), roundToFixed((y0 + y1) * 0.5),
                             pb, out);
}

}  // namespace

double circleOfConfusion(double depth, double focus_distance, double max_blur)
{
    const double defocus = std::max(std::fabs(depth - focus_distance), kMinDefocus);
    return max_blur / (focus_distance / defocus + 1.0);
}

template <class T>
PF_Err RayTrace_PixelDepthCallback(void* refcon, A_long thread_index, A_long i, A_long iterations)
{
    (void)iterations;
    if (thread_index < 0)
        return PF_Err_NONE;
    const RenderInfoTemplate<Cylinder>& info = *static_cast<const RenderInfoTemplate<Cylinder>*>(refcon);
    try {
        A_long x = 0, y = 0;
        pixelOfIteration(info.output->width, i, x, y);
        const PF_LayerDef& near_colour = depthWorld(info, kNearColour);
        const PF_LayerDef& far_colour = depthWorld(info, kFarColour);
        const PF_LayerDef& near_depth = depthWorld(info, kNearDepth);
        const PF_LayerDef& far_depth = depthWorld(info, kFarDepth);

        int count = 0;
        double A = 0.0, B = 0.0, D = 0.0;
        Ray ray;
        const double coverage = msaaRayTest(x, y, info, count, A, B, D, ray);

        if (count < 1) {
            const float depth = missDepth(info, ray, A, B);
            *worldPixelAt<T>(near_colour, x, y) = fromFloatPixel<T>(kTransparent);
            *worldPixelAt<T>(far_colour, x, y) = fromFloatPixel<T>(kTransparent);
            writeDepth(near_depth, x, y, depth);
            writeDepth(far_depth, x, y, depth);
            return PF_Err_NONE;
        }
        // Not reordered by the sign of A: the "near" layer is the first root of the formula.
        const double s = std::sqrt(D);
        const double tn = (B - s) / A;
        const double tf = (B + s) / A;
        storeLayer<T>(info, ray, tn, info.render_side != kRenderSideInside, coverage, near_colour,
                      near_depth, x, y);
        storeLayer<T>(info, ray, tf, info.render_side != kRenderSideOutside, coverage, far_colour,
                      far_depth, x, y);
    } catch (PF_Err err) {
        return err;
    }
    return PF_Err_NONE;
}

template <class T>
PF_Err DofCompositeCallback(void* refcon, A_long thread_index, A_long i, A_long iterations)
{
    (void)iterations;
    if (thread_index < 0)
        return PF_Err_NONE;
    const RenderInfoTemplate<Cylinder>& info = *static_cast<const RenderInfoTemplate<Cylinder>*>(refcon);
    PF_Err err = PF_Err_NONE;
    try {
        A_long x = 0, y = 0;
        pixelOfIteration(info.output->width, i, x, y);
        const float d0 = readDepth(depthWorld(info, kNearDepth), x, y);
        const float d1 = readDepth(depthWorld(info, kFarDepth), x, y);
        const bool near_in_front = d0 < d1;
        PF_LayerDef& front_world = depthWorld(info, near_in_front ? kNearColour : kFarColour);
        PF_LayerDef& back_world = depthWorld(info, near_in_front ? kFarColour : kNearColour);
        const double front_depth = near_in_front ? d0 : d1;
        const double back_depth = near_in_front ? d1 : d0;

        PF_PixelFloat front = kTransparent;
        if (front_depth >= 0.0)
            err = blurredLayer<T>(info, front_world, x, y, front_depth, front);
        PF_PixelFloat back = kTransparent;
        if (back_depth >= 0.0 && front.alpha < 1.0f)
            err = blurredLayer<T>(info, back_world, x, y, back_depth, back);

        *worldPixelAt<T>(*info.output, x, y) = fromFloatPixel<T>(straightOver(front, back));
    } catch (PF_Err thrown) {
        return thrown;
    }
    return err;
}

template PF_Err RayTrace_PixelDepthCallback<PF_Pixel>(void*, A_long, A_long, A_long);
template PF_Err RayTrace_PixelDepthCallback<PF_Pixel16>(void*, A_long, A_long, A_long);
template PF_Err RayTrace_PixelDepthCallback<PF_PixelFloat>(void*, A_long, A_long, A_long);
template PF_Err DofCompositeCallback<PF_Pixel>(void*, A_long, A_long, A_long);
template PF_Err DofCompositeCallback<PF_Pixel16>(void*, A_long, A_long, A_long);
template PF_Err DofCompositeCallback<PF_PixelFloat>(void*, A_long, A_long, A_long);
