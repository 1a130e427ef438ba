#include <gtest/gtest.h>

#include <random>

#include "math/MathExpect.h"
#include "math/Vectormath.h"

using namespace Vectormath::Aos;
using math_test::expectNear;
using math_test::maxDifference;

namespace {

// Every element random in [-1, 1], plus 4 on the diagonal: diagonally dominant, so well
// conditioned, and with a general bottom row so every cofactor of the inverse takes part.
Matrix4 randomWellConditioned(std::mt19937& rng) {
    std::uniform_real_distribution<float> element(-1.0f, 1.0f);
    Matrix4 m;
    for (int col = 0; col < 4; ++col)
        for (int row = 0; row < 4; ++row) m.setElem(col, row, element(rng) + (col == row ? 4.0f : 0.0f));
    return m;
}

// A placement as the renderer builds them: turned, scaled in [0.5, 2] and moved by up to a
// few thousand pixels.
Matrix4 randomPlacement(std::mt19937& rng) {
    std::uniform_real_distribution<float> angle(-3.14159f, 3.14159f);
    std::uniform_real_distribution<float> scale(0.5f, 2.0f);
    std::uniform_real_distribution<float> offset(-2000.0f, 2000.0f);
    return Matrix4::translation(Vector3(offset(rng), offset(rng), offset(rng))) * Matrix4::rotationX(angle(rng)) *
           Matrix4::rotationY(angle(rng)) * Matrix4::rotationZ(angle(rng)) *
           Matrix4::scale(Vector3(scale(rng), scale(rng), scale(rng)));
}

// Largest element difference from the identity.
float identityError(const Matrix4& product) { return maxDifference(product, Matrix4::identity()); }

}  // namespace

TEST(Matrix4Inverse, RandomWellConditionedMatricesInvertBothWays) {
    std::mt19937 rng(20240611u);
    for (int trial = 0; trial < 500; ++trial) {
        const Matrix4 m = randomWellConditioned(rng);
        const Matrix4 inv = inverse(m);
        EXPECT_LT(identityError(m * inv), 1e-5f) << "trial " << trial;
        EXPECT_LT(identityError(inv * m), 1e-5f) << "trial " << trial;
    }
}

TEST(Matrix4Inverse, PlacementsRecoverPointsAndTheAffineInverseAgrees) {
    std::mt19937 rng(7u);
    std::uniform_real_distribution<float> coord(-1000.0f, 1000.0f);
    for (int trial = 0; trial < 200; ++trial) {
        const Matrix4 m = randomPlacement(rng);
        const Vector4 p(coord(rng), coord(rng), coord(rng), 1.0f);
        const Vector4 back = inverse(m) * (m * p);
        expectNear(back, p.getX(), p.getY(), p.getZ(), 1.0f, 0.05f);
        EXPECT_LT(maxDifference(affineInverse(m), inverse(m)), 1e-3f) << "trial " << trial;
    }
}

// A rigid transform, where the cheaper inverses apply and must agree with the general one.
TEST(Matrix4Inverse, OrthoAndAffineInversesOfARigidTransformAgree) {
    // Quarter turn about z, then a move by (10, 20, 30): (10, 21, 30) came from (1, 0, 0).
    const Matrix4 m(Vector4(0.0f, 1.0f, 0.0f, 0.0f), Vector4(-1.0f, 0.0f, 0.0f, 0.0f),
                    Vector4(0.0f, 0.0f, 1.0f, 0.0f), Vector4(10.0f, 20.0f, 30.0f, 1.0f));
    const Matrix4 inv = inverse(m);
    expectNear(inv * Vector4(10.0f, 21.0f, 30.0f, 1.0f), 1.0f, 0.0f, 0.0f, 1.0f);
    EXPECT_EQ(maxDifference(orthoInverse(m), inv), 0.0f);
    EXPECT_EQ(maxDifference(affineInverse(m), inv), 0.0f);
}

TEST(Matrix4Inverse, SpecialMatricesHaveHandDerivedInversesAndDeterminants) {
    // w' = z + w; undone by w = w' - z'.
    Matrix4 m = Matrix4::identity();
    m.setElem(2, 3, 1.0f);
    const Matrix4 inv = inverse(m);
    Matrix4 expected = Matrix4::identity();
    expected.setElem(2, 3, -1.0f);
    EXPECT_EQ(maxDifference(inv, expected), 0.0f);
    EXPECT_EQ(determinant(m), 1.0f);

    // Swapping z and w is its own inverse.
    const Matrix4 swapZW(Vector4::xAxis(), Vector4::yAxis(), Vector4::wAxis(), Vector4::zAxis());
    EXPECT_EQ(maxDifference(inverse(swapZW), swapZW), 0.0f);
    EXPECT_EQ(determinant(swapZW), -1.0f);

    m = Matrix4::scale(Vector3(2.0f, 3.0f, 4.0f));
    m.setElem(1, 0, 5.0f);  // shear x by y: leaves the determinant alone
    EXPECT_EQ(determinant(m), 24.0f);
    EXPECT_LT(identityError(m * inverse(m)), 1e-6f);

    // Singular: non-finite elements.
    m = Matrix4::identity();
    m.setCol2(Vector4(0.0f, 0.0f, 0.0f, 0.0f));
    EXPECT_EQ(determinant(m), 0.0f);
    EXPECT_FALSE(std::isfinite(inverse(m).getElem(2, 2)));
}

TEST(Matrix3Inverse, RandomUpper3x3InvertsBothWays) {
    std::mt19937 rng(3u);
    for (int trial = 0; trial < 200; ++trial) {
        const Matrix3 m = randomWellConditioned(rng).getUpper3x3();
        const Matrix3 inv = inverse(m);
        EXPECT_LT(maxDifference(m * inv, Matrix3::identity()), 1e-5f) << "trial " << trial;
        EXPECT_LT(maxDifference(inv * m, Matrix3::identity()), 1e-5f) << "trial " << trial;
    }
}
