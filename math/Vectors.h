// Single-precision 3- and 4-component vectors in the naming of Sony's vectormath (AoS flavour).
//
// Both occupy four floats and are 16-byte aligned, so a Vector3 can be loaded as one SIMD
// register and shares its layout with Vector4; its fourth float is padding, kept at zero.
// Objects holding them on the heap must come from an allocator that honours the alignment.
// Everything here runs per pixel: inline, branch-free, no allocation.
#pragma once

#include <cmath>

namespace Vectormath {
namespace Aos {

class Vector4;

class alignas(16) Vector3 {
public:
    Vector3() = default;  // zero vector
    Vector3(float x, float y, float z) : m{x, y, z, 0.0f} {}
    explicit Vector3(float scalar) : m{scalar, scalar, scalar, 0.0f} {}
    // The x, y and z of a Vector4; its w is dropped.
    inline Vector3(const Vector4& xyzw);

    static Vector3 xAxis() { return Vector3(1.0f, 0.0f, 0.0f); }
    static Vector3 yAxis() { return Vector3(0.0f, 1.0f, 0.0f); }
    static Vector3 zAxis() { return Vector3(0.0f, 0.0f, 1.0f); }

    float getX() const { return m[0]; }
    float getY() const { return m[1]; }
    float getZ() const { return m[2]; }
    Vector3& setX(float x) { m[0] = x; return *this; }
    Vector3& setY(float y) { m[1] = y; return *this; }
    Vector3& setZ(float z) { m[2] = z; return *this; }

    // idx 0..2 selects x, y, z.
    float getElem(int idx) const { return m[idx]; }
    Vector3& setElem(int idx, float value) { m[idx] = value; return *this; }
    float& operator[](int idx) { return m[idx]; }
    float operator[](int idx) const { return m[idx]; }

    Vector3 operator+(const Vector3& v) const { return Vector3(m[0] + v.m[0], m[1] + v.m[1], m[2] + v.m[2]); }
    Vector3 operator-(const Vector3& v) const { return Vector3(m[0] - v.m[0], m[1] - v.m[1], m[2] - v.m[2]); }
    Vector3 operator*(float s) const { return Vector3(m[0] * s, m[1] * s, m[2] * s); }
    Vector3 operator/(float s) const { return Vector3(m[0] / s, m[1] / s, m[2] / s); }
    Vector3 operator-() const { return Vector3(-m[0], -m[1], -m[2]); }

    Vector3& operator+=(const Vector3& v) { return *this = *this + v; }
    Vector3& operator-=(const Vector3& v) { return *this = *this - v; }
    Vector3& operator*=(float s) { return *this = *this * s; }
    Vector3& operator/=(float s) { return *this = *this / s; }

private:
    float m[4] = {0.0f, 0.0f, 0.0f, 0.0f};  // x, y, z, padding
};

class alignas(16) Vector4 {
public:
    Vector4() = default;  // zero vector
    Vector4(float x, float y, float z, float w) : m{x, y, z, w} {}
    Vector4(const Vector3& xyz, float w) : m{xyz.getX(), xyz.getY(), xyz.getZ(), w} {}
    // A direction: w = 0.
    explicit Vector4(const Vector3& xyz) : Vector4(xyz, 0.0f) {}
    explicit Vector4(float scalar) : m{scalar, scalar, scalar, scalar} {}

    static Vector4 xAxis() { return Vector4(1.0f, 0.0f, 0.0f, 0.0f); }
    static Vector4 yAxis() { return Vector4(0.0f, 1.0f, 0.0f, 0.0f); }
    static Vector4 zAxis() { return Vector4(0.0f, 0.0f, 1.0f, 0.0f); }
    static Vector4 wAxis() { return Vector4(0.0f, 0.0f, 0.0f, 1.0f); }

    float getX() const { return m[0]; }
    float getY() const { return m[1]; }
    float getZ() const { return m[2]; }
    float getW() const { return m[3]; }
    Vector4& setX(float x) { m[0] = x; return *this; }
    Vector4& setY(float y) { m[1] = y; return *this; }
    Vector4& setZ(float z) { m[2] = z; return *this; }
    Vector4& setW(float w) { m[3] = w; return *this; }

    Vector3 getXYZ() const { return Vector3(m[0], m[1], m[2]); }
    Vector4& setXYZ(const Vector3& v) { m[0] = v.getX(); m[1] = v.getY(); m[2] = v.getZ(); return *this; }

    // idx 0..3 selects x, y, z, w.
    float getElem(int idx) const { return m[idx]; }
    Vector4& setElem(int idx, float value) { m[idx] = value; return *this; }
    float& operator[](int idx) { return m[idx]; }
    float operator[](int idx) const { return m[idx]; }

    Vector4 operator+(const Vector4& v) const {
        return Vector4(m[0] + v.m[0], m[1] + v.m[1], m[2] + v.m[2], m[3] + v.m[3]);
    }
    Vector4 operator-(const Vector4& v) const {
        return Vector4(m[0] - v.m[0], m[1] - v.m[1], m[2] - v.m[2], m[3] - v.m[3]);
    }
    Vector4 operator*(float s) const { return Vector4(m[0] * s, m[1] * s, m[2] * s, m[3] * s); }
    Vector4 operator/(float s) const { return Vector4(m[0] / s, m[1] / s, m[2] / s, m[3] / s); }
    Vector4 operator-() const { return Vector4(-m[0], -m[1], -m[2], -m[3]); }

