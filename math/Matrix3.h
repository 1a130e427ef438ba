// Single-precision 3x3 matrix: three Vector3 columns, column vectors (M * v).
// Used for the rotation/scale part of a Matrix4 (its upper 3x3).
#pragma once

#include "math/Vectors.h"

namespace Vectormath {
namespace Aos {

class Matrix3 {
public:
    Matrix3() = default;  // zero matrix
    Matrix3(const Vector3& col0, const Vector3& col1, const Vector3& col2) : mCol{col0, col1, col2} {}

    static Matrix3 identity() { return Matrix3(Vector3::xAxis(), Vector3::yAxis(), Vector3::zAxis()); }

    const Vector3& getCol0() const { return mCol[0]; }
    const Vector3& getCol1() const { return mCol[1]; }
    const Vector3& getCol2() const { return mCol[2]; }
    const Vector3& getCol(int col) const { return mCol[col]; }
    Matrix3& setCol0(const Vector3& v) { mCol[0] = v; return *this; }
    Matrix3& setCol1(const Vector3& v) { mCol[1] = v; return *this; }
    Matrix3& setCol2(const Vector3& v) { mCol[2] = v; return *this; }
    Matrix3& setCol(int col, const Vector3& v) { mCol[col] = v; return *this; }

    Vector3 getRow(int row) const { return Vector3(mCol[0][row], mCol[1][row], mCol[2][row]); }
    Matrix3& setRow(int row, const Vector3& v) {
        mCol[0][row] = v.getX();
        mCol[1][row] = v.getY();
        mCol[2][row] = v.getZ();
        return *this;
    }

    float getElem(int col, int row) const { return mCol[col][row]; }
    Matrix3& setElem(int col, int row, float value) { mCol[col][row] = value; return *this; }

    Vector3& operator[](int col) { return mCol[col]; }
    const Vector3& operator[](int col) const { return mCol[col]; }

    Vector3 operator*(const Vector3& v) const {
        return mCol[0] * v.getX() + mCol[1] * v.getY() + mCol[2] * v.getZ();
    }
    Matrix3 operator*(const Matrix3& b) const { return Matrix3(*this * b.mCol[0], *this * b.mCol[1], *this * b.mCol[2]); }
    Matrix3 operator*(float s) const { return Matrix3(mCol[0] * s, mCol[1] * s, mCol[2] * s); }
    Matrix3 operator+(const Matrix3& b) const { return Matrix3(mCol[0] + b.mCol[0], mCol[1] + b.mCol[1], mCol[2] + b.mCol[2]); }
    Matrix3 operator-(const Matrix3& b) const { return Matrix3(mCol[0] - b.mCol[0], mCol[1] - b.mCol[1], mCol[2] - b.mCol[2]); }
    Matrix3 operator-() const { return Matrix3(-mCol[0], -mCol[1], -mCol[2]); }

private:
    Vector3 mCol[3];
};

inline Matrix3 operator*(float s, const Matrix3& m) { return m * s; }

inline Matrix3 transpose(const Matrix3& m) { return Matrix3(m.getRow(0), m.getRow(1), m.getRow(2)); }

inline float determinant(const Matrix3& m) { return dot(m.getCol2(), cross(m.getCol0(), m.getCol1())); }

// The rows of the inverse are the cross products of column pairs over the determinant.
// A singular matrix yields infinite or NaN elements.
inline Matrix3 inverse(const Matrix3& m) {
    const Vector3 row0 = cross(m.getCol1(), m.getCol2());
    const Vector3 row1 = cross(m.getCol2(), m.getCol0());
    const Vector3 row2 = cross(m.getCol0(), m.getCol1());
    const float invDet = 1.0f / dot(m.getCol2(), row2);
    return transpose(Matrix3(row0, row1, row2)) * invDet;
}

inline Matrix3 mulPerElem(const Matrix3& a, const Matrix3& b) {
    return Matrix3(mulPerElem(a.getCol0(), b.getCol0()), mulPerElem(a.getCol1(), b.getCol1()),
                   mulPerElem(a.getCol2(), b.getCol2()));
}

}  // namespace Aos
}  // namespace Vectormath
