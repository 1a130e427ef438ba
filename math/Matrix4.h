// Single-precision 4x4 matrix: four Vector4 columns (column-major), column vectors (M * v).
// Column 3 holds the translation of an affine transform.
#pragma once

#include <cmath>

#include "math/Matrix3.h"
#include "math/Vectors.h"

namespace Vectormath {
namespace Aos {

class Matrix4 {
public:
    Matrix4() = default;  // zero matrix
    Matrix4(const Vector4& col0, const Vector4& col1, const Vector4& col2, const Vector4& col3)
        : mCol{col0, col1, col2, col3} {}
    // Affine transform: rotation/scale part and translation, bottom row (0, 0, 0, 1).
    Matrix4(const Matrix3& upper3x3, const Vector3& translation)
        : mCol{Vector4(upper3x3.getCol0(), 0.0f), Vector4(upper3x3.getCol1(), 0.0f),
               Vector4(upper3x3.getCol2(), 0.0f), Vector4(translation, 1.0f)} {}

    static Matrix4 identity() {
        return Matrix4(Vector4::xAxis(), Vector4::yAxis(), Vector4::zAxis(), Vector4::wAxis());
    }
    static Matrix4 translation(const Vector3& t) { return Matrix4(Matrix3::identity(), t); }
    static Matrix4 scale(const Vector3& s) {
        return Matrix4(Vector4(s.getX(), 0.0f, 0.0f, 0.0f), Vector4(0.0f, s.getY(), 0.0f, 0.0f),
                       Vector4(0.0f, 0.0f, s.getZ(), 0.0f), Vector4::wAxis());
    }
    // Right-handed rotations by an angle in radians (counter-clockwise looking down the axis).
    static Matrix4 rotationX(float radians) {
        const float c = std::cos(radians), s = std::sin(radians);
        return Matrix4(Vector4::xAxis(), Vector4(0.0f, c, s, 0.0f), Vector4(0.0f, -s, c, 0.0f), Vector4::wAxis());
    }
    static Matrix4 rotationY(float radians) {
        const float c = std::cos(radians), s = std::sin(radians);
        return Matrix4(Vector4(c, 0.0f, -s, 0.0f), Vector4::yAxis(), Vector4(s, 0.0f, c, 0.0f), Vector4::wAxis());
    }
    static Matrix4 rotationZ(float radians) {
        const float c = std::cos(radians), s = std::sin(radians);
        return Matrix4(Vector4(c, s, 0.0f, 0.0f), Vector4(-s, c, 0.0f, 0.0f), Vector4::zAxis(), Vector4::wAxis());
    }

    const Vector4& getCol0() const { return mCol[0]; }
    const Vector4& getCol1() const { return mCol[1]; }
    const Vector4& getCol2() const { return mCol[2]; }
    const Vector4& getCol3() const { return mCol[3]; }
    const Vector4& getCol(int col) const { return mCol[col]; }
    Matrix4& setCol0(const Vector4& v) { mCol[0] = v; return *this; }
    Matrix4& setCol1(const Vector4& v) { mCol[1] = v; return *this; }
    Matrix4& setCol2(const Vector4& v) { mCol[2] = v; return *this; }
    Matrix4& setCol3(const Vector4& v) { mCol[3] = v; return *this; }
    Matrix4& setCol(int col, const Vector4& v) { mCol[col] = v; return *this; }

    Vector4 getRow(int row) const { return Vector4(mCol[0][row], mCol[1][row], mCol[2][row], mCol[3][row]); }
    Matrix4& setRow(int row, const Vector4& v) {
        for (int col = 0; col < 4; ++col) mCol[col][row] = v[col];
        return *this;
    }

    float getElem(int col, int row) const { return mCol[col][row]; }
    Matrix4& setElem(int col, int row, float value) { mCol[col][row] = value; return *this; }

    Vector4& operator[](int col) { return mCol[col]; }
    const Vector4& operator[](int col) const { return mCol[col]; }

