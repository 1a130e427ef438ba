#pragma once

#include <algorithm>
#include <cmath>

#include "math/Vectormath.h"

// Approximate signed distance (local units, negative inside) from p to the elliptic surface
// x^2/a^2 + y^2/b^2 -/+ z^2/c^2 = 1 described by its size vectors. For a circular straight
// cylinder it is exactly the distance from the axis minus the radius.
inline double quadricSignedDistance(const Vectormath::Aos::Vector3& p,
                                    const Vectormath::Aos::Vector3& size_sq,
                                    const Vectormath::Aos::Vector3& inv_size,
                                    const Vectormath::Aos::Vector3& inv_size_sq)
{
    const float x_sq = p.getX() * p.getX();
    const float y_sq = p.getY() * p.getY();
    const double radial_sq = double(x_sq) + double(y_sq);
    const double unit_radial_sq = double(x_sq) / size_sq.getX() + double(y_sq) / size_sq.getY();
    const double unit_radius = std::sqrt(unit_radial_sq);
    const float zeta = p.getZ() * inv_size.getZ();
    const double gap = std::min(std::fabs(zeta - unit_radius), std::fabs(unit_radius + zeta));
    const double scale =
        std::sqrt(radial_sq / (unit_radial_sq + radial_sq * double(inv_size_sq.getZ())));
    return gap * scale - scale;
}
