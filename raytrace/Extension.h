#pragma once

#include <cmath>
#include <cstdint>

#include "math/Vectormath.h"
#include "raytrace/AxisAngle.h"
#include "raytrace/ShapeForward.h"

// The index of the copy that v falls in, floor(v / period), as a 32-bit integer. No render has
// more than 32767 copies on a side, so an index far beyond that (an extreme or non-finite v) is
// held at +-2^30: no copy exists there either way, and k + 1, k - 1 and -k cannot overflow.
inline int32_t copyIndexOf(double v, double period)
{
    constexpr double kFar = 1073741824.0;  // 2^30
    const double k = std::floor(v / period);
    if (!(k > -kFar))  // NaN included
        return -int32_t(kFar);
    if (k > kFar)
        return int32_t(kFar);
    return int32_t(k);
}

// Shape-specific settings of the render record: the extended cylinder, copies of the texture
// repeated beyond its own height along the axis. The general rules serve Cylinder (the shape
// every render uses) and Sphere; Hyperboloid has its own below.
template <class Shape>
struct ExtraRenderInfo {
    struct ExtensionInfo {
        int32_t head_extensions;  // copies on the negative-v side
        int32_t tail_extensions;  // copies on the positive-v side
        bool flip_vertical;       // mirror every odd copy
        double screw;             // u shift per copy, in turns
        double interval;          // gap between copies, in v units

        // Maps a v beyond the texture back into the copy it falls in (u shifted by the screw,
        // v mirrored for odd copies). v in a gap, or beyond the last copy, stays outside
        // [0, 1]. Applied after the open factor.
        template <class S>
        void modifyUVByExtendedCylinder(const Vectormath::Aos::Vector3& p,
                                        const RenderInfoTemplate<S>& info, double& u,
                                        double& v) const
        {
            (void)p;
            const double period = interval + 1.0;
            const int32_t k = copyIndexOf(v, period);
            if (k == 0)
                return;
            if (k < 0 && head_extensions < -k)
                return;
            if (k > 0 && tail_extensions < k)
                return;
            u = wrapByPeriod(u + screw * k, info.open_scale);
            v = v - period * k;
            if ((k & 1) && flip_vertical)
                v = 1.0 - v;
        }
    };
};

template <>
struct ExtraRenderInfo<Hyperboloid> {
    struct ExtensionInfo {
        int32_t head_extensions;  // copies on the lower sheet
        int32_t tail_extensions;  // copies on the upper sheet
        bool flip_vertical;
        double screw;     // turns
        double interval;  // v units
        bool head_side;   // copies exist on the lower sheet (z <= 0)
        bool tail_side;   // copies exist on the upper sheet (z > 0)

        // Whether copy k exists on the sheet that p lies on (p a unit-shape position).
        bool isTextureInExtension(int32_t k, const Vectormath::Aos::Vector3& p) const
        {
            if (p.getZ() > 0.0f) {
                if (!tail_side)
                    return false;
                if (k == 0)
                    return true;
                if (k < 0)
                    return false;
                return tail_extensions >= k;
            }
            return k < 0 && head_side && head_extensions + 2 > -k;
        }

        // As for the cylinder, but the u period narrows towards the vertex and the lower sheet
        // is offset by one copy (j = k + 1 and an extra interval below).
        template <class S>
        void modifyUVByExtendedCylinder(const Vectormath::Aos::Vector3& p,
                                        const RenderInfoTemplate<S>& info, double& u,
                                        double& v) const
        {
            const double period = interval + 1.0;
            const int32_t k = copyIndexOf(v, period);
            if (k == 0)
                return;
            if (!isTextureInExtension(k, p))
                return;
            const int32_t j = k > 0 ? k : k + 1;
            const double pz = p.getZ();
            const double u_period = (info.open_scale - 1.0) * std::sqrt(pz * pz - 1.0) + 1.0;
            u = wrapByPeriod(u + screw * j, u_period);
            v = v - period * k;
            if (k < 0)
                v = v - interval;
            if ((k & 1) && flip_vertical)
                v = 1.0 - v;
        }
    };
};
