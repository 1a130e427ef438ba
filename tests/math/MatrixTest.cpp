#include <gtest/gtest.h>

#include <cmath>

#include "math/MathExpect.h"
#include "math/Vectormath.h"

using namespace Vectormath::Aos;
using math_test::expectNear;
using math_test::maxDifference;

namespace {

const float kQuarterTurn = 1.57079632679f;

// Columns (1,2,3,4), (5,6,7,8), (9,10,11,12), (13,14,15,16).
Matrix4 countingMatrix() {
    return Matrix4(Vector4(1.0f, 2.0f, 3.0f, 4.0f), Vector4(5.0f, 6.0f, 7.0f, 8.0f),
                   Vector4(9.0f, 10.0f, 11.0f, 12.0f), Vector4(13.0f, 14.0f, 15.0f, 16.0f));
}

}  // namespace

TEST(Matrix4Layout, ElementsAreAddressedColumnThenRow) {
    Matrix4 m = countingMatrix();
    EXPECT_EQ(m.getElem(1, 2), 7.0f);
    EXPECT_EQ(m.getElem(3, 0), 13.0f);
    EXPECT_EQ(m[2][3], 12.0f);
    expectNear(m.getCol2(), 9.0f, 10.0f, 11.0f, 12.0f);
    expectNear(m.getCol(3), 13.0f, 14.0f, 15.0f, 16.0f);
    expectNear(m.getRow(1), 2.0f, 6.0f, 10.0f, 14.0f);
    expectNear(m.getTranslation(), 13.0f, 14.0f, 15.0f);

    m.setElem(0, 3, -1.0f);
    expectNear(m.getCol0(), 1.0f, 2.0f, 3.0f, -1.0f);
    m.setCol(2, Vector4(0.0f, 0.0f, 0.0f, 1.0f));
    expectNear(m.getCol2(), 0.0f, 0.0f, 0.0f, 1.0f);
    m.setRow(0, Vector4(20.0f, 21.0f, 22.0f, 23.0f));
    EXPECT_EQ(m.getElem(1, 0), 21.0f);
    EXPECT_EQ(m.getElem(3, 0), 23.0f);
}

// The identity is held by the products below (a * I == a).
TEST(Matrix4Layout, DefaultIsZero) {
    const Matrix4 zero;
    for (int col = 0; col < 4; ++col)
        for (int row = 0; row < 4; ++row) EXPECT_EQ(zero.getElem(col, row), 0.0f);
}

TEST(Matrix4Layout, TransposeAndUpper3x3AndTranslation) {
    const Matrix4 t = transpose(countingMatrix());
    expectNear(t.getCol0(), 1.0f, 5.0f, 9.0f, 13.0f);
    expectNear(t.getCol3(), 4.0f, 8.0f, 12.0f, 16.0f);
    EXPECT_EQ(maxDifference(transpose(t), countingMatrix()), 0.0f);
    const Matrix3 u = countingMatrix().getUpper3x3();
    expectNear(u.getCol1(), 5.0f, 6.0f, 7.0f);
    const Matrix4 affine(u, Vector3(-1.0f, -2.0f, -3.0f));
    expectNear(affine.getCol0(), 1.0f, 2.0f, 3.0f, 0.0f);
    expectNear(affine.getCol3(), -1.0f, -2.0f, -3.0f, 1.0f);
    Matrix4 n = Matrix4::identity();
    n.setUpper3x3(u).setTranslation(Vector3(4.0f, 5.0f, 6.0f));
    expectNear(n.getCol2(), 9.0f, 10.0f, 11.0f, 0.0f);
    expectNear(n.getCol3(), 4.0f, 5.0f, 6.0f, 1.0f);
}

