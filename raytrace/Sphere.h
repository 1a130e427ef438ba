#pragma once

#include <algorithm>
#include <cmath>

#include "math/Vectormath.h"
#include "raytrace/AxisAngle.h"
#include "raytrace/ShapeForward.h"

// Ellipsoid x^2/a^2 + y^2/b^2 + z^2/c^2 = 1; v runs from the -z pole (0) to the +z pole (1).
// An alternative shape with the same operations as Cylinder; no render path selects it.
class Sphere {
public:
    Vectormath::Aos::Matrix4 object_to_world;
    Vectormath::Aos::Matrix4 world_to_object;
    Vectormath::Aos::Vector3 size;         // (a, b, c)
    Vectormath::Aos::Vector3 size_sq;      // (a^2, b^2, c^2)
    Vectormath::Aos::Vector3 inv_size;     // (1/a, 1/b, 1/c)
    Vectormath::Aos::Vector3 inv_size_sq;  // squares of inv_size

    template <class S>
    void getUVFromCoordinate(const RenderInfoTemplate<S>& info, const Vectormath::Aos::Vector3& p,
                             double& u, double& v) const
    {
        (void)info;
        constexpr double kPi = 3.141592653589793;
        const float qx = p.getX() * inv_size.getX();
        const float qy = p.getY() * inv_size.getY();
        const float qz = p.getZ() * inv_size.getZ();
        const float inv_length = 1.0f / std::sqrt(qx * qx + qy * qy + qz * qz);
        v = 1.0 - std::acos(double(qz * inv_length)) / kPi;
        u = textureUAroundAxis(qx * inv_length, qy * inv_length);
    }

    // h is ignored: the sphere's axial extent is its own c.
    Vectormath::Aos::Vector3 getHitcoordFromUV(double h, const Vectormath::Aos::Vector3& R,
                                               double u, double v) const
    {
        (void)h;
        constexpr double kPi = 3.141592653589793;
        const double phi = (1.0 - v) * kPi;
        const double theta = (1.0 - u) * 2.0 * kPi;
        return Vectormath::Aos::Vector3(float(std::cos(theta) * std::sin(phi) * R.getX()),
                                        float(std::sin(theta) * std::sin(phi) * R.getY()),
                                        float(std::cos(phi) * R.getZ()));
    }

    // The opening is widest at the equator and closes at the poles. The final v scale by
    // (1 - 1/n) keeps v = 1 on the last texture row of an n-row layer.
    template <class S>
    void modifyUVByOpenParam(const RenderInfoTemplate<S>& info, double& u, double& v) const
    {
        constexpr double kPi = 3.141592653589793;
        const double K = info.open_scale;
        const double period = (K - 1.0) * std::sin(v * kPi) + 1.0;
        u = info.fixed_u + (u - info.fixed_u) * period;
        u = u + info.slide;
        u = wrapByPeriod(u, period);
        v = info.fixed_v + K * (v - info.fixed_v);
        const auto rows = info.texture_layer.height;
        if (rows != 0)
            v = v * (1.0 - 1.0 / rows);
    }

    // p is a unit direction from the centre.
    template <class S>
    void getJacobian(const RenderInfoTemplate<S>& info, const Vectormath::Aos::Vector3& p,
                     double& du, double& dv) const
    {
        constexpr double kPi = 3.141592653589793;
        const double a = size.getX(), b = size.getY(), c = size.getZ();
        const double K = info.open_scale;
        const double cz = std::min(double(p.getZ()), 1.0);
        const double st = std::max(std::sqrt(1.0 - cz * cz), 1e-10);
        const double rho = st > 0.0 ? p.getX() / st : 1.0;
        const double cos_sq = rho * rho;
        const double sin_sq = 1.0 - cos_sq;
        du = std::sqrt(cos_sq * b * b + sin_sq * a * a) * 2.0 * kPi * st /
             ((1.0 - 1.0 / K) * st + 1.0 / K);
        dv = kPi * std::sqrt(c * c * st * st + cz * cz * (sin_sq * b * b + cos_sq * a * a));
    }

    double evaluateDistance(const Vectormath::Aos::Vector3& p) const
    {
        const float largest = std::max(size.getX(), std::max(size.getY(), size.getZ()));
        return length(p) - largest;
    }
};
