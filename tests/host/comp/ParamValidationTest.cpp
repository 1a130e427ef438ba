#include <gtest/gtest.h>

#include <cstring>

#include "host/comp/ParamStore.h"
#include "host/session/HostError.h"

namespace {

PF_ParamDef slider(const char* name, A_long id, PF_ParamValue lo, PF_ParamValue hi, PF_ParamValue dflt) {
    PF_ParamDef def{};
    def.param_type = PF_Param_SLIDER;
    std::strcpy(def.PF_DEF_NAME, name);
    def.uu.id = id;
    def.u.sd.valid_min = def.u.sd.slider_min = lo;
    def.u.sd.valid_max = def.u.sd.slider_max = hi;
    def.u.sd.value = def.u.sd.dephault = dflt;
    return def;
}

PF_ParamDef group(PF_ParamType type, A_long id) {
    PF_ParamDef def{};
    def.param_type = type;
    std::strcpy(def.PF_DEF_NAME, "Group");
    def.uu.id = id;
    return def;
}

class ParamValidation : public ::testing::Test {
protected:
    void SetUp() override { store.begin_setup(); }
    PF_Err add(const PF_ParamDef& def) { return store.add(-1, def, warnings); }
    host::ParamStore store;
    std::vector<std::string> warnings;
};

PF_ParamDef with(PF_ParamDef def, void (*change)(PF_ParamDef&)) {
    change(def);
    return def;
}

// A fixed slider shown over its whole valid range.
PF_ParamDef fixedSlider(PF_Fixed lo, PF_Fixed hi, PF_Fixed dflt) {
    PF_ParamDef def = group(PF_Param_FIX_SLIDER, 1);
    def.u.fd.valid_min = def.u.fd.slider_min = lo;
    def.u.fd.valid_max = def.u.fd.slider_max = hi;
    def.u.fd.dephault = dflt;
    return def;
}

TEST_F(ParamValidation, RefusesMalformedDefinitionsAndAcceptsTheirBoundaries) {
    const struct {
        const char* what;
        PF_ParamDef def;
        PF_Err want;
    } rows[] = {
        {"reserved type 16", with(slider("Odd", 1, 0, 1, 0), [](PF_ParamDef& d) { d.param_type = 16; }),
         PF_Err_UNRECOGNIZED_PARAM_TYPE},
        {"type 42", with(slider("Odd", 1, 0, 1, 0), [](PF_ParamDef& d) { d.param_type = 42; }),
         PF_Err_UNRECOGNIZED_PARAM_TYPE},
        {"32-character name without its NUL",
         with(slider("x", 1, 0, 1, 0), [](PF_ParamDef& d) { std::memset(d.PF_DEF_NAME, 'n', sizeof d.PF_DEF_NAME); }),
         PF_Err_BAD_CALLBACK_PARAM},
        {"group end without a start", group(PF_Param_GROUP_END, 1), PF_Err_BAD_CALLBACK_PARAM},
        {"inverted slider range", slider("Inverted", 1, 10, 0, 5), PF_Err_BAD_CALLBACK_PARAM},
        {"inverted fixed range", fixedSlider(2 << 16, 1 << 16, 1 << 16), PF_Err_BAD_CALLBACK_PARAM},
        {"unsupervised button", group(PF_Param_BUTTON, 1), PF_Err_BAD_CALLBACK_PARAM},
        {"layer using the value for old projects",
         with(group(PF_Param_LAYER, 2), [](PF_ParamDef& d) { d.flags = PF_ParamFlag_USE_VALUE_FOR_OLD_PROJECTS; }),
         PF_Err_BAD_CALLBACK_PARAM},
        {"standard-control-only layer, even supervised", with(group(PF_Param_LAYER, 2), [](PF_ParamDef& d) {
             d.flags = PF_ParamFlag_SUPERVISE;
             d.ui_flags = PF_PUI_STD_CONTROL_ONLY;
         }),
         PF_Err_BAD_CALLBACK_PARAM},
        {"unsupervised standard-control-only slider",
         with(slider("Std", 3, 0, 1, 0), [](PF_ParamDef& d) { d.ui_flags = PF_PUI_STD_CONTROL_ONLY; }),
         PF_Err_BAD_CALLBACK_PARAM},
    };
    for (const auto& row : rows) EXPECT_EQ(add(row.def), row.want) << row.what;
    EXPECT_EQ(store.size(), 1) << "a refused definition is not stored";

    const struct {
        const char* what;
        PF_ParamDef def;
    } accepted[] = {
        {"31-character name", with(slider("x", 1, 0, 1, 0), [](PF_ParamDef& d) {
             std::memset(d.PF_DEF_NAME, 'n', sizeof d.PF_DEF_NAME);
             d.PF_DEF_NAME[31] = '\0';
         })},
        {"equal bounds: a single-valued range", fixedSlider(2 << 16, 2 << 16, 2 << 16)},
        {"supervised button", with(group(PF_Param_BUTTON, 2), [](PF_ParamDef& d) { d.flags = PF_ParamFlag_SUPERVISE; })},
        {"supervised standard-control-only slider", with(slider("Std", 3, 0, 1, 0), [](PF_ParamDef& d) {
             d.ui_flags = PF_PUI_STD_CONTROL_ONLY;
             d.flags = PF_ParamFlag_SUPERVISE;
         })},
    };
    for (const auto& row : accepted) EXPECT_EQ(add(row.def), PF_Err_NONE) << row.what;
}

TEST_F(ParamValidation, RefusesAGroupNeverClosed) {
    EXPECT_EQ(add(group(PF_Param_GROUP_START, 2)), PF_Err_NONE);
    EXPECT_NE(store.finish_setup(2, warnings), "");
}

TEST_F(ParamValidation, DuplicateIdsAndDefaultsOutsideTheRangeAreOnlyWarned) {
    EXPECT_EQ(add(slider("A", 32, 0, 1, 0)), PF_Err_NONE);
    EXPECT_EQ(add(slider("B", 32, 0, 10, 11)), PF_Err_NONE);
    ASSERT_EQ(warnings.size(), 2u);
    EXPECT_NE(warnings[0].find("reuses disk id 32"), std::string::npos) << warnings[0];
    EXPECT_NE(warnings[1].find("default"), std::string::npos) << warnings[1];
    EXPECT_EQ(store.finish_setup(3, warnings), "");
}

TEST_F(ParamValidation, ParamsAppendInOrderAndTheCountMustMatch) {
    EXPECT_EQ(store.add(5, slider("A", 1, 0, 1, 0), warnings), PF_Err_INVALID_CALLBACK);
    EXPECT_EQ(store.add(1, slider("A", 1, 0, 1, 0), warnings), PF_Err_NONE);
    EXPECT_NE(store.finish_setup(1, warnings), "");  // forgot the input layer
    EXPECT_EQ(add(slider("Late", 2, 0, 1, 0)), PF_Err_INVALID_CALLBACK) << "added after the setup";
}

// The checkbox's label is the host's own copy (the module's text may be temporary).
TEST_F(ParamValidation, CheckboxKeepsItsLabel) {
    PF_ParamDef box = group(PF_Param_CHECKBOX, 1);
    box.u.bd.u.PF_DEF_NAMEPTR = "On";
    ASSERT_EQ(add(box), PF_Err_NONE);
    EXPECT_STREQ(store.def(1).u.bd.u.PF_DEF_NAMEPTR, "On");
}

// Values: what the module receives for what the user set.
TEST_F(ParamValidation, ValuesArriveInTheModulesUnits) {
    ASSERT_EQ(add(fixedSlider(-(100 << 16), 100 << 16, 0)), PF_Err_NONE);
    PF_ParamDef point = group(PF_Param_POINT, 2);
    point.u.td.x_dephault = 50 << 16;  // percent of the layer
    point.u.td.y_dephault = 25 << 16;
    ASSERT_EQ(add(point), PF_Err_NONE);
    ASSERT_EQ(store.finish_setup(3, warnings), "");

    host::DeliveryFrame frame;
    frame.layer_width = 200;
    frame.layer_height = 100;
    frame.downsample_x = PF_RationalScale{1, 2};
    frame.downsample_y = PF_RationalScale{1, 2};
    // Default point: 50 % x 200 = 100 px, 25 % x 100 = 25 px; halved by the downsample.
    PF_ParamDef p = store.deliver(2, 0, frame);
    EXPECT_EQ(p.u.td.x_value, 50 << 16);
    EXPECT_EQ(p.u.td.y_value, (25 << 16) / 2);

    store.add_key(1, 0.0, host::ParamValue::number(-1.5));
    store.add_key(1, 2.0, host::ParamValue::number(2.5));
    EXPECT_EQ(store.deliver(1, 1.0, frame).u.fd.value, 1 << 15);  // 0.5 halfway, 16.16
    EXPECT_EQ(store.deliver(1, -5.0, frame).u.fd.value, -(3 << 15));
    EXPECT_THROW(store.set(1, host::ParamValue::number(101)), host::HostError);
    EXPECT_THROW(store.set(0 + 5, host::ParamValue::number(1)), host::HostError);
}

// PF_UpdateParamUI may move a slider's shown range and precision, never its valid range or
// default.
TEST_F(ParamValidation, UiUpdateChangesOnlyTheShownRangeOfFixedAndFloatSliders) {
    ASSERT_EQ(add(fixedSlider(0, 100 << 16, 10 << 16)), PF_Err_NONE);
    PF_ParamDef floating = group(PF_Param_FLOAT_SLIDER, 2);
    floating.u.fs_d.valid_max = floating.u.fs_d.slider_max = 100;
    floating.u.fs_d.dephault = 10;
    ASSERT_EQ(add(floating), PF_Err_NONE);
    ASSERT_EQ(store.finish_setup(3, warnings), "");

    PF_ParamDef fixed_ui = store.def(1);
    fixed_ui.u.fd.slider_min = 5 << 16;
    fixed_ui.u.fd.slider_max = 50 << 16;
    fixed_ui.u.fd.precision = 2;
    fixed_ui.u.fd.display_flags = PF_ValueDisplayFlag_PERCENT;
    fixed_ui.u.fd.valid_max = 1 << 16;  // not changeable
    fixed_ui.u.fd.dephault = 0;         // not changeable
    ASSERT_EQ(store.update_ui(1, fixed_ui), PF_Err_NONE);
    const PF_FixedSliderDef& fd = store.def(1).u.fd;
    EXPECT_EQ(fd.slider_min, 5 << 16);
    EXPECT_EQ(fd.slider_max, 50 << 16);
    EXPECT_EQ(fd.precision, 2);
    EXPECT_EQ(fd.display_flags, PF_ValueDisplayFlag_PERCENT);
    EXPECT_EQ(fd.valid_max, 100 << 16);
    EXPECT_EQ(fd.dephault, 10 << 16);

    // The float slider shares the rule: its shown range moves, its valid range stays.
    PF_ParamDef float_ui = store.def(2);
    float_ui.u.fs_d.slider_max = 20;
    float_ui.u.fs_d.valid_min = -1;
    ASSERT_EQ(store.update_ui(2, float_ui), PF_Err_NONE);
    EXPECT_EQ(store.def(2).u.fs_d.slider_max, 20);
    EXPECT_EQ(store.def(2).u.fs_d.valid_min, 0);
}

}  // namespace