TEST(Matrix4Products, MatrixTimesVectorSumsTheColumnsAndVector3IsADirection) {
    const Matrix4 m = countingMatrix();
    expectNear(m * Vector4(1.0f, 0.0f, 0.0f, 0.0f), 1.0f, 2.0f, 3.0f, 4.0f);
    // 1*(1,2,3,4) + 0*(5..) - 1*(9,10,11,12) + 2*(13,14,15,16)
    expectNear(m * Vector4(1.0f, 0.0f, -1.0f, 2.0f), 18.0f, 20.0f, 22.0f, 24.0f);
    // A Vector3 is a direction, untouched by translation.
    const Matrix4 move = Matrix4::translation(Vector3(10.0f, 20.0f, 30.0f));
    expectNear(move * Vector3(1.0f, 2.0f, 3.0f), 1.0f, 2.0f, 3.0f, 0.0f);
    expectNear(move * Vector4(1.0f, 2.0f, 3.0f, 1.0f), 11.0f, 22.0f, 33.0f, 1.0f);
    // A general matrix: w takes the fourth row of the three axis columns.
    expectNear(countingMatrix() * Vector3(1.0f, 1.0f, 1.0f), 15.0f, 18.0f, 21.0f, 24.0f);
}

TEST(Matrix4Products, ProductAppliesTheRightFactorFirst) {
    const Matrix4 turn = Matrix4::rotationZ(kQuarterTurn);
    const Matrix4 move = Matrix4::translation(Vector3(1.0f, 0.0f, 0.0f));
    const Vector4 origin(0.0f, 0.0f, 0.0f, 1.0f);
    // Move to (1,0,0), then turn it onto the y axis.
    expectNear((turn * move) * origin, 0.0f, 1.0f, 0.0f, 1.0f);
    // Turning the origin leaves it in place; then move.
    expectNear((move * turn) * origin, 1.0f, 0.0f, 0.0f, 1.0f);
}

TEST(Matrix4Products, ProductOfGeneralMatrices) {
    const Matrix4 a = countingMatrix();
    const Matrix4 b(Vector4(1.0f, 0.0f, 0.0f, 1.0f), Vector4(0.0f, 2.0f, 0.0f, 0.0f),
                    Vector4(0.0f, 0.0f, 0.0f, 1.0f), Vector4(1.0f, 1.0f, 1.0f, 1.0f));
    const Matrix4 c = a * b;
    // Column j of a*b is a times column j of b.
    expectNear(c.getCol0(), 14.0f, 16.0f, 18.0f, 20.0f);
    expectNear(c.getCol1(), 10.0f, 12.0f, 14.0f, 16.0f);
    expectNear(c.getCol2(), 13.0f, 14.0f, 15.0f, 16.0f);
    expectNear(c.getCol3(), 28.0f, 32.0f, 36.0f, 40.0f);
    EXPECT_EQ(maxDifference(a * Matrix4::identity(), a), 0.0f);
    EXPECT_EQ(maxDifference(Matrix4::identity() * a, a), 0.0f);
}

TEST(Matrix4Rotations, QuarterTurnsAreCounterClockwiseAboutTheirAxis) {
    expectNear(Matrix4::rotationX(kQuarterTurn) * Vector3::yAxis(), 0.0f, 0.0f, 1.0f, 0.0f);
    expectNear(Matrix4::rotationY(kQuarterTurn) * Vector3::zAxis(), 1.0f, 0.0f, 0.0f, 0.0f);
    expectNear(Matrix4::rotationZ(kQuarterTurn) * Vector3::xAxis(), 0.0f, 1.0f, 0.0f, 0.0f);
    // The axis itself stays.
    expectNear(Matrix4::rotationY(0.3f) * Vector3::yAxis(), 0.0f, 1.0f, 0.0f, 0.0f);
}

TEST(Matrix3, ProductsAndTranspose) {
    const Matrix3 m(Vector3(1.0f, 2.0f, 3.0f), Vector3(4.0f, 5.0f, 6.0f), Vector3(7.0f, 8.0f, 10.0f));
    expectNear(m * Vector3(1.0f, 0.0f, -1.0f), -6.0f, -6.0f, -7.0f);
    expectNear(m.getRow(2), 3.0f, 6.0f, 10.0f);
    EXPECT_EQ(m.getElem(2, 1), 8.0f);
    const Matrix3 t = transpose(m);
    expectNear(t.getCol0(), 1.0f, 4.0f, 7.0f);
    expectNear((m * Matrix3::identity()).getCol2(), 7.0f, 8.0f, 10.0f);
    // det = 1*(5*10-8*6) - 4*(2*10-8*3) + 7*(2*6-5*3) = 2 + 16 - 21
    EXPECT_NEAR(determinant(m), -3.0f, 1e-5f);
}
