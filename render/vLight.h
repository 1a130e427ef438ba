#pragma once

#include "AEConfig.h"
#include "AE_Effect.h"
#include "math/Vectormath.h"

// One active light layer of the composition, prepared for shading in the shape's local space.
// Lives in host handle memory owned by the render record.
struct vLight {
    Vectormath::Aos::Matrix4 to_object;  // light space -> shape local space
    float color[4];                      // alpha, red, green, blue; each 0..1
    A_long type;                         // the host's light type code
    double intensity;                    // fraction (intensity / 100)
    double cos_half_cone;                // cosine of half the cone angle
    double feather;                      // fraction (cone feather / 100)
    float shadow_darkness;               // fraction in [0, 1]
    double shadow_diffusion;             // pixels
    bool casts_shadows;
};
