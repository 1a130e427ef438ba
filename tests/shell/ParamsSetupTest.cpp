// The parameter set as the host receives it, checked field by field against the effect's
// documented vocabulary (written out here independently of the module's own table).

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <vector>
#include <string>

#include "AE_Effect.h"
#include "host/session/Host.h"
#include "shell/ParamIds.h"
#include "support/ErrorText.h"

namespace {

constexpr A_long fx(double v) { return A_long(v * 65536.0); }  // exact for these values

enum Kind { LAYER, TOPIC, END, ANGLE, FIXED, SLIDER, POINT, POPUP, CHECK, COLOR };

struct Expected {
    Kind kind;
    const char* name;
    A_long id;
    PF_ParamFlags flags;
    PF_ParamUIFlags ui;
    A_long vmin, vmax, smin, smax, dflt;
    int precision;
    const char* items;
};

constexpr PF_ParamFlags TW = PF_ParamFlag_COLLAPSE_TWIRLY;
constexpr PF_ParamFlags SV = PF_ParamFlag_SUPERVISE;

// Index 1 .. 56.
const Expected kExpected[] = {
    {LAYER, "Texture", 1, 0, 0, 0, 0, 0, 0, 0, 0, nullptr},
    {TOPIC, "Transform", 2, 0, 0, 0, 0, 0, 0, 0, 0, nullptr},
    {ANGLE, "Slide Texture", 43, 0, 0, 0, 0, 0, 0, 0, 0, nullptr},
    {LAYER, "Control Layer", 3, SV, 0, 0, 0, 0, 0, 0, 0, nullptr},
    {FIXED, "Ellipse X/Y", 5, TW, 0, -65470, 65470, -65470, 65470, 0, 2, nullptr},
    {FIXED, "Hyperboloid", 59, TW, 0, 0, 64880, 0, 64880, 0, 2, nullptr},
    {FIXED, "Radius Scale", 44, TW, 0, 0, fx(32767), 0, fx(255), fx(100), 1, nullptr},
    {FIXED, "Height Scale", 45, TW, 0, fx(-32767), fx(32767), fx(-255), fx(255), fx(100), 1, nullptr},
    {POINT, "Position XY", 7, 0, 0, 0, 0, 0, 0, fx(50), 0, nullptr},
    {FIXED, "Position Z", 8, TW, 0, fx(-32767), fx(32767), fx(-1000), fx(1000), 0, 1, nullptr},
    {ANGLE, "Rotation X", 9, 0, 0, 0, 0, 0, 0, fx(-90), 0, nullptr},
    {ANGLE, "Rotation Y", 10, 0, 0, 0, 0, 0, 0, 0, 0, nullptr},
    {ANGLE, "Rotation Z", 11, 0, 0, 0, 0, 0, 0, fx(-90), 0, nullptr},
    {END, "", 12, 0, 0, 0, 0, 0, 0, 0, 0, nullptr},
    {TOPIC, "Open Cylinder", 13, 0, 0, 0, 0, 0, 0, 0, 0, nullptr},
    {CHECK, "Show Pivot", 14, 0, 0, 0, 0, 0, 0, 0, 0, nullptr},
    {FIXED, "Fixed Point U", 15, TW, 0, 0, fx(1), 0, fx(1), fx(0.5), 2, nullptr},
    {FIXED, "Open Parameter", 17, 0, 0, 0, fx(2), 0, fx(2), 0, 2, nullptr},
    {END, "", 13, 0, 0, 0, 0, 0, 0, 0, 0, nullptr},
    {TOPIC, "Extend Cylinder", 46, 0, 0, 0, 0, 0, 0, 0, 0, nullptr},
    {POPUP, "Extension Side", 47, 0, 0, 0, 0, 0, 0, 3, 0, "Head Side|Tail Side|Both Sides"},
    {SLIDER, "Extensions", 48, 0, 0, 0, 32767, 0, 254, 0, 0, nullptr},
    {CHECK, "Flip Vertical", 49, 0, 0, 0, 0, 0, 0, 0, 0, nullptr},
    {ANGLE, "Screw", 50, 0, 0, 0, 0, 0, 0, 0, 0, nullptr},
    {FIXED, "Interval", 51, 0, 0, 0, fx(32767), 0, fx(1000), 0, 1, nullptr},
    {END, "", 52, 0, 0, 0, 0, 0, 0, 0, 0, nullptr},
    {TOPIC, "Shading", 19, 0, 0, 0, 0, 0, 0, 0, 0, nullptr},
    {POPUP, "Falloff", 20, SV, 0, 0, 0, 0, 0, 1, 0, "None|Smooth|Inverse Square Clamped"},
    {FIXED, "Falloff Radius", 21, TW, PF_PUI_DISABLED, fx(1), fx(32767), fx(1), fx(1000), fx(200), 1, nullptr},
    {FIXED, "Falloff Distance", 22, TW, PF_PUI_DISABLED, fx(1), fx(32767), fx(1), fx(1000), fx(200), 1, nullptr},
    {CHECK, "Self Shadow", 23, 0, 0, 0, 0, 0, 0, 0, 0, nullptr},
    {FIXED, "Light Transmission", 24, 0, 0, 0, fx(100), 0, fx(100), 0, 1, nullptr},
    {FIXED, "Emit", 25, 0, 0, 0, fx(100), 0, fx(100), fx(100), 1, nullptr},
    {FIXED, "Ambient", 26, 0, 0, 0, fx(100), 0, fx(100), fx(100), 1, nullptr},
    {FIXED, "Diffuse", 27, 0, 0, 0, fx(100), 0, fx(100), fx(50), 1, nullptr},
    {FIXED, "Specular", 28, 0, 0, 0, fx(100), 0, fx(100), fx(50), 1, nullptr},
    {FIXED, "Roughness", 29, 0, 0, 0, 65470, 0, 65470, 655, 3, nullptr},
    {FIXED, "Metal", 30, 0, 0, 0, fx(100), 0, fx(100), 0, 1, nullptr},
    {LAYER, "Reflection Map", 31, 0, 0, 0, 0, 0, 0, 0, 0, nullptr},
    {FIXED, "Reflection Intensity", 32, 0, 0, 0, fx(100), 0, fx(100), fx(100), 1, nullptr},
    {FIXED, "Reflection Rolloff", 32, 0, 0, 0, fx(100), 0, fx(100), fx(10), 1, nullptr},
    {END, "", 34, 0, 0, 0, 0, 0, 0, 0, 0, nullptr},
    {TOPIC, "Rendering", 35, 0, 0, 0, 0, 0, 0, 0, 0, nullptr},
    {POPUP, "Render Side", 36, 0, 0, 0, 0, 0, 0, 1, 0, "Full|Inside|Outside"},
    {CHECK, "Use Composition Camera", 37, 0, 0, 0, 0, 0, 0, 1, 0, nullptr},
    {POPUP, "Depth Of Field", 38, 0, 0, 0, 0, 0, 0, 1, 0, "Off|Camera Settings|On"},
    {FIXED, "Boost DOF Blur", 39, 0, 0, 0, fx(2000), 0, fx(1000), fx(100), 1, nullptr},
    {FIXED, "Sharpness", 40, 0, 0, 0, fx(1), 0, fx(1), fx(0.5), 2, nullptr},
    {TOPIC, "Depth Composite", 53, 0, 0, 0, 0, 0, 0, 0, 0, nullptr},
    {POPUP, "Mode", 54, 0, 0, 0, 0, 0, 0, 1, 0, "Off|Fog|Fade Out"},
    {FIXED, "Start depth", 55, 0, 0, 0, fx(32767), 0, fx(1000), 0, 1, nullptr},
    {FIXED, "End depth", 56, 0, 0, 0, fx(32767), 0, fx(1000), fx(1000), 1, nullptr},
    {COLOR, "Fog Color", 57, 0, 0, 0, 0, 0, 0, 0, 0, nullptr},
    {END, "", 58, 0, 0, 0, 0, 0, 0, 0, 0, nullptr},
    {END, "", 41, 0, 0, 0, 0, 0, 0, 0, 0, nullptr},
    {FIXED, "dammy", 42, 0, PF_PUI_INVISIBLE, fx(-32767), fx(32767), fx(-32767), fx(32767), 0, 1, nullptr},
};
static_assert(sizeof(kExpected) / sizeof(kExpected[0]) == 56, "one row per added parameter");

// Ranges and default, in the slider's own units (16.16 for the fixed slider).
template <class SliderDef>
void expectSlider(const SliderDef& s, const Expected& e)
{
    EXPECT_EQ(s.valid_min, e.vmin);
    EXPECT_EQ(s.valid_max, e.vmax);
    EXPECT_EQ(s.slider_min, e.smin);
    EXPECT_EQ(s.slider_max, e.smax);
    EXPECT_EQ(s.value, e.dflt);
    EXPECT_EQ(s.dephault, e.dflt);
}

void expectValueRecord(const Expected& e, const PF_ParamDef& d)
{
    switch (e.kind) {
    case LAYER:
        EXPECT_EQ(d.param_type, PF_Param_LAYER);
        EXPECT_EQ(d.u.ld.dephault, PF_LayerDefault_NONE);
        break;
    case TOPIC:
        EXPECT_EQ(d.param_type, PF_Param_GROUP_START);
        break;
    case END:
        EXPECT_EQ(d.param_type, PF_Param_GROUP_END);
        break;
    case ANGLE:
        EXPECT_EQ(d.param_type, PF_Param_ANGLE);
        EXPECT_EQ(d.u.ad.value, e.dflt);
        EXPECT_EQ(d.u.ad.dephault, e.dflt);
        break;
    case FIXED:
        EXPECT_EQ(d.param_type, PF_Param_FIX_SLIDER);
        expectSlider(d.u.fd, e);
        EXPECT_EQ(d.u.fd.precision, e.precision);
        EXPECT_EQ(d.u.fd.display_flags, 0) << "no percent display";
        break;
    case SLIDER:
        EXPECT_EQ(d.param_type, PF_Param_SLIDER);
        expectSlider(d.u.sd, e);
        break;
    case POINT:
        EXPECT_EQ(d.param_type, PF_Param_POINT);
        EXPECT_EQ(d.u.td.x_dephault, e.dflt);
        EXPECT_EQ(d.u.td.y_dephault, e.dflt);
        EXPECT_EQ(d.u.td.x_value, e.dflt);
        EXPECT_EQ(d.u.td.y_value, e.dflt);
        EXPECT_FALSE(d.u.td.restrict_bounds);
        break;
    case POPUP:
        EXPECT_EQ(d.param_type, PF_Param_POPUP);
        EXPECT_EQ(d.u.pd.num_choices, 3);
        EXPECT_EQ(d.u.pd.value, e.dflt);
        EXPECT_EQ(d.u.pd.dephault, e.dflt);
        ASSERT_NE(d.u.pd.u.PF_DEF_NAMESPTR, nullptr);
        EXPECT_STREQ(d.u.pd.u.PF_DEF_NAMESPTR, e.items);
        break;
    case CHECK:
        EXPECT_EQ(d.param_type, PF_Param_CHECKBOX);
        EXPECT_EQ(d.u.bd.value, e.dflt);
        EXPECT_EQ(d.u.bd.dephault, e.dflt);
        ASSERT_NE(d.u.bd.u.PF_DEF_NAMEPTR, nullptr);
        EXPECT_STREQ(d.u.bd.u.PF_DEF_NAMEPTR, "") << "no text beside the box";
        break;
    case COLOR:
        EXPECT_EQ(d.param_type, PF_Param_COLOR);
        for (const PF_Pixel& p : {d.u.cd.value, d.u.cd.dephault}) {
            EXPECT_EQ(p.alpha, 255);
            EXPECT_EQ(p.red, 255);
            EXPECT_EQ(p.green, 255);
            EXPECT_EQ(p.blue, 255);
        }
        break;
    }
}

TEST(ParamsSetup, RegistersEveryParameterAsDocumented)
{
    host::Host session;
    ASSERT_NO_THROW(session.load(ORBIVANE_MODULE_PATH));
    ASSERT_EQ(session.num_params(), 57);
    EXPECT_EQ(session.declared_num_params(), PARAM_COUNT);

    for (int index = 1; index <= 56; ++index) {
        const Expected& e = kExpected[index - 1];
        const PF_ParamDef& d = session.param_def(index);
        SCOPED_TRACE(std::string("parameter ") + std::to_string(index) + " \"" + e.name + "\"");
        EXPECT_STREQ(d.PF_DEF_NAME, e.name);
        EXPECT_EQ(d.uu.id, e.id);
        // The host marks checkboxes as not interpolated, as After Effects does.
        EXPECT_EQ(d.flags, e.kind == CHECK ? e.flags | PF_ParamFlag_CANNOT_INTERP : e.flags);
        EXPECT_EQ(d.ui_flags, e.ui);
        expectValueRecord(e, d);
    }
}

TEST(ParamsSetup, IdentifiersNameTheirRows)
{
    host::Host session;
    ASSERT_NO_THROW(session.load(ORBIVANE_MODULE_PATH));
    auto name = [&](int id) { return std::string(session.param_def(id).PF_DEF_NAME); };
    EXPECT_EQ(name(PARAM_TEXTURE), "Texture");
    EXPECT_EQ(name(PARAM_CONTROL_LAYER), "Control Layer");
    EXPECT_EQ(name(PARAM_OPEN_PARAMETER), "Open Parameter");
    EXPECT_EQ(name(PARAM_REFLECTION_MAP), "Reflection Map");
    EXPECT_EQ(name(PARAM_REFLECTION_ROLLOFF), "Reflection Rolloff");
    EXPECT_EQ(name(PARAM_USE_COMP_CAMERA), "Use Composition Camera");
    EXPECT_EQ(name(PARAM_FOG_COLOR), "Fog Color");
    EXPECT_EQ(name(PARAM_DAMMY), "dammy");
}

// The number of the host call that is the `nth` (0-based) parameter addition of a load.
std::uint64_t callOfAddition(int nth)
{
    host::Host counting;
    counting.faults().set_recording(true);
    counting.load(ORBIVANE_MODULE_PATH);
    const std::vector<std::string> calls = counting.faults().recorded_calls();
    int seen = 0;
    for (std::size_t i = 0; i < calls.size(); ++i) {
        if (calls[i] == "add_param" && seen++ == nth) {
            return i + 1;
        }
    }
    ADD_FAILURE() << "no addition " << nth;
    return 0;
}

TEST(ParamsSetup, TheFirstRefusedAdditionStopsTheSetup)
{
    for (int failing : {0, 9, 55}) {
        const std::uint64_t refused_call = callOfAddition(failing);
        host::Host session;
        session.faults().set_recording(true);
        session.faults().fail_call(refused_call, PF_Err_BAD_CALLBACK_PARAM);
        const std::string refusal =
            test_support::errorOf<host::HostError>([&] { session.load(ORBIVANE_MODULE_PATH); });
        EXPECT_NE(refusal.find("PARAMS_SETUP failed with PF_Err_BAD_CALLBACK_PARAM"), std::string::npos)
            << failing << ": " << refusal;
        const std::vector<std::string> calls = session.faults().recorded_calls();
        EXPECT_EQ(std::count(calls.begin(), calls.end(), "add_param"), failing + 1)
            << "nothing added after the refusal";
        EXPECT_EQ(session.num_params(), failing + 1) << "the input layer and the accepted additions";
        EXPECT_EQ(session.declared_num_params(), 0) << "out_data->num_params is left as the host gave it";
    }
}

}  // namespace
