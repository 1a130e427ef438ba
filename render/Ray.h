#pragma once

#include "math/Vectormath.h"

// A ray in the surface's local space. The point at parameter t is origin + t * direction;
// t is in local units and positive in front of the ray's start.
struct Ray {
    Vectormath::Aos::Vector3 direction;  // unit length
    Vectormath::Aos::Vector4 origin;     // w = 1
};