    Matrix3 getUpper3x3() const { return Matrix3(mCol[0].getXYZ(), mCol[1].getXYZ(), mCol[2].getXYZ()); }
    Matrix4& setUpper3x3(const Matrix3& m) {
        for (int col = 0; col < 3; ++col) mCol[col].setXYZ(m.getCol(col));
        return *this;
    }
    Vector3 getTranslation() const { return mCol[3].getXYZ(); }
    Matrix4& setTranslation(const Vector3& t) { mCol[3].setXYZ(t); return *this; }

    Vector4 operator*(const Vector4& v) const {
        return mCol[0] * v.getX() + mCol[1] * v.getY() + mCol[2] * v.getZ() + mCol[3] * v.getW();
    }
    // A Vector3 is a direction (w = 0): the translation column does not contribute.
    Vector4 operator*(const Vector3& v) const {
        return mCol[0] * v.getX() + mCol[1] * v.getY() + mCol[2] * v.getZ();
    }
    Matrix4 operator*(const Matrix4& b) const {
        return Matrix4(*this * b.mCol[0], *this * b.mCol[1], *this * b.mCol[2], *this * b.mCol[3]);
    }
    Matrix4 operator*(float s) const { return Matrix4(mCol[0] * s, mCol[1] * s, mCol[2] * s, mCol[3] * s); }
    Matrix4 operator+(const Matrix4& b) const {
        return Matrix4(mCol[0] + b.mCol[0], mCol[1] + b.mCol[1], mCol[2] + b.mCol[2], mCol[3] + b.mCol[3]);
    }
    Matrix4 operator-(const Matrix4& b) const {
        return Matrix4(mCol[0] - b.mCol[0], mCol[1] - b.mCol[1], mCol[2] - b.mCol[2], mCol[3] - b.mCol[3]);
    }
    Matrix4 operator-() const { return Matrix4(-mCol[0], -mCol[1], -mCol[2], -mCol[3]); }

private:
    Vector4 mCol[4];
};

inline Matrix4 operator*(float s, const Matrix4& m) { return m * s; }

inline Matrix4 transpose(const Matrix4& m) { return Matrix4(m.getRow(0), m.getRow(1), m.getRow(2), m.getRow(3)); }

inline Matrix4 mulPerElem(const Matrix4& a, const Matrix4& b) {
    return Matrix4(mulPerElem(a.getCol0(), b.getCol0()), mulPerElem(a.getCol1(), b.getCol1()),
                   mulPerElem(a.getCol2(), b.getCol2()), mulPerElem(a.getCol3(), b.getCol3()));
}

namespace detail {

// The 2x2 minors of a 4x4 matrix taken from rows (0, 1) and from rows (2, 3); the inverse and
// the determinant are both built from these twelve products (Laplace expansion along two rows).
struct Minors4 {
    float s0, s1, s2, s3, s4, s5;  // rows 0-1, column pairs 01 02 03 12 13 23
    float c0, c1, c2, c3, c4, c5;  // rows 2-3, column pairs 01 02 03 12 13 23
    float det;
};

inline Minors4 minors(const Matrix4& m) {
    auto a = [&m](int row, int col) { return m.getElem(col, row); };
    Minors4 r;
    r.s0 = a(0, 0) * a(1, 1) - a(1, 0) * a(0, 1);
    r.s1 = a(0, 0) * a(1, 2) - a(1, 0) * a(0, 2);
    r.s2 = a(0, 0) * a(1, 3) - a(1, 0) * a(0, 3);
    r.s3 = a(0, 1) * a(1, 2) - a(1, 1) * a(0, 2);
    r.s4 = a(0, 1) * a(1, 3) - a(1, 1) * a(0, 3);
    r.s5 = a(0, 2) * a(1, 3) - a(1, 2) * a(0, 3);
    r.c0 = a(2, 0) * a(3, 1) - a(3, 0) * a(2, 1);
    r.c1 = a(2, 0) * a(3, 2) - a(3, 0) * a(2, 2);
    r.c2 = a(2, 0) * a(3, 3) - a(3, 0) * a(2, 3);
    r.c3 = a(2, 1) * a(3, 2) - a(3, 1) * a(2, 2);
    r.c4 = a(2, 1) * a(3, 3) - a(3, 1) * a(2, 3);
    r.c5 = a(2, 2) * a(3, 3) - a(3, 2) * a(2, 3);
    r.det = r.s0 * r.c5 - r.s1 * r.c4 + r.s2 * r.c3 + r.s3 * r.c2 - r.s4 * r.c1 + r.s5 * r.c0;
    return r;
}

}  // namespace detail

inline float determinant(const Matrix4& m) { return detail::minors(m).det; }

// General 4x4 inverse: the adjugate (cofactors from the 2x2 minors) over the determinant, in
// single precision. A singular matrix yields infinite or NaN elements; callers that can meet
// one must test the determinant themselves.
inline Matrix4 inverse(const Matrix4& m) {
    auto a = [&m](int row, int col) { return m.getElem(col, row); };
    const detail::Minors4 k = detail::minors(m);
    Matrix4 r;
    // r.setElem(col, row, ...): element (row, col) of the inverse.
    r.setElem(0, 0, a(1, 1) * k.c5 - a(1, 2) * k.c4 + a(1, 3) * k.c3);
    r.setElem(1, 0, -a(0, 1) * k.c5 + a(0, 2) * k.c4 - a(0, 3) * k.c3);
    r.setElem(2, 0, a(3, 1) * k.s5 - a(3, 2) * k.s4 + a(3, 3) * k.s3);
    r.setElem(3, 0, -a(2, 1) * k.s5 + a(2, 2) * k.s4 - a(2, 3) * k.s3);

    r.setElem(0, 1, -a(1, 0) * k.c5 + a(1, 2) * k.c2 - a(1, 3) * k.c1);
    r.setElem(1, 1, a(0, 0) * k.c5 - a(0, 2) * k.c2 + a(0, 3) * k.c1);
    r.setElem(2, 1, -a(3, 0) * k.s5 + a(3, 2) * k.s2 - a(3, 3) * k.s1);
    r.setElem(3, 1, a(2, 0) * k.s5 - a(2, 2) * k.s2 + a(2, 3) * k.s1);

    r.setElem(0, 2, a(1, 0) * k.c4 - a(1, 1) * k.c2 + a(1, 3) * k.c0);
    r.setElem(1, 2, -a(0, 0) * k.c4 + a(0, 1) * k.c2 - a(0, 3) * k.c0);
    r.setElem(2, 2, a(3, 0) * k.s4 - a(3, 1) * k.s2 + a(3, 3) * k.s0);
    r.setElem(3, 2, -a(2, 0) * k.s4 + a(2, 1) * k.s2 - a(2, 3) * k.s0);

    r.setElem(0, 3, -a(1, 0) * k.c3 + a(1, 1) * k.c1 - a(1, 2) * k.c0);
    r.setElem(1, 3, a(0, 0) * k.c3 - a(0, 1) * k.c1 + a(0, 2) * k.c0);
    r.setElem(2, 3, -a(3, 0) * k.s3 + a(3, 1) * k.s1 - a(3, 2) * k.s0);
    r.setElem(3, 3, a(2, 0) * k.s3 - a(2, 1) * k.s1 + a(2, 2) * k.s0);
    return r * (1.0f / k.det);
}

// Inverse of an affine transform (bottom row 0, 0, 0, 1): cheaper than the general inverse.
inline Matrix4 affineInverse(const Matrix4& m) {
    const Matrix3 inv = inverse(m.getUpper3x3());
    return Matrix4(inv, -(inv * m.getTranslation()));
}

// Inverse of a rigid transform (orthonormal axes plus translation): the transposed rotation.
inline Matrix4 orthoInverse(const Matrix4& m) {
    const Matrix3 inv = transpose(m.getUpper3x3());
    return Matrix4(inv, -(inv * m.getTranslation()));
}

}  // namespace Aos
}  // namespace Vectormath
