#include <gtest/gtest.h>

#include "math/HostMatrix.h"
#include "math/MathExpect.h"

using namespace Vectormath::Aos;
using math_test::expectNear;

// A host transform: axes scaled and turned a quarter about z, translation (100, 200, -50).
// Row-vector convention, so rows 0-2 are the images of the axes and row 3 the translation.
TEST(HostMatrix, HostRowsBecomeColumnsAndTheTranslationColumnThree) {
    A_Matrix4 a = {{{0.0, 2.0, 0.0, 0.0}, {-3.0, 0.0, 0.0, 0.0}, {0.0, 0.0, 0.5, 0.0}, {100.0, 200.0, -50.0, 1.0}}};
    const Matrix4 m = fromHostMatrix(a);
    expectNear(m.getCol0(), 0.0f, 2.0f, 0.0f, 0.0f);
    expectNear(m.getCol1(), -3.0f, 0.0f, 0.0f, 0.0f);
    expectNear(m.getCol2(), 0.0f, 0.0f, 0.5f, 0.0f);
    expectNear(m.getCol3(), 100.0f, 200.0f, -50.0f, 1.0f);
    // The host's row product by hand: (1*0 + 2*-3 + 100, 1*2 + 200, 3*0.5 - 50, 1).
    expectNear(m * Vector4(1.0f, 2.0f, 3.0f, 1.0f), 94.0f, 202.0f, -48.5f, 1.0f);

    a.mat[3][0] = 0.1;  // not representable in float: the raw array overload rounds it
    EXPECT_EQ(fromHostMatrix(a.mat).getElem(3, 0), 0.1f);
}
