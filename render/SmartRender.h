#pragma once

// The host's smart-render protocol: pre-render reports what the effect produces, smart render
// checks the pixels out, builds the render record and runs the ray tracer over the output in
// one pass, or in the two depth-of-field passes.

#include "AEConfig.h"
#include "AE_Effect.h"
#include "shell/Handlers.h"

// Grows dst to hold src. An empty dst (left >= right or top >= bottom) becomes a copy of src,
// even an empty one; an empty src leaves a non-empty dst alone.
void UnionLRect(const PF_LRect* src, PF_LRect* dst);
