#pragma once

// Fills the per-frame render record from the effect's parameters, the control layer, the
// composition camera and the active light layers, at the in-data's current time.

#include "AEConfig.h"
#include "AE_Effect.h"
#include "AE_GeneralPlug.h"
#include "render/RenderInfo.h"

// Runs once per smart-render call, after the driver has set downsample_x, downsample_y and
// pixel_aspect. Always returns PF_Err_NONE: a host call that fails leaves the fields that depend
// on it as they were, and the record is rendered as far as it could be built.
PF_Err ConstructRenderInfo(const PF_InData* in_data, RenderInfoTemplate<Cylinder>& info);

// Corrects a host transform (row-vector convention, translation in row 3) for non-square pixels
// of ratio numerator/denominator: scales the x component of the three axis rows by the ratio
// and moves the translation's x about the middle of a frame `width` pixels wide.
void ModifyAspectedCoordinate(const A_Ratio& ratio, A_long width, A_Matrix4& matrix);
