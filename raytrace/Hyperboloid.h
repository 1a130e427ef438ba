#pragma once

#include <algorithm>
#include <cmath>

#include "math/Vectormath.h"
#include "raytrace/AxisAngle.h"
#include "raytrace/QuadricDistance.h"
#include "raytrace/ShapeForward.h"

// Two-sheet hyperboloid z^2/c^2 - x^2/a^2 - y^2/b^2 = 1 with its vertices at z = +-c. The
// texture starts at each vertex and runs away from it along the axis. An alternative shape
// with the same operations as Cylinder; no render path selects it.
class Hyperboloid {
public:
    Vectormath::Aos::Matrix4 object_to_world;
    Vectormath::Aos::Matrix4 world_to_object;
    Vectormath::Aos::Vector3 size;         // (a, b, c)
    Vectormath::Aos::Vector3 size_sq;      // (a^2, b^2, c^2)
    Vectormath::Aos::Vector3 inv_size;     // (1/a, 1/b, 1/c)
    Vectormath::Aos::Vector3 inv_size_sq;  // squares of inv_size

    // The lower sheet is shifted down by one texture row (1/n) when the layer height n is known.
    template <class S>
    void getUVFromCoordinate(const RenderInfoTemplate<S>& info, const Vectormath::Aos::Vector3& p,
                             double& u, double& v) const
    {
        const double c = size.getZ();
        const double axial_scale = info.texture_height * info.open_scale;
        if (p.getZ() > 0.0f) {
            v = (p.getZ() - c) / axial_scale;
        } else {
            v = (p.getZ() + c) / axial_scale;
            const auto rows = info.texture_layer.height;
            if (rows != 0)
                v = v - 1.0 / rows;
        }
        u = textureUAroundAxis(p.getX() * inv_size.getX(), p.getY() * inv_size.getY());
    }

    Vectormath::Aos::Vector3 getHitcoordFromUV(double h, const Vectormath::Aos::Vector3& R,
                                               double u, double v) const
    {
        constexpr double kTwoPi = 6.283185307179586;
        const double t = (v > 0.0 ? 1.0 : -1.0) + h * v / R.getZ();
        const double widening = std::sqrt(t * t - 1.0);
        const double theta = (1.0 - u) * kTwoPi;
        return Vectormath::Aos::Vector3(float(std::cos(theta) * widening * R.getX()),
                                        float(std::sin(theta) * widening * R.getY()),
                                        float(t * R.getZ()));
    }

    // The opening narrows towards the vertex, where the period m of u becomes 1.
    template <class S>
    void modifyUVByOpenParam(const RenderInfoTemplate<S>& info, double& u, double& v) const
    {
        const double K = info.open_scale;
        const double t = (v > 0.0 ? 1.0 : -1.0) + info.texture_height * K * v / double(size.getZ());
        const double widening = std::sqrt(std::max(t * t - 1.0, 0.0));
        const double period = (K - 1.0) * widening + 1.0;
        u = info.fixed_u + (u - info.fixed_u) * period;
        u = u + info.slide;
        u = wrapByPeriod(u, period);
        v = info.fixed_v + K * (v - info.fixed_v);
    }

    template <class S>
    void getJacobian(const RenderInfoTemplate<S>& info, const Vectormath::Aos::Vector3& p,
                     double& du, double& dv) const
    {
        constexpr double kTwoPi = 6.283185307179586;
        const double a = size.getX(), b = size.getY(), c = size.getZ();
        const double px = p.getX(), py = p.getY(), pz = p.getZ();
        const double H = info.texture_height;
        const double K = info.open_scale;
        const double s = std::max(pz * pz, 1.0);
        const double widening = std::sqrt(s - 1.0);
        du = kTwoPi * std::sqrt(b * b * px * px + a * a * py * py) /
             ((1.0 - 1.0 / K) * widening + 1.0 / K);
        dv = (H * K / c) *
             std::sqrt(c * c + s / (s * s - 2.0 * s + 1.0) * (a * a * px * px + b * b * py * py));
    }

    double evaluateDistance(const Vectormath::Aos::Vector3& p) const
    {
        return quadricSignedDistance(p, size_sq, inv_size, inv_size_sq);
    }
};
