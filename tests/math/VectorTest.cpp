// The vector operations the module calls. Vector3 is a direction stored in four floats.

#include <gtest/gtest.h>

#include <cmath>

#include "math/MathExpect.h"
#include "math/Vectormath.h"

using namespace Vectormath::Aos;
using math_test::expectNear;

TEST(Vector3, OccupiesFourFloatsAndStartsAtZero) {
    EXPECT_EQ(sizeof(Vector3), 16u);
    EXPECT_EQ(sizeof(Vector4), 16u);
    expectNear(Vector3(), 0.0f, 0.0f, 0.0f);
    expectNear(Vector4(), 0.0f, 0.0f, 0.0f, 0.0f);
}

TEST(Vector3, ArithmeticDotAndLength) {
    const Vector3 a(1.0f, 2.0f, 3.0f), b(4.0f, -5.0f, 6.0f);
    expectNear(a + b, 5.0f, -3.0f, 9.0f);
    expectNear(a - b, -3.0f, 7.0f, -3.0f);
    expectNear(2.0f * a, 2.0f, 4.0f, 6.0f);
    expectNear(b / 2.0f, 2.0f, -2.5f, 3.0f);
    expectNear(-a, -1.0f, -2.0f, -3.0f);
    expectNear(mulPerElem(a, b), 4.0f, -10.0f, 18.0f);
    const Vector3 c(1.0f, 2.0f, 2.0f);
    EXPECT_EQ(dot(c, Vector3(3.0f, -1.0f, 4.0f)), 9.0f);
    EXPECT_EQ(length(c), 3.0f);
}

TEST(Vector3, NormalizeGivesUnitLengthInTheSameDirectionAndNaNForZero) {
    expectNear(normalize(Vector3(3.0f, 0.0f, -4.0f)), 0.6f, 0.0f, -0.8f);
    expectNear(normalize(Vector3(0.0f, 1e-15f, 0.0f)), 0.0f, 1.0f, 0.0f);
    EXPECT_TRUE(std::isnan(normalize(Vector3()).getX()));
}

TEST(Vector3, CrossIsRightHanded) {
    expectNear(cross(Vector3::xAxis(), Vector3::yAxis()), 0.0f, 0.0f, 1.0f);
    expectNear(cross(Vector3::yAxis(), Vector3::xAxis()), 0.0f, 0.0f, -1.0f);
    // (2*6 - 3*5, 3*4 - 1*6, 1*5 - 2*4)
    expectNear(cross(Vector3(1.0f, 2.0f, 3.0f), Vector3(4.0f, 5.0f, 6.0f)), -3.0f, 6.0f, -3.0f);
}

TEST(Vector3, ConversionsBetweenThreeAndFourComponents) {
    const Vector4 p(1.0f, 2.0f, 3.0f, 9.0f);
    const Vector3 v = p;
    EXPECT_EQ(dot(v, v), 14.0f);  // w is dropped
    expectNear(Vector4(v), 1.0f, 2.0f, 3.0f, 0.0f);  // a direction unless a w is given
    expectNear(Vector4(v, 1.0f), 1.0f, 2.0f, 3.0f, 1.0f);
}

TEST(Vector4, ArithmeticAndDotUseAllFourComponents) {
    const Vector4 a(1.0f, 2.0f, 3.0f, 4.0f), b(-1.0f, 0.5f, 2.0f, -2.0f);
    expectNear(a + b, 0.0f, 2.5f, 5.0f, 2.0f);
    expectNear(a - b, 2.0f, 1.5f, 1.0f, 6.0f);
    expectNear(a * 0.5f, 0.5f, 1.0f, 1.5f, 2.0f);
    expectNear(-b, 1.0f, -0.5f, -2.0f, 2.0f);
    expectNear(mulPerElem(a, b), -1.0f, 1.0f, 6.0f, -8.0f);
    EXPECT_EQ(dot(a, b), -1.0f + 1.0f + 6.0f - 8.0f);
}
