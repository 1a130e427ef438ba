#include "raytrace/PrimaryRays.h"

#include <algorithm>
#include <cmath>

#include "math/PixelConvert.h"
#include "raytrace/PixelCameraRays.h"
#include "raytrace/Shading.h"

using Vectormath::Aos::Matrix4;
using Vectormath::Aos::Vector3;
using Vectormath::Aos::Vector4;

namespace {

constexpr A_long kRenderSideInside = 2;
constexpr A_long kRenderSideOutside = 3;

constexpr int kSampleCount = 9;

// Grid column and row (indices into kGridOffsets) of each sample of msaa_sampling_point.
constexpr int kSampleGrid[kSampleCount][2] = {
    {1, 1}, {0, 1}, {1, 2}, {2, 1}, {1, 0}, {0, 0}, {0, 2}, {2, 0}, {2, 2},
};

constexpr bool gridMatchesSamplingPoints()
{
    for (int i = 0; i < kSampleCount; ++i)
        if (kGridOffsets[kSampleGrid[i][0]] != msaa_sampling_point[i][0] ||
            kGridOffsets[kSampleGrid[i][1]] != msaa_sampling_point[i][1])
            return false;
    return true;
}
static_assert(gridMatchesSamplingPoints(), "every sample offset is one of the grid offsets");

const PF_PixelFloat kTransparent = {0.0f, 0.0f, 0.0f, 0.0f};

// The quadric's inverse squared semi-axes and, for a perspective camera, the eye every ray
// starts from, widened to double once for all the rays of a pixel.
class CameraQuadric {
public:
    explicit CameraQuadric(const RenderInfoTemplate<Cylinder>& info)
        : isx_(info.inv_size_sq.getX()),
          isy_(info.inv_size_sq.getY()),
          isz_(info.inv_size_sq.getZ()),
          perspective_(info.perspective),
          eye_x_(info.eye_x),
          eye_y_(info.eye_y),
          eye_z_(info.eye_z),
          eye_implicit_(info.eye_implicit)
    {
    }

    QuadricCrossing crossing(const Ray& ray) const
    {
        return perspective_ ? crossing<true>(ray) : crossing<false>(ray);
    }

    template <bool kPerspective>
    QuadricCrossing crossing(const Ray& ray) const
    {
        if (kPerspective)
            return crossingFrom(ray.direction, eye_x_, eye_y_, eye_z_, eye_implicit_);
        const double ox = ray.origin.getX(), oy = ray.origin.getY(), oz = ray.origin.getZ();
        const double C = oy * oy * isy_ + ox * ox * isx_ - oz * oz * isz_ - 1.0;
        return crossingFrom(ray.direction, ox, oy, oz, C);
    }

private:
    QuadricCrossing crossingFrom(const Vector3& d, double ox, double oy, double oz, double C) const
    {
        const double dx = d.getX(), dy = d.getY(), dz = d.getZ();
        const double A = dy * dy * isy_ + dx * dx * isx_ - dz * dz * isz_;
        const double E = dy * oy * isy_ + dx * ox * isx_ - dz * oz * isz_;
        return QuadricCrossing{A, -E, E * E - A * C};
    }

    double isx_, isy_, isz_;
    bool perspective_;
    double eye_x_, eye_y_, eye_z_, eye_implicit_;
};

bool isHit(const QuadricCrossing& q) { return q.D >= 0.0; }

// Colour seen along `ray` whose crossings are given by A, B, D, honouring the render side.
template <class T>
PF_PixelFloat shadeCrossing(const RenderInfoTemplate<Cylinder>& info, const Ray& ray, double A,
                            double B, double D)
{
    const double s = std::sqrt(D);
    const double r_minus = (B - s) / A;
    const double r_plus = (B + s) / A;
    // With A > 0 the ray enters through the outer face first; with A < 0 (steep rays through a
    // waisted surface) the nearer crossing is the inner face. Equal roots count as A < 0.
    const bool near_is_outer = r_minus < r_plus;
    const double tn = near_is_outer ? r_minus : r_plus;
    const double tf = near_is_outer ? r_plus : r_minus;

    const bool outer_allowed = info.render_side != kRenderSideInside;
    const bool inner_allowed = info.render_side != kRenderSideOutside;
    const bool near_allowed = (near_is_outer ? outer_allowed : inner_allowed) && tn > 0.0;
    const bool far_allowed = near_is_outer ? inner_allowed : outer_allowed;

    if (tf <= 0.0)
        return kTransparent;

    PF_PixelFloat front = kTransparent;
    if (near_allowed) {
        Ray_GetColor<T>(ray, tn, info, front);
        if (!far_allowed || front.alpha >= 1.0f)
            return front;
    } else if (!far_allowed) {
        return kTransparent;
    }
    PF_PixelFloat back = kTransparent;
    Ray_GetColor<T>(ray, tf, info, back);
    return straightOver(front, back);
}

}  // namespace

