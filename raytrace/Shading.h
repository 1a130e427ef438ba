#pragma once
// One ray hit on the shape becomes one straight colour: texture, emission, lights, shadows,
// reflection map, depth composite and the pivot line.

#include "render/RenderInfo.h"
#include "AEConfig.h"
#include "AE_Effect.h"

// Shades the hit at parameter `t` of `ray` (shape local space) and writes the straight,
// unclamped colour into `out` (8- and 16-bit white reads 1.0). T is the pixel type of the
// texture and reflection layers. The return value carries no status.
// May throw a PF_Err when a sampling suite cannot be acquired; pixel callbacks catch it.
template <class T>
int Ray_GetColor(const Ray& ray, double t, const RenderInfoTemplate<Cylinder>& info,
                 PF_PixelFloat& out);

extern template int Ray_GetColor<PF_Pixel>(const Ray&, double,
                                           const RenderInfoTemplate<Cylinder>&, PF_PixelFloat&);
extern template int Ray_GetColor<PF_Pixel16>(const Ray&, double,
                                             const RenderInfoTemplate<Cylinder>&, PF_PixelFloat&);
extern template int Ray_GetColor<PF_PixelFloat>(const Ray&, double,
                                                const RenderInfoTemplate<Cylinder>&,
                                                PF_PixelFloat&);
