// Only the matrix operations the module calls are held here: element addressing, products,
// rotations and the general inverse (the world-to-object transform).

#include <gtest/gtest.h>

#include <cmath>
#include <random>

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

TEST(Matrix4Layout, ElementsAreAddressedColumnThenRowAndDefaultIsZero) {
    Matrix4 m = countingMatrix();
    EXPECT_EQ(m.getElem(1, 2), 7.0f);
    EXPECT_EQ(m.getElem(3, 0), 13.0f);
    EXPECT_EQ(m[2][3], 12.0f);
    expectNear(m.getCol(3), 13.0f, 14.0f, 15.0f, 16.0f);
    m.setElem(0, 3, -1.0f);
    expectNear(m.getCol0(), 1.0f, 2.0f, 3.0f, -1.0f);
    for (int col = 0; col < 4; ++col)
        for (int row = 0; row < 4; ++row) EXPECT_EQ(Matrix4().getElem(col, row), 0.0f);
}

TEST(Matrix4Products, VectorsGeneralMatricesAndOrder) {
    const Matrix4 a = countingMatrix();
    // 1*(1,2,3,4) + 0*(5..) - 1*(9,10,11,12) + 2*(13,14,15,16)
    expectNear(a * Vector4(1.0f, 0.0f, -1.0f, 2.0f), 18.0f, 20.0f, 22.0f, 24.0f);
    // A Vector3 is a direction, untouched by translation; w takes the fourth row of the axes.
    const Matrix4 move = Matrix4::translation(Vector3(1.0f, 0.0f, 0.0f));
    expectNear(move * Vector3(1.0f, 2.0f, 3.0f), 1.0f, 2.0f, 3.0f, 0.0f);
    expectNear(a * Vector3(1.0f, 1.0f, 1.0f), 15.0f, 18.0f, 21.0f, 24.0f);

    // Column j of a*b is a times column j of b.
    const Matrix4 b(Vector4(1.0f, 0.0f, 0.0f, 1.0f), Vector4(0.0f, 2.0f, 0.0f, 0.0f),
                    Vector4(0.0f, 0.0f, 0.0f, 1.0f), Vector4(1.0f, 1.0f, 1.0f, 1.0f));
    const Matrix4 c = a * b;
    expectNear(c.getCol0(), 14.0f, 16.0f, 18.0f, 20.0f);
    expectNear(c.getCol1(), 10.0f, 12.0f, 14.0f, 16.0f);
    expectNear(c.getCol2(), 13.0f, 14.0f, 15.0f, 16.0f);
    expectNear(c.getCol3(), 28.0f, 32.0f, 36.0f, 40.0f);
    EXPECT_EQ(maxDifference(Matrix4::identity() * a, a), 0.0f);

    // The right factor applies first: move to (1,0,0), then turn it onto the y axis.
    const Matrix4 turn = Matrix4::rotationZ(kQuarterTurn);
    const Vector4 origin(0.0f, 0.0f, 0.0f, 1.0f);
    expectNear((turn * move) * origin, 0.0f, 1.0f, 0.0f, 1.0f);
    expectNear((move * turn) * origin, 1.0f, 0.0f, 0.0f, 1.0f);
}

TEST(Matrix4Rotations, QuarterTurnsAreCounterClockwiseAboutTheirAxis) {
    expectNear(Matrix4::rotationX(kQuarterTurn) * Vector3::yAxis(), 0.0f, 0.0f, 1.0f, 0.0f);
    expectNear(Matrix4::rotationY(kQuarterTurn) * Vector3::zAxis(), 1.0f, 0.0f, 0.0f, 0.0f);
    expectNear(Matrix4::rotationZ(kQuarterTurn) * Vector3::xAxis(), 0.0f, 1.0f, 0.0f, 0.0f);
    expectNear(Matrix4::rotationY(0.3f) * Vector3::yAxis(), 0.0f, 1.0f, 0.0f, 0.0f);  // the axis stays
}

// Every element random in [-1, 1], plus 4 on the diagonal: diagonally dominant, so well
// conditioned, and with a general bottom row so every cofactor of the inverse takes part.
TEST(Matrix4Inverse, RandomWellConditionedMatricesInvertBothWays) {
    std::mt19937 rng(20240611u);
    std::uniform_real_distribution<float> element(-1.0f, 1.0f);
    for (int trial = 0; trial < 500; ++trial) {
        Matrix4 m;
        for (int col = 0; col < 4; ++col)
            for (int row = 0; row < 4; ++row) m.setElem(col, row, element(rng) + (col == row ? 4.0f : 0.0f));
        const Matrix4 inv = inverse(m);
        EXPECT_LT(maxDifference(m * inv, Matrix4::identity()), 1e-5f) << "trial " << trial;
        EXPECT_LT(maxDifference(inv * m, Matrix4::identity()), 1e-5f) << "trial " << trial;
    }
}

// A placement as the renderer builds them: turned, scaled in [0.5, 2] and moved by up to a
// few thousand pixels; and a singular matrix, which gives non-finite elements.
TEST(Matrix4Inverse, PlacementsRecoverPointsAndASingularMatrixIsNotFinite) {
    std::mt19937 rng(7u);
    std::uniform_real_distribution<float> angle(-3.14159f, 3.14159f), scale(0.5f, 2.0f);
    std::uniform_real_distribution<float> offset(-2000.0f, 2000.0f), coord(-1000.0f, 1000.0f);
    for (int trial = 0; trial < 200; ++trial) {
        const Matrix4 m = Matrix4::translation(Vector3(offset(rng), offset(rng), offset(rng))) *
                          Matrix4::rotationX(angle(rng)) * Matrix4::rotationY(angle(rng)) *
                          Matrix4::rotationZ(angle(rng)) * Matrix4::scale(Vector3(scale(rng), scale(rng), scale(rng)));
        const Vector4 p(coord(rng), coord(rng), coord(rng), 1.0f);
        expectNear(inverse(m) * (m * p), p.getX(), p.getY(), p.getZ(), 1.0f, 0.05f);
    }
    Matrix4 m = Matrix4::identity();
    m.setCol2(Vector4(0.0f, 0.0f, 0.0f, 0.0f));
    EXPECT_FALSE(std::isfinite(inverse(m).getElem(2, 2)));
}
