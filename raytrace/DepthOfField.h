#pragma once
// Depth of field in two host iterations over the output pixels.
//
// The depth pass traces each pixel like the single pass but keeps the surface's nearer and
// farther crossings apart: colour worlds depth_worlds[0] (near) and [1] (far) receive the
// straight colour with the coverage in alpha, in the output depth; 8-bit worlds [2] and [3]
// receive, in each pixel's four bytes, one float: the ray parameter of that layer's hit, or a
// negative value for none.
//
// The composite pass blurs each layer with a box as large as the circle of confusion at the
// pixel's own depth and lays the nearer layer over the farther one into info.output.

#include "AEConfig.h"
#include "AE_Effect.h"
#include "render/RenderInfo.h"

// Blur radius in output pixels of a layer at ray parameter `depth` when the camera focuses at
// `focus_distance`; `max_blur` is the radius far out of focus.
double circleOfConfusion(double depth, double focus_distance, double max_blur);

// Host iteration callbacks (refcon: the render record). T is the output pixel type. They return
// 0, or a PF_Err: the composite pass that of its last area sample, either pass that of a
// sampling suite that could not be acquired.
template <class T>
PF_Err RayTrace_PixelDepthCallback(void* refcon, A_long thread_index, A_long i, A_long iterations);

template <class T>
PF_Err DofCompositeCallback(void* refcon, A_long thread_index, A_long i, A_long iterations);

extern template PF_Err RayTrace_PixelDepthCallback<PF_Pixel>(void*, A_long, A_long, A_long);
extern template PF_Err RayTrace_PixelDepthCallback<PF_Pixel16>(void*, A_long, A_long, A_long);
extern template PF_Err RayTrace_PixelDepthCallback<PF_PixelFloat>(void*, A_long, A_long, A_long);
extern template PF_Err DofCompositeCallback<PF_Pixel>(void*, A_long, A_long, A_long);
extern template PF_Err DofCompositeCallback<PF_Pixel16>(void*, A_long, A_long, A_long);
extern template PF_Err DofCompositeCallback<PF_PixelFloat>(void*, A_long, A_long, A_long);