Ray cameraRay(const RenderInfoTemplate<Cylinder>& info, int x, int y, float dx, float dy)
{
    const Matrix4& m = info.camera_to_object;
    const float sx = screenX(info, x, dx);
    const float sy = screenY(info, y, dy);
    const Vector3 eye(m.getCol3());

    Ray ray;
    if (info.perspective) {
        ray.direction = normalize(Vector3(m * Vector3(sx, sy, -info.neg_focal)));
        ray.origin = Vector4(eye, 1.0f);
    } else {
        // Parallel rays start one largest radius behind the image plane.
        const float back = parallelRayBackOff(info);
        ray.direction = normalize(Vector3(m * Vector3(0.0f, 0.0f, 1.0f)));
        ray.origin = Vector4(Vector3(m * Vector3(sx, sy, -back)) + eye, 1.0f);
    }
    return ray;
}

QuadricCrossing crossingOf(const RenderInfoTemplate<Cylinder>& info, const Ray& ray)
{
    return CameraQuadric(info).crossing(ray);
}

namespace {

// The corner pass of a perspective camera, the common case, written lane by lane over the
// four corners so that the compiler can run the lanes side by side in SIMD registers. Every
// lane performs exactly the operations of PixelCameraRays::ray and CameraQuadric::crossing,
// in the same order and precision, so the hits, the ray and the crossing are bit-identical.
class PerspectiveCorners {
public:
    // Grid column and row of each corner, in testing order (samples 5, 6, 7, 8).
    static constexpr int kColumn[4] = {0, 0, 2, 2};
    static constexpr int kRow[4] = {0, 2, 0, 2};

    PerspectiveCorners(const PixelCameraRays& rays, const RenderInfoTemplate<Cylinder>& info)
    {
        static_assert(kSampleGrid[5][0] == 0 && kSampleGrid[5][1] == 0 &&
                          kSampleGrid[6][0] == 0 && kSampleGrid[6][1] == 2 &&
                          kSampleGrid[7][0] == 2 && kSampleGrid[7][1] == 0 &&
                          kSampleGrid[8][0] == 2 && kSampleGrid[8][1] == 2,
                      "the corners are tested in the order of msaa_sampling_point");
        const Vector4& z = rays.zTerm();
        float tx[4], ty[4], tz[4], inv[4];
        for (int c = 0; c < 4; ++c) {
            const Vector4& xt = rays.xTerm(kColumn[c]);
            const Vector4& yt = rays.yTerm(kRow[c]);
            tx[c] = (xt.getX() + yt.getX()) + z.getX();
            ty[c] = (xt.getY() + yt.getY()) + z.getY();
            tz[c] = (xt.getZ() + yt.getZ()) + z.getZ();
        }
        for (int c = 0; c < 4; ++c)
            inv[c] = 1.0f / std::sqrt(tx[c] * tx[c] + ty[c] * ty[c] + tz[c] * tz[c]);
        for (int c = 0; c < 4; ++c) {
            dx_[c] = tx[c] * inv[c];
            dy_[c] = ty[c] * inv[c];
            dz_[c] = tz[c] * inv[c];
        }
        const double isx = info.inv_size_sq.getX(), isy = info.inv_size_sq.getY(),
                     isz = info.inv_size_sq.getZ();
        const double ox = info.eye_x, oy = info.eye_y, oz = info.eye_z, C = info.eye_implicit;
        for (int c = 0; c < 4; ++c) {
            const double dx = dx_[c], dy = dy_[c], dz = dz_[c];
            A_[c] = dy * dy * isy + dx * dx * isx - dz * dz * isz;
            E_[c] = dy * oy * isy + dx * ox * isx - dz * oz * isz;
            D_[c] = E_[c] * E_[c] - A_[c] * C;
        }
    }

    int hits() const
    {
        int n = 0;
        for (int c = 0; c < 4; ++c)
            n += D_[c] >= 0.0 ? 1 : 0;
        return n;
    }

