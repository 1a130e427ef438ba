#pragma once
// Camera rays, the 3x3 multi-sample coverage test and the per-pixel callback of the single
// render pass. Everything happens in the shape's local space: camera_to_object carries camera
// space straight into it, where the surface is x^2/a^2 + y^2/b^2 - z^2/c^2 = 1.

#include <cstddef>

#include "AEConfig.h"
#include "AE_Effect.h"
#include "render/RenderInfo.h"

// Sub-pixel sample offsets (dx, dy) in pixels: the centre of a 3x3 grid, then the four edge
// midpoints, then the four corners. The corners (5..8) alone decide the common cases.
inline constexpr float msaa_sampling_point[9][2] = {
    {1.0f / 2, 1.0f / 2}, {1.0f / 6, 1.0f / 2}, {1.0f / 2, 5.0f / 6},
    {5.0f / 6, 1.0f / 2}, {1.0f / 2, 1.0f / 6}, {1.0f / 6, 1.0f / 6},
    {1.0f / 6, 5.0f / 6}, {5.0f / 6, 1.0f / 6}, {5.0f / 6, 5.0f / 6},
};

// The camera ray through sub-pixel position (x + dx, y + dy) of the output, in local space:
// unit direction, origin with w = 1. Single precision, as the camera data is.
Ray cameraRay(const RenderInfoTemplate<Cylinder>& info, int x, int y, float dx, float dy);

// Where a ray meets the quadric: t = (B +- sqrt(D)) / A. D is the quarter discriminant, so the
// ray crosses the surface when D >= 0.
struct QuadricCrossing {
    double A;
    double B;
    double D;
};

// The crossing coefficients of a camera ray of `info`, in double precision. Perspective rays
// all start at the eye, whose implicit value the record already holds.
QuadricCrossing crossingOf(const RenderInfoTemplate<Cylinder>& info, const Ray& ray);

// Casts the pixel's sample rays. Returns the covered fraction in [0, 1]; `count` receives the
// number of hitting samples (9 when all four corners hit), A, B, D and `ray` the crossing of
// the representative sample. The caller zeroes count, A, B and D beforehand.
double msaaRayTest(int x, int y, const RenderInfoTemplate<Cylinder>& info, int& count, double& A,
                   double& B, double& D, Ray& ray);

// Pixel (x, y) of iteration index i over a world `width` pixels wide, row-major.
inline void pixelOfIteration(A_long width, A_long i, A_long& x, A_long& y)
{
    y = width != 0 ? i / width : 0;
    x = i - y * width;
}

// Address of pixel (x, y) of a world whose pixels are T.
template <class T>
inline T* worldPixelAt(const PF_LayerDef& world, A_long x, A_long y)
{
    char* row = reinterpret_cast<char*>(world.data) + static_cast<std::ptrdiff_t>(y) * world.rowbytes;
    return reinterpret_cast<T*>(row) + x;
}

// Straight colour `front` laid over straight colour `back`.
inline PF_PixelFloat straightOver(const PF_PixelFloat& front, const PF_PixelFloat& back)
{
    const float w = (1.0f - front.alpha) * back.alpha;
    const float alpha = front.alpha + w;
    PF_PixelFloat out;
    out.alpha = alpha;
    out.red = front.red * front.alpha + back.red * w;
    out.green = front.green * front.alpha + back.green * w;
    out.blue = front.blue * front.alpha + back.blue * w;
    if (alpha > 0.0f) {
        out.red /= alpha;
        out.green /= alpha;
        out.blue /= alpha;
    }
    return out;
}

// Host iteration callback of the single pass: shades output pixel i of info.output (refcon is
// the render record) and writes it in the output depth T, alpha scaled by the coverage.
// Returns 0, or the PF_Err of a sampling suite that could not be acquired.
template <class T>
PF_Err RayTrace_PixelCallback(void* refcon, A_long thread_index, A_long i, A_long iterations);

extern template PF_Err RayTrace_PixelCallback<PF_Pixel>(void*, A_long, A_long, A_long);
extern template PF_Err RayTrace_PixelCallback<PF_Pixel16>(void*, A_long, A_long, A_long);
extern template PF_Err RayTrace_PixelCallback<PF_PixelFloat>(void*, A_long, A_long, A_long);
