#pragma once
// The camera rays of one output pixel's 3x3 sample grid.
//
// The grid has only three offsets per axis, so the screen coordinates of the nine samples, and
// their products with the camera's axis columns, take three values each: they are computed
// once per pixel instead of once per sample. Each ray then costs one sum and one
// normalisation. The arithmetic, single precision, is exactly that of cameraRay, operation for
// operation, so the rays are bit-identical to it.

#include <algorithm>
#include <cmath>

#include "render/RenderInfo.h"

// Sub-pixel offset of the grid's first, middle and last column (or row), in pixels.
inline constexpr float kGridOffsets[3] = {1.0f / 6, 1.0f / 2, 5.0f / 6};

// Screen x of the sample at sub-pixel offset dx in column x: full-resolution pixels from the
// principal point, widened by the pixel aspect.
inline float screenX(const RenderInfoTemplate<Cylinder>& info, int x, float dx)
{
    return ((float(x) + dx) / float(info.downsample_x) - info.image_center[0]) *
           float(info.pixel_aspect);
}

// Screen y of the sample at sub-pixel offset dy in row y.
inline float screenY(const RenderInfoTemplate<Cylinder>& info, int y, float dy)
{
    return (float(y) + dy) / float(info.downsample_y) - info.image_center[1];
}

// Distance from the image plane back to the start of a parallel camera's rays: the largest
// semi-axis, so every ray starts outside the shape.
inline float parallelRayBackOff(const RenderInfoTemplate<Cylinder>& info)
{
    const Vectormath::Aos::Vector3& size = info.size;
    return std::max(std::max(std::fabs(size.getX()), std::fabs(size.getY())),
                    std::fabs(size.getZ()));
}

class PixelCameraRays {
public:
    // Ready for the outer columns and rows (the pixel's corners); the middle ones follow
    // from addCentreOffsets().
    PixelCameraRays(const RenderInfoTemplate<Cylinder>& info, int x, int y)
        : info_(info), x_(x), y_(y), perspective_(info.perspective)
    {
        using Vectormath::Aos::Vector3;
        using Vectormath::Aos::Vector4;
        const Vectormath::Aos::Matrix4& m = info.camera_to_object;
        for (int k = 0; k < 3; k += 2)
            addOffsets(k);
        const Vector3 eye(m.getCol3());
        if (perspective_) {
            // The image plane lies at the focal length in front of the camera.
            z_term_ = m.getCol2() * -info.neg_focal;
            origin_ = Vector4(eye, 1.0f);
        } else {
            z_term_ = m.getCol2() * -parallelRayBackOff(info);
            eye_ = eye;
            parallel_direction_ = normalize(Vector3(m * Vector3(0.0f, 0.0f, 1.0f)));
        }
    }

    // The three terms whose sum (x + y) + z is the unnormalised direction of the sample in
    // `column` and `row` (the through vector of ray()).
    const Vectormath::Aos::Vector4& xTerm(int column) const { return x_terms_[column]; }
    const Vectormath::Aos::Vector4& yTerm(int row) const { return y_terms_[row]; }
    const Vectormath::Aos::Vector4& zTerm() const { return z_term_; }
    // Perspective rays: the eye, w = 1.
    const Vectormath::Aos::Vector4& origin() const { return origin_; }

    // Prepares the middle column and row, which only pixels on a silhouette need.
    void addCentreOffsets() { addOffsets(1); }

    // The ray of the sample in grid column `column` and row `row` (0, 1, 2 for the offsets
    // 1/6, 1/2, 5/6); the middle ones need addCentreOffsets() first.
    Ray ray(int column, int row) const
    {
        return perspective_ ? ray<true>(column, row) : ray<false>(column, row);
    }

    // The same for a camera kind known to the caller (the record's `perspective`), so that a
    // loop over samples carries no branch on it.
    template <bool kPerspective>
    Ray ray(int column, int row) const
    {
        using Vectormath::Aos::Vector3;
        using Vectormath::Aos::Vector4;
        const Vector4 through = x_terms_[column] + y_terms_[row] + z_term_;
        Ray ray;
        if (kPerspective) {
            ray.direction = normalize(Vector3(through));
            ray.origin = origin_;
        } else {
            ray.direction = parallel_direction_;
            ray.origin = Vector4(Vector3(through) + eye_, 1.0f);
        }
        return ray;
    }

private:
    void addOffsets(int k)
    {
        const Vectormath::Aos::Matrix4& m = info_.camera_to_object;
        x_terms_[k] = m.getCol0() * screenX(info_, x_, kGridOffsets[k]);
        y_terms_[k] = m.getCol1() * screenY(info_, y_, kGridOffsets[k]);
    }

    const RenderInfoTemplate<Cylinder>& info_;
    int x_;
    int y_;
    bool perspective_;
    Vectormath::Aos::Vector4 x_terms_[3];  // first camera axis times each screen x
    Vectormath::Aos::Vector4 y_terms_[3];  // second camera axis times each screen y
    Vectormath::Aos::Vector4 z_term_;      // third camera axis times the image plane depth
    Vectormath::Aos::Vector4 origin_;      // perspective: the eye, w = 1
    Vectormath::Aos::Vector3 eye_;         // parallel: the camera position
    Vectormath::Aos::Vector3 parallel_direction_;
};
