#pragma once

#include "math/Vectormath.h"

// Gives a shape semi-axes (a, b, c) and the derived vectors, with a zero inverse where a size
// is zero (the straight cylinder's c).
template <class Shape>
void setShapeSize(Shape& shape, float a, float b, float c)
{
    using Vectormath::Aos::Vector3;
    auto inverse = [](float x) { return x > 0.0f ? 1.0f / x : 0.0f; };
    shape.size = Vector3(a, b, c);
    shape.size_sq = Vector3(a * a, b * b, c * c);
    shape.inv_size = Vector3(inverse(a), inverse(b), inverse(c));
    shape.inv_size_sq = Vector3(inverse(a) * inverse(a), inverse(b) * inverse(b),
                                inverse(c) * inverse(c));
}
