#pragma once

// The effect's parameters as data: one row per index of the host's parameter array, in
// registration order. Numbers are as the host stores them: fixed sliders and angles in raw
// 16.16, the point default in percent 16.16, popups 1-based.

#include "AEConfig.h"
#include "AE_Effect.h"
#include "shell/ParamIds.h"

enum class ParamKind { Input, Layer, TopicStart, TopicEnd, Angle, FixedSlider, Slider, Point, Popup, Checkbox, Color };

struct ParamSpec {
    ParamKind kind;
    const char* name;       // display name; "" for topic ends and the input
    A_long valid_min;
    A_long valid_max;
    A_long slider_min;
    A_long slider_max;
    A_long dephault;        // value and reset value alike; x and y of the point; 0/1 checkbox
    PF_Precision precision; // decimal places shown (fixed sliders)
    const char* items;      // popup choices separated by '|'
    A_short num_choices;
    PF_Pixel color;         // colour default
    PF_ParamFlags flags;
    PF_ParamUIFlags ui_flags;
    A_long disk_id;         // persistent key in saved projects; duplicates are deliberate
};

// Rows 0 .. PARAM_COUNT - 1; row 0 is the input layer, which the host supplies.
extern const ParamSpec kParamTable[PARAM_COUNT];

// The parameter description the host is given for one row (name left empty: the host's own
// string copy fills it in).
PF_ParamDef describeParam(const ParamSpec& spec);
