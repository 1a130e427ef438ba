#pragma once

#include <cmath>

#include "math/Vectormath.h"
#include "raytrace/AxisAngle.h"
#include "raytrace/QuadricDistance.h"
#include "raytrace/ShapeForward.h"

// Elliptic cylinder around the local z axis with semi-axes a (x) and b (y). With c > 0 its
// waist is pinched into the one-sheet hyperboloid x^2/a^2 + y^2/b^2 - z^2/c^2 = 1; with
// c = 0 it is straight. The texture wraps around the axis (u) and runs along it (v).
// All sizes are in full-resolution composition pixels.
class Cylinder {
public:
    Vectormath::Aos::Matrix4 object_to_world;
    Vectormath::Aos::Matrix4 world_to_object;
    Vectormath::Aos::Vector3 size;         // (a, b, c)
    Vectormath::Aos::Vector3 size_sq;      // (a^2, b^2, c^2)
    Vectormath::Aos::Vector3 inv_size;     // (1/a, 1/b, 1/c), 1/c = 0 when straight
    Vectormath::Aos::Vector3 inv_size_sq;  // squares of inv_size

    // Local hit point -> texture coordinates: v = 0.5 at z = 0, one unit per texture height.
    template <class S>
    void getUVFromCoordinate(const RenderInfoTemplate<S>& info, const Vectormath::Aos::Vector3& p,
                             double& u, double& v) const
    {
        v = p.getZ() / info.texture_height + 0.5;
        u = textureUAroundAxis(p.getX() * inv_size.getX(), p.getY() * inv_size.getY());
    }

    // Texture coordinates -> local surface point for axial scale h and sizes R. The z sign is
    // the reverse of getUVFromCoordinate; both agree at v = 0.5, the only place it is used.
    Vectormath::Aos::Vector3 getHitcoordFromUV(double h, const Vectormath::Aos::Vector3& R,
                                               double u, double v) const
    {
        constexpr double kTwoPi = 6.283185307179586;
        const double z = (0.5 - v) * h;
        const double c = R.getZ();
        const double widening = c > 0.0 ? std::sqrt(1.0 + z * z / (c * c)) : 1.0;
        const double theta = (1.0 - u) * kTwoPi;
        return Vectormath::Aos::Vector3(float(std::cos(theta) * widening * R.getX()),
                                        float(std::sin(theta) * widening * R.getY()), float(z));
    }

    // Scales u about the fixed point by the open factor K and rotates it by the slide; u ends
    // in [0, K), of which only [0, 1) carries texture.
    template <class S>
    void modifyUVByOpenParam(const RenderInfoTemplate<S>& info, double& u, double& v) const
    {
        (void)v;
        const double K = info.open_scale;
        u = info.fixed_u + (u - info.fixed_u) * K;
        u = u + info.slide;
        u = wrapByPeriod(u, K);
    }

    // World length of the surface per unit u (du) and per unit v (dv) at the unit-shape
    // position p = (x/a, y/b, z/c).
    template <class S>
    void getJacobian(const RenderInfoTemplate<S>& info, const Vectormath::Aos::Vector3& p,
                     double& du, double& dv) const
    {
        constexpr double kTwoPi = 6.283185307179586;
        const double a = size.getX(), b = size.getY();
        const double px = p.getX(), py = p.getY(), pz = p.getZ();
        const double H = info.texture_height;
        const double K = info.open_scale;
        du = kTwoPi * std::sqrt(b * b * px * px + a * a * py * py);
        const double s = pz * pz;
        dv = K * std::sqrt(H * H + s / (s * s + 2.0 * s + 1.0) * (a * a * px * px + b * b * py * py));
    }

    double evaluateDistance(const Vectormath::Aos::Vector3& p) const
    {
        return quadricSignedDistance(p, size_sq, inv_size, inv_size_sq);
    }
};
