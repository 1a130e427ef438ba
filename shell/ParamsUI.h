#pragma once

// The rules that keep the effect controls consistent after they exist: which controls the
// current settings grey out, and the link between the chosen control layer and the hidden
// "dammy" slider. The two command handlers (UpdataParamsUI, HandleChangedParam) are declared
// in shell/Handlers.h; this header names the pieces they are built from.

#include "AEConfig.h"
#include "AE_Effect.h"
#include "shell/ParamIds.h"

namespace params_ui {

// The expression installed on "dammy" is head + the control layer's name + tail. Its value is
// the length of the control layer's local point (1, 1, 1) in world space, so it changes
// whenever the layer moves and the host renders the effect again; it falls back to the
// slider's own value when no layer of that name exists.
extern const char kLinkExpressionHead[];
extern const char kLinkExpressionTail[];

// The transform controls that a control layer takes over, in the order they are updated.
// "Hyperboloid" and "Slide Texture" shape the surface rather than place it and stay editable.
constexpr PF_ParamIndex kLayerDrivenParams[] = {
    PARAM_ELLIPSE_XY, PARAM_RADIUS_SCALE, PARAM_HEIGHT_SCALE, PARAM_POSITION_XY,
    PARAM_POSITION_Z, PARAM_ROTATION_X,   PARAM_ROTATION_Y,   PARAM_ROTATION_Z,
};

// The host's effect API version as major * 100 + minor (13.2 is 1302).
A_long hostApiVersion(const PF_InData& in_data);

// First effect API version whose hosts honour PF_PUI_INVISIBLE (13.2, After Effects CS6).
// Older hosts need "dammy" hidden through its stream's dynamic flags.
constexpr A_long kFirstApiWithInvisibleParams = 1302;

}  // namespace params_ui
