#include "shell/ParamTable.h"

#include <cstring>

#include "AEConfig.h"
#include "AE_EffectCB.h"

#ifndef PF_DEF_NAMEPTR
#define PF_DEF_NAMEPTR nameptr
#endif
#ifndef PF_DEF_NAMESPTR
#define PF_DEF_NAMESPTR namesptr
#endif

namespace {

constexpr A_long kOne = 65536;  // 1.0 in 16.16

constexpr A_long fix(A_long whole) { return whole * kOne; }

constexpr ParamSpec row(ParamKind kind, const char* name, A_long disk_id)
{
    return ParamSpec{kind, name, 0, 0, 0, 0, 0, 0, nullptr, 0, PF_Pixel{0, 0, 0, 0}, PF_ParamFlag_NONE, PF_PUI_NONE, disk_id};
}

constexpr ParamSpec input() { return row(ParamKind::Input, "", 0); }
constexpr ParamSpec layer(const char* name, A_long id) { return row(ParamKind::Layer, name, id); }
constexpr ParamSpec topic(const char* name, A_long id) { return row(ParamKind::TopicStart, name, id); }
constexpr ParamSpec topicEnd(A_long id) { return row(ParamKind::TopicEnd, "", id); }

constexpr ParamSpec angle(const char* name, A_long dephault, A_long id)
{
    ParamSpec s = row(ParamKind::Angle, name, id);
    s.dephault = dephault;
    return s;
}

constexpr ParamSpec fixed(const char* name, A_long valid_min, A_long valid_max, A_long slider_min,
                          A_long slider_max, A_long dephault, PF_Precision precision, A_long id)
{
    ParamSpec s = row(ParamKind::FixedSlider, name, id);
    s.valid_min = valid_min;
    s.valid_max = valid_max;
    s.slider_min = slider_min;
    s.slider_max = slider_max;
    s.dephault = dephault;
    s.precision = precision;
    return s;
}

constexpr ParamSpec slider(const char* name, A_long valid_min, A_long valid_max, A_long slider_min,
                           A_long slider_max, A_long dephault, A_long id)
{
    ParamSpec s = fixed(name, valid_min, valid_max, slider_min, slider_max, dephault, 0, id);
    s.kind = ParamKind::Slider;
    return s;
}

constexpr ParamSpec point(const char* name, A_long percent_x_y, A_long id)
{
    ParamSpec s = row(ParamKind::Point, name, id);
    s.dephault = percent_x_y;
    return s;
}

constexpr ParamSpec popup(const char* name, const char* items, A_long dephault, A_long id)
{
    ParamSpec s = row(ParamKind::Popup, name, id);
    s.items = items;
    s.num_choices = 3;
    s.dephault = dephault;
    return s;
}

constexpr ParamSpec checkbox(const char* name, A_long dephault, A_long id)
{
    ParamSpec s = row(ParamKind::Checkbox, name, id);
    s.dephault = dephault;
    return s;
}

constexpr ParamSpec color(const char* name, PF_Pixel dephault, A_long id)
{
    ParamSpec s = row(ParamKind::Color, name, id);
    s.color = dephault;
    return s;
}

constexpr ParamSpec with(ParamSpec s, PF_ParamFlags flags, PF_ParamUIFlags ui_flags = PF_PUI_NONE)
{
    s.flags = flags;
    s.ui_flags = ui_flags;
    return s;
}

constexpr PF_ParamFlags kCollapsed = PF_ParamFlag_COLLAPSE_TWIRLY;

// Limits that are not exact in 16.16 are the raw values the effect has always registered.
constexpr A_long kAlmostOne = 65470;     // 0.999
constexpr A_long kHyperboloidMax = 64880; // 0.99
constexpr A_long kRoughnessDefault = 655; // 0.01

}  // namespace

