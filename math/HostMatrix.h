// Conversion between the host's transforms and Matrix4.
//
// The host stores a transform as 4x4 doubles indexed [row][column] and multiplies row vectors on
// the left (p' = p * M): rows 0-2 are the images of the X, Y, Z axes and row 3 the translation.
// Matrix4 multiplies column vectors, so host row i becomes column i (a transpose), narrowed to
// single precision. A point p then maps to fromHostMatrix(M) * (p, 1), the same as p * M.
#pragma once

#include "AEConfig.h"
#include "A.h"
#include "math/Matrix4.h"

namespace Vectormath {
namespace Aos {

inline Matrix4 fromHostMatrix(const double m[4][4]) {
    Matrix4 result;
    for (int i = 0; i < 4; ++i) {
        result.setCol(i, Vector4(static_cast<float>(m[i][0]), static_cast<float>(m[i][1]),
                                 static_cast<float>(m[i][2]), static_cast<float>(m[i][3])));
    }
    return result;
}

inline Matrix4 fromHostMatrix(const A_Matrix4& m) { return fromHostMatrix(m.mat); }

// The reverse: column i becomes host row i, widened to double.
inline A_Matrix4 toHostMatrix(const Matrix4& m) {
    A_Matrix4 result;
    for (int i = 0; i < 4; ++i) {
        for (int j = 0; j < 4; ++j) result.mat[i][j] = m.getElem(i, j);
    }
    return result;
}

}  // namespace Aos
}  // namespace Vectormath

// Reachable unqualified as well: callers hold host structs from the global namespace.
using Vectormath::Aos::fromHostMatrix;
using Vectormath::Aos::toHostMatrix;
