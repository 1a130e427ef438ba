// Element-wise comparisons of the vector-math types for the math tests.
#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "math/Vectormath.h"

namespace math_test {

inline void expectNear(const Vectormath::Aos::Vector3& actual, float x, float y, float z, float tol = 1e-6f) {
    EXPECT_NEAR(actual.getX(), x, tol);
    EXPECT_NEAR(actual.getY(), y, tol);
    EXPECT_NEAR(actual.getZ(), z, tol);
}

inline void expectNear(const Vectormath::Aos::Vector4& actual, float x, float y, float z, float w,
                       float tol = 1e-6f) {
    EXPECT_NEAR(actual.getX(), x, tol);
    EXPECT_NEAR(actual.getY(), y, tol);
    EXPECT_NEAR(actual.getZ(), z, tol);
    EXPECT_NEAR(actual.getW(), w, tol);
}

// Largest absolute element difference.
inline float maxDifference(const Vectormath::Aos::Matrix4& a, const Vectormath::Aos::Matrix4& b) {
    float worst = 0.0f;
    for (int col = 0; col < 4; ++col)
        for (int row = 0; row < 4; ++row) worst = std::max(worst, std::fabs(a.getElem(col, row) - b.getElem(col, row)));
    return worst;
}

}  // namespace math_test