const ParamSpec kParamTable[PARAM_COUNT] = {
    input(),
    layer("Texture", 1),
    topic("Transform", 2),
    angle("Slide Texture", 0, 43),
    with(layer("Control Layer", 3), PF_ParamFlag_SUPERVISE),
    with(fixed("Ellipse X/Y", -kAlmostOne, kAlmostOne, -kAlmostOne, kAlmostOne, 0, 2, 5), kCollapsed),
    with(fixed("Hyperboloid", 0, kHyperboloidMax, 0, kHyperboloidMax, 0, 2, 59), kCollapsed),
    with(fixed("Radius Scale", 0, fix(32767), 0, fix(255), fix(100), 1, 44), kCollapsed),
    with(fixed("Height Scale", fix(-32767), fix(32767), fix(-255), fix(255), fix(100), 1, 45), kCollapsed),
    point("Position XY", fix(50), 7),
    with(fixed("Position Z", fix(-32767), fix(32767), fix(-1000), fix(1000), 0, 1, 8), kCollapsed),
    angle("Rotation X", fix(-90), 9),
    angle("Rotation Y", 0, 10),
    angle("Rotation Z", fix(-90), 11),
    topicEnd(12),
    topic("Open Cylinder", 13),
    checkbox("Show Pivot", 0, 14),
    with(fixed("Fixed Point U", 0, kOne, 0, kOne, kOne / 2, 2, 15), kCollapsed),
    fixed("Open Parameter", 0, fix(2), 0, fix(2), 0, 2, 17),
    topicEnd(13),  // shares its start's id
    topic("Extend Cylinder", 46),
    popup("Extension Side", "Head Side|Tail Side|Both Sides", 3, 47),
    slider("Extensions", 0, 32767, 0, 254, 0, 48),
    checkbox("Flip Vertical", 0, 49),
    angle("Screw", 0, 50),
    fixed("Interval", 0, fix(32767), 0, fix(1000), 0, 1, 51),
    topicEnd(52),
    topic("Shading", 19),
    with(popup("Falloff", "None|Smooth|Inverse Square Clamped", 1, 20), PF_ParamFlag_SUPERVISE),
    with(fixed("Falloff Radius", fix(1), fix(32767), fix(1), fix(1000), fix(200), 1, 21), kCollapsed, PF_PUI_DISABLED),
    with(fixed("Falloff Distance", fix(1), fix(32767), fix(1), fix(1000), fix(200), 1, 22), kCollapsed, PF_PUI_DISABLED),
    checkbox("Self Shadow", 0, 23),
    fixed("Light Transmission", 0, fix(100), 0, fix(100), 0, 1, 24),
    fixed("Emit", 0, fix(100), 0, fix(100), fix(100), 1, 25),
    fixed("Ambient", 0, fix(100), 0, fix(100), fix(100), 1, 26),
    fixed("Diffuse", 0, fix(100), 0, fix(100), fix(50), 1, 27),
    fixed("Specular", 0, fix(100), 0, fix(100), fix(50), 1, 28),
    fixed("Roughness", 0, kAlmostOne, 0, kAlmostOne, kRoughnessDefault, 3, 29),
    fixed("Metal", 0, fix(100), 0, fix(100), 0, 1, 30),
    layer("Reflection Map", 31),
    fixed("Reflection Intensity", 0, fix(100), 0, fix(100), fix(100), 1, 32),
    fixed("Reflection Rolloff", 0, fix(100), 0, fix(100), fix(10), 1, 32),  // shares id 32
    topicEnd(34),
    topic("Rendering", 35),
    popup("Render Side", "Full|Inside|Outside", 1, 36),
    checkbox("Use Composition Camera", 1, 37),
    popup("Depth Of Field", "Off|Camera Settings|On", 1, 38),
    fixed("Boost DOF Blur", 0, fix(2000), 0, fix(1000), fix(100), 1, 39),
    fixed("Sharpness", 0, kOne, 0, kOne, kOne / 2, 2, 40),
    topic("Depth Composite", 53),
    popup("Mode", "Off|Fog|Fade Out", 1, 54),
    fixed("Start depth", 0, fix(32767), 0, fix(1000), 0, 1, 55),
    fixed("End depth", 0, fix(32767), 0, fix(1000), fix(1000), 1, 56),
    color("Fog Color", PF_Pixel{255, 255, 255, 255}, 57),
    topicEnd(58),
    topicEnd(41),
    with(fixed("dammy", fix(-32767), fix(32767), fix(-32767), fix(32767), 0, 1, 42), PF_ParamFlag_NONE,
         PF_PUI_INVISIBLE),
};

namespace {

// The valid and slider ranges and the default both slider kinds carry, in their own units.
template <class SliderDef>
void setSliderRange(SliderDef& slider, const ParamSpec& spec)
{
    slider.valid_min = spec.valid_min;
    slider.valid_max = spec.valid_max;
    slider.slider_min = spec.slider_min;
    slider.slider_max = spec.slider_max;
    slider.value = slider.dephault = spec.dephault;
}

}  // namespace

PF_ParamDef describeParam(const ParamSpec& spec)
{
    PF_ParamDef def;
    std::memset(&def, 0, sizeof(def));
    def.flags = spec.flags;
    def.ui_flags = spec.ui_flags;
    def.uu.id = spec.disk_id;

    switch (spec.kind) {
    case ParamKind::Input:
    case ParamKind::Layer:
        def.param_type = PF_Param_LAYER;
        def.u.ld.dephault = PF_LayerDefault_NONE;
        break;
    case ParamKind::TopicStart:
        def.param_type = PF_Param_GROUP_START;
        break;
    case ParamKind::TopicEnd:
        def.param_type = PF_Param_GROUP_END;
        break;
    case ParamKind::Angle:
        def.param_type = PF_Param_ANGLE;
        def.u.ad.value = def.u.ad.dephault = spec.dephault;
        break;
    case ParamKind::FixedSlider:
        def.param_type = PF_Param_FIX_SLIDER;
        setSliderRange(def.u.fd, spec);
        def.u.fd.precision = spec.precision;
        break;
    case ParamKind::Slider:
        def.param_type = PF_Param_SLIDER;
        setSliderRange(def.u.sd, spec);
        break;
    case ParamKind::Point:
        def.param_type = PF_Param_POINT;
        def.u.td.x_value = def.u.td.x_dephault = spec.dephault;
        def.u.td.y_value = def.u.td.y_dephault = spec.dephault;
        def.u.td.restrict_bounds = false;
        break;
    case ParamKind::Popup:
        def.param_type = PF_Param_POPUP;
        def.u.pd.num_choices = spec.num_choices;
        def.u.pd.value = spec.dephault;
        def.u.pd.dephault = A_short(spec.dephault);
        def.u.pd.u.PF_DEF_NAMESPTR = spec.items;
        break;
    case ParamKind::Checkbox:
        def.param_type = PF_Param_CHECKBOX;
        def.u.bd.value = spec.dephault;
        def.u.bd.dephault = PF_Boolean(spec.dephault);
        def.u.bd.u.PF_DEF_NAMEPTR = "";  // no text beside the box
        break;
    case ParamKind::Color:
        def.param_type = PF_Param_COLOR;
        def.u.cd.value = def.u.cd.dephault = spec.color;
        break;
    }
    return def;
}