    // The last corner's ray and crossing, D zeroed on a miss.
    void last(const PixelCameraRays& rays, Ray& ray, QuadricCrossing& crossing) const
    {
        ray.direction = Vector3(dx_[3], dy_[3], dz_[3]);
        ray.origin = rays.origin();
        crossing = QuadricCrossing{A_[3], -E_[3], D_[3] >= 0.0 ? D_[3] : 0.0};
    }

private:
    float dx_[4], dy_[4], dz_[4];  // unit directions
    double A_[4], E_[4], D_[4];
};

// The corner pass: how many of the four corners hit, and the last corner's ray and crossing
// (D zeroed on a miss), which every later corner would have overwritten.
int cornerPass(const PixelCameraRays& rays, const RenderInfoTemplate<Cylinder>& info,
               const CameraQuadric& quadric, Ray& last_ray, QuadricCrossing& last)
{
    if (info.perspective) {
        const PerspectiveCorners corners(rays, info);
        corners.last(rays, last_ray, last);
        return corners.hits();
    }
    int hits = 0;
    for (int index = 5; index < kSampleCount; ++index) {
        last_ray = rays.ray<false>(kSampleGrid[index][0], kSampleGrid[index][1]);
        last = quadric.crossing<false>(last_ray);
        if (isHit(last))
            ++hits;
        else
            last.D = 0.0;
    }
    return hits;
}

}  // namespace

double msaaRayTest(int x, int y, const RenderInfoTemplate<Cylinder>& info, int& count, double& A,
                   double& B, double& D, Ray& ray)
{
    // The representative sample is kept in locals and handed out once at the end: stores
    // through the output references would make every later read of the record a reload.
    PixelCameraRays rays(info, x, y);
    const CameraQuadric quadric(info);

    // Corners first: they settle the empty background and the surface's interior. Each
    // corner replaces the previous one, so the last corner is what the outputs keep.
    Ray corner_ray;
    QuadricCrossing corner = {0.0, 0.0, 0.0};
    const int corner_hits = cornerPass(rays, info, quadric, corner_ray, corner);
    if (corner_hits == 0 || corner_hits == 4) {
        ray = corner_ray;
        A = corner.A;
        B = corner.B;
        D = corner.D;
        if (corner_hits == 0)
            return 0.0;
        count = kSampleCount;
        return 1.0;
    }

    // A silhouette crosses the pixel: count all nine and keep the first hit's ray. The centre
    // sample stands in until a hit; without one, D stays the last corner's.
    rays.addCentreOffsets();
    int hits = count;
    Ray chosen_ray;
    QuadricCrossing chosen = corner;
    bool have_hit = false;
    for (int index = 0; index < kSampleCount; ++index) {
        const Ray sample = rays.ray(kSampleGrid[index][0], kSampleGrid[index][1]);
        const QuadricCrossing q = quadric.crossing(sample);
        if (index == 0) {
            chosen_ray = sample;
            chosen.A = q.A;
            chosen.B = q.B;
        }
        if (q.A == 0.0)
            continue;
        if (!isHit(q))
            continue;
        ++hits;
        if (!have_hit) {
            have_hit = true;
            chosen_ray = sample;
            chosen = q;
        }
    }
    count = hits;
    ray = chosen_ray;
    A = chosen.A;
    B = chosen.B;
    D = chosen.D;
    return float(hits) / float(kSampleCount);
}

template <class T>
PF_Err RayTrace_PixelCallback(void* refcon, A_long thread_index, A_long i, A_long iterations)
{
    (void)iterations;
    if (thread_index < 0)
        return PF_Err_NONE;
    const RenderInfoTemplate<Cylinder>& info = *static_cast<const RenderInfoTemplate<Cylinder>*>(refcon);
    try {
        const PF_LayerDef& output = *info.output;
        A_long x = 0, y = 0;
        pixelOfIteration(output.width, i, x, y);

        int count = 0;
        double A = 0.0, B = 0.0, D = 0.0;
        Ray ray;
        const double coverage = msaaRayTest(x, y, info, count, A, B, D, ray);

        T& pixel = *worldPixelAt<T>(output, x, y);
        if (count < 1) {
            pixel = T{};  // transparent black in every depth, no conversion needed
            return PF_Err_NONE;
        }
        PF_PixelFloat colour = shadeCrossing<T>(info, ray, A, B, D);
        colour.alpha = float(colour.alpha * coverage);
        pixel = fromFloatPixel<T>(colour);
    } catch (PF_Err err) {
        return err;
    }
    return PF_Err_NONE;
}

template PF_Err RayTrace_PixelCallback<PF_Pixel>(void*, A_long, A_long, A_long);
template PF_Err RayTrace_PixelCallback<PF_Pixel16>(void*, A_long, A_long, A_long);
template PF_Err RayTrace_PixelCallback<PF_PixelFloat>(void*, A_long, A_long, A_long);
