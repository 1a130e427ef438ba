#pragma once
// Fog and fade-out by the distance of a hit along its ray.

#include "render/RenderInfo.h"
#include "AEConfig.h"
#include "AE_Effect.h"

// Tints (mode 2, fog) or fades (mode 3, fade out) the straight `colour` of a hit at ray
// parameter `t` (pixels from the camera). Fog keeps the coverage; fade out keeps the colour.
// Any other mode leaves the colour alone.
void depthComposite(const RenderInfoTemplate<Cylinder>::DepthCompositeInfo& info, double t,
                    PF_PixelFloat& colour);
