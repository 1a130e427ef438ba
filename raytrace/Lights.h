#pragma once
// Light arriving at a surface point, and the colour that passes through the surface's own
// texture on the way (self shadow, reflection occlusion, light transmission).

#include "render/RenderInfo.h"
#include "math/Vectormath.h"
#include "AEConfig.h"
#include "AE_Effect.h"

// Direction and relative power of `light` at `point` = (P, 1) in the shape's local space.
// power: distance falloff times spot cone, without the light's intensity (1 for ambient).
// direction: unit vector from the light towards P; zero for an ambient light; left untouched
// for a light type this renderer does not know.
void GetLightPower(const RenderInfoTemplate<Cylinder>& info, const vLight& light,
                   const Vectormath::Aos::Vector4& point, double& power,
                   Vectormath::Aos::Vector3& direction);

// Follows `ray` (origin on the surface, unit direction) to its second crossing of the shape and
// returns the (alpha, red, green, blue) factors of the light that passes the texel found there:
// (1 - alpha) + transmission * alpha * texel per channel; all ones when nothing is in the way.
// With a non-parallel `light` a crossing beyond the light does not count; null means no limit.
// T is the texture's pixel type.
template <class T>
Vectormath::Aos::Vector4 GetObstColor(const RenderInfoTemplate<Cylinder>& info, const Ray& ray,
                                      const vLight* light);

extern template Vectormath::Aos::Vector4 GetObstColor<PF_Pixel>(
    const RenderInfoTemplate<Cylinder>&, const Ray&, const vLight*);
extern template Vectormath::Aos::Vector4 GetObstColor<PF_Pixel16>(
    const RenderInfoTemplate<Cylinder>&, const Ray&, const vLight*);
extern template Vectormath::Aos::Vector4 GetObstColor<PF_PixelFloat>(
    const RenderInfoTemplate<Cylinder>&, const Ray&, const vLight*);
