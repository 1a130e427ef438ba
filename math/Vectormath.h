// The vector and matrix types of the module: namespace Vectormath::Aos with Vector3, Vector4,
// Matrix3 and Matrix4, all single precision, column-major matrices acting on column vectors.
#pragma once

#include "math/Matrix3.h"
#include "math/Matrix4.h"
#include "math/Vectors.h"