    Vector4& operator+=(const Vector4& v) { return *this = *this + v; }
    Vector4& operator-=(const Vector4& v) { return *this = *this - v; }
    Vector4& operator*=(float s) { return *this = *this * s; }
    Vector4& operator/=(float s) { return *this = *this / s; }

private:
    float m[4] = {0.0f, 0.0f, 0.0f, 0.0f};  // x, y, z, w
};

static_assert(sizeof(Vector3) == 4 * sizeof(float), "a Vector3 occupies four floats");
static_assert(sizeof(Vector4) == 4 * sizeof(float), "a Vector4 occupies four floats");

inline Vector3::Vector3(const Vector4& xyzw) : m{xyzw.getX(), xyzw.getY(), xyzw.getZ(), 0.0f} {}

// ---- Vector3 free functions ------------------------------------------------------------------

inline Vector3 operator*(float s, const Vector3& v) { return v * s; }

inline float dot(const Vector3& a, const Vector3& b) {
    return a.getX() * b.getX() + a.getY() * b.getY() + a.getZ() * b.getZ();
}

// Right-handed: cross(xAxis, yAxis) = zAxis.
inline Vector3 cross(const Vector3& a, const Vector3& b) {
    return Vector3(a.getY() * b.getZ() - a.getZ() * b.getY(),
                   a.getZ() * b.getX() - a.getX() * b.getZ(),
                   a.getX() * b.getY() - a.getY() * b.getX());
}

inline float lengthSqr(const Vector3& v) { return dot(v, v); }
inline float length(const Vector3& v) { return std::sqrt(lengthSqr(v)); }

// One reciprocal square root, then a multiply; the zero vector gives NaN components.
inline Vector3 normalize(const Vector3& v) { return v * (1.0f / length(v)); }

inline Vector3 mulPerElem(const Vector3& a, const Vector3& b) {
    return Vector3(a.getX() * b.getX(), a.getY() * b.getY(), a.getZ() * b.getZ());
}
inline Vector3 divPerElem(const Vector3& a, const Vector3& b) {
    return Vector3(a.getX() / b.getX(), a.getY() / b.getY(), a.getZ() / b.getZ());
}
inline Vector3 recipPerElem(const Vector3& v) { return divPerElem(Vector3(1.0f), v); }
inline Vector3 absPerElem(const Vector3& v) {
    return Vector3(std::fabs(v.getX()), std::fabs(v.getY()), std::fabs(v.getZ()));
}
inline Vector3 maxPerElem(const Vector3& a, const Vector3& b) {
    return Vector3(std::fmax(a.getX(), b.getX()), std::fmax(a.getY(), b.getY()),
                   std::fmax(a.getZ(), b.getZ()));
}
inline Vector3 minPerElem(const Vector3& a, const Vector3& b) {
    return Vector3(std::fmin(a.getX(), b.getX()), std::fmin(a.getY(), b.getY()),
                   std::fmin(a.getZ(), b.getZ()));
}
inline float maxElem(const Vector3& v) { return std::fmax(std::fmax(v.getX(), v.getY()), v.getZ()); }
inline float minElem(const Vector3& v) { return std::fmin(std::fmin(v.getX(), v.getY()), v.getZ()); }
inline float sum(const Vector3& v) { return v.getX() + v.getY() + v.getZ(); }

// a at t = 0, b at t = 1.
inline Vector3 lerp(float t, const Vector3& a, const Vector3& b) { return a + (b - a) * t; }

// ---- Vector4 free functions ------------------------------------------------------------------

inline Vector4 operator*(float s, const Vector4& v) { return v * s; }

inline float dot(const Vector4& a, const Vector4& b) {
    return a.getX() * b.getX() + a.getY() * b.getY() + a.getZ() * b.getZ() + a.getW() * b.getW();
}

inline float lengthSqr(const Vector4& v) { return dot(v, v); }
inline float length(const Vector4& v) { return std::sqrt(lengthSqr(v)); }
inline Vector4 normalize(const Vector4& v) { return v * (1.0f / length(v)); }

inline Vector4 mulPerElem(const Vector4& a, const Vector4& b) {
    return Vector4(a.getX() * b.getX(), a.getY() * b.getY(), a.getZ() * b.getZ(), a.getW() * b.getW());
}
inline Vector4 divPerElem(const Vector4& a, const Vector4& b) {
    return Vector4(a.getX() / b.getX(), a.getY() / b.getY(), a.getZ() / b.getZ(), a.getW() / b.getW());
}
inline Vector4 recipPerElem(const Vector4& v) { return divPerElem(Vector4(1.0f), v); }
inline Vector4 absPerElem(const Vector4& v) {
    return Vector4(std::fabs(v.getX()), std::fabs(v.getY()), std::fabs(v.getZ()), std::fabs(v.getW()));
}
inline Vector4 maxPerElem(const Vector4& a, const Vector4& b) {
    return Vector4(std::fmax(a.getX(), b.getX()), std::fmax(a.getY(), b.getY()),
                   std::fmax(a.getZ(), b.getZ()), std::fmax(a.getW(), b.getW()));
}
inline Vector4 minPerElem(const Vector4& a, const Vector4& b) {
    return Vector4(std::fmin(a.getX(), b.getX()), std::fmin(a.getY(), b.getY()),
                   std::fmin(a.getZ(), b.getZ()), std::fmin(a.getW(), b.getW()));
}
inline float maxElem(const Vector4& v) {
    return std::fmax(std::fmax(v.getX(), v.getY()), std::fmax(v.getZ(), v.getW()));
}
inline float minElem(const Vector4& v) {
    return std::fmin(std::fmin(v.getX(), v.getY()), std::fmin(v.getZ(), v.getW()));
}
inline float sum(const Vector4& v) { return v.getX() + v.getY() + v.getZ() + v.getW(); }

inline Vector4 lerp(float t, const Vector4& a, const Vector4& b) { return a + (b - a) * t; }

}  // namespace Aos
}  // namespace Vectormath
