#pragma once

// Index of every parameter in the host's parameter array. Index 0 is the layer the effect is
// applied to; the rest are registered in this order at parameter set-up. Saved projects refer
// to parameters by disk id, not by these indices, but every part of the effect reads values by
// index, so the order here is the order of registration.
enum {
    PARAM_INPUT = 0,
    PARAM_TEXTURE,                // 1
    PARAM_TRANSFORM_START,        // 2
    PARAM_SLIDE_TEXTURE,          // 3
    PARAM_CONTROL_LAYER,          // 4
    PARAM_ELLIPSE_XY,             // 5
    PARAM_HYPERBOLOID,            // 6
    PARAM_RADIUS_SCALE,           // 7
    PARAM_HEIGHT_SCALE,           // 8
    PARAM_POSITION_XY,            // 9
    PARAM_POSITION_Z,             // 10
    PARAM_ROTATION_X,             // 11
    PARAM_ROTATION_Y,             // 12
    PARAM_ROTATION_Z,             // 13
    PARAM_TRANSFORM_END,          // 14
    PARAM_OPEN_CYLINDER_START,    // 15
    PARAM_SHOW_PIVOT,             // 16
    PARAM_FIXED_POINT_U,          // 17
    PARAM_OPEN_PARAMETER,         // 18
    PARAM_OPEN_CYLINDER_END,      // 19
    PARAM_EXTEND_CYLINDER_START,  // 20
    PARAM_EXTENSION_SIDE,         // 21
    PARAM_EXTENSIONS,             // 22
    PARAM_FLIP_VERTICAL,          // 23
    PARAM_SCREW,                  // 24
    PARAM_INTERVAL,               // 25
    PARAM_EXTEND_CYLINDER_END,    // 26
    PARAM_SHADING_START,          // 27
    PARAM_FALLOFF,                // 28
    PARAM_FALLOFF_RADIUS,         // 29
    PARAM_FALLOFF_DISTANCE,       // 30
    PARAM_SELF_SHADOW,            // 31
    PARAM_LIGHT_TRANSMISSION,     // 32
    PARAM_EMIT,                   // 33
    PARAM_AMBIENT,                // 34
    PARAM_DIFFUSE,                // 35
    PARAM_SPECULAR,               // 36
    PARAM_ROUGHNESS,              // 37
    PARAM_METAL,                  // 38
    PARAM_REFLECTION_MAP,         // 39
    PARAM_REFLECTION_INTENSITY,   // 40
    PARAM_REFLECTION_ROLLOFF,     // 41
    PARAM_SHADING_END,            // 42
    PARAM_RENDERING_START,        // 43
    PARAM_RENDER_SIDE,            // 44
    PARAM_USE_COMP_CAMERA,        // 45
    PARAM_DEPTH_OF_FIELD,         // 46
    PARAM_BOOST_DOF_BLUR,         // 47
    PARAM_SHARPNESS,              // 48
    PARAM_DEPTH_COMPOSITE_START,  // 49
    PARAM_DEPTH_COMPOSITE_MODE,   // 50
    PARAM_START_DEPTH,            // 51
    PARAM_END_DEPTH,              // 52
    PARAM_FOG_COLOR,              // 53
    PARAM_DEPTH_COMPOSITE_END,    // 54
    PARAM_RENDERING_END,          // 55
    PARAM_DAMMY,                  // 56: hidden slider that carries the control-layer expression
    PARAM_COUNT                   // 57, the input layer included
};

static_assert(PARAM_DAMMY == 56 && PARAM_COUNT == 57, "parameter indices are persistent");
