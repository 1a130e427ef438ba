// Parameter registration macros: the values they write must be what the host stores for the
// parameter, including the SDK's truncating 16.16 conversion.

#include <gtest/gtest.h>

#include <cstring>
#include <vector>

#include "Param_Utils.h"

namespace {

std::vector<PF_ParamDef> g_added;
PF_Err g_add_result = PF_Err_NONE;

PF_Err recordAdd(PF_ProgPtr, PF_ParamIndex index, PF_ParamDefPtr def) {
    EXPECT_EQ(index, -1);  // always appended
    g_added.push_back(*def);
    return g_add_result;
}

class ParamUtils : public ::testing::Test {
protected:
    void SetUp() override {
        g_added.clear();
        g_add_result = PF_Err_NONE;
        in_data_storage.inter.add_param = recordAdd;
    }
    PF_InData in_data_storage{};
};

PF_Err addFixedSliders(PF_InData* in_data) {
    PF_ParamDef def;
    AEFX_CLR_STRUCT(def)
    PF_ADD_FIXED("Open", -0.999, 0.99, -0.5, 0.5, 0.01, 3, PF_ValueDisplayFlag_PERCENT,
                 PF_ParamFlag_CANNOT_TIME_VARY, 7);
    return PF_Err_NONE;
}

TEST_F(ParamUtils, FixedSliderBoundsTruncateTowardsZero) {
    ASSERT_EQ(addFixedSliders(&in_data_storage), PF_Err_NONE);
    ASSERT_EQ(g_added.size(), 1u);
    const PF_ParamDef& d = g_added[0];
    EXPECT_EQ(d.param_type, PF_Param_FIX_SLIDER);
    EXPECT_STREQ(d.PF_DEF_NAME, "Open");
    EXPECT_EQ(d.u.fd.valid_min, -65470);   // -0.999 * 65536 = -65470.464
    EXPECT_EQ(d.u.fd.valid_max, 64880);    //  0.99  * 65536 =  64880.64
    EXPECT_EQ(d.u.fd.slider_min, -32768);
    EXPECT_EQ(d.u.fd.slider_max, 32768);
    EXPECT_EQ(d.u.fd.dephault, 655);       //  0.01  * 65536 =    655.36
    EXPECT_EQ(d.u.fd.value, 655);
    EXPECT_EQ(d.u.fd.precision, 3);
    EXPECT_EQ(d.u.fd.display_flags, PF_ValueDisplayFlag_PERCENT);
    EXPECT_EQ(d.flags, PF_ParamFlag_CANNOT_TIME_VARY);
    EXPECT_EQ(d.uu.id, 7);
}

PF_Err addPointPopupAngle(PF_InData* in_data) {
    PF_ParamDef def;
    AEFX_CLR_STRUCT(def)
    PF_ADD_POINT("Center", 50, 25, 0, 3);
    AEFX_CLR_STRUCT(def)
    PF_ADD_POPUP("Shape", 3, 2, "Cylinder|Hyperboloid|Sphere", 4);
    AEFX_CLR_STRUCT(def)
    PF_ADD_ANGLE("Rotation", -22.5, 5);
    AEFX_CLR_STRUCT(def)
    PF_ADD_COLOR("Tint", 10, 20, 30, 6);
    return PF_Err_NONE;
}

TEST_F(ParamUtils, PointPopupAngleAndColorDefaults) {
    ASSERT_EQ(addPointPopupAngle(&in_data_storage), PF_Err_NONE);
    ASSERT_EQ(g_added.size(), 4u);

    const PF_PointDef& td = g_added[0].u.td;
    EXPECT_EQ(g_added[0].param_type, PF_Param_POINT);
    EXPECT_EQ(td.x_dephault, 50 << 16);  // percent of the layer, 16.16
    EXPECT_EQ(td.y_dephault, 25 << 16);
    EXPECT_EQ(td.x_value, td.x_dephault);

    const PF_PopupDef& pd = g_added[1].u.pd;
    EXPECT_EQ(g_added[1].param_type, PF_Param_POPUP);
    EXPECT_EQ(pd.num_choices, 3);
    EXPECT_EQ(pd.dephault, 2);
    EXPECT_EQ(pd.value, 2);
    EXPECT_STREQ(pd.u.PF_DEF_NAMESPTR, "Cylinder|Hyperboloid|Sphere");

    EXPECT_EQ(g_added[2].u.ad.dephault, -1474560);  // -22.5 * 65536
    EXPECT_EQ(g_added[2].uu.id, 5);

    const PF_ColorDef& cd = g_added[3].u.cd;
    EXPECT_EQ(cd.value.alpha, 255);
    EXPECT_EQ(cd.value.red, 10);
    EXPECT_EQ(cd.dephault.blue, 30);
}

PF_Err addCheckboxX(PF_InData* in_data, PF_ParamDef& def) {
    PF_ADD_CHECKBOXX("A very long checkbox name that overflows", 1, PF_ParamFlag_SUPERVISE, 9);
    return PF_Err_NONE;
}

TEST_F(ParamUtils, CheckboxXClearsStaleFieldsAndTruncatesTheName) {
    PF_ParamDef def;
    std::memset(&def, 0x5A, sizeof(def));  // leftovers from a previous parameter
    ASSERT_EQ(addCheckboxX(&in_data_storage, def), PF_Err_NONE);
    ASSERT_EQ(g_added.size(), 1u);
    const PF_ParamDef& d = g_added[0];
    EXPECT_EQ(d.ui_flags, 0);
    EXPECT_EQ(d.flags, PF_ParamFlag_SUPERVISE);
    EXPECT_EQ(std::strlen(d.PF_DEF_NAME), 31u);
    EXPECT_EQ(std::strncmp(d.PF_DEF_NAME, "A very long checkbox name that ", 31), 0);
    EXPECT_STREQ(d.u.bd.u.PF_DEF_NAMEPTR, "");
    EXPECT_EQ(d.u.bd.value, 1);
    EXPECT_EQ(d.u.bd.dephault, 1);
}

PF_Err addTwoTopics(PF_InData* in_data, int* reached_end) {
    PF_ParamDef def;
    AEFX_CLR_STRUCT(def)
    PF_ADD_TOPIC("Material", 20);
    AEFX_CLR_STRUCT(def)
    PF_END_TOPIC(21);
    *reached_end = 1;
    return PF_Err_NONE;
}

TEST_F(ParamUtils, HostRefusalReturnsFromTheEnclosingFunction) {
    int reached_end = 0;
    g_add_result = PF_Err_OUT_OF_MEMORY;
    EXPECT_EQ(addTwoTopics(&in_data_storage, &reached_end), PF_Err_OUT_OF_MEMORY);
    EXPECT_EQ(reached_end, 0);
    ASSERT_EQ(g_added.size(), 1u);  // the second parameter was never offered

    g_added.clear();
    g_add_result = PF_Err_NONE;
    EXPECT_EQ(addTwoTopics(&in_data_storage, &reached_end), PF_Err_NONE);
    EXPECT_EQ(reached_end, 1);
    ASSERT_EQ(g_added.size(), 2u);
    EXPECT_EQ(g_added[0].param_type, PF_Param_GROUP_START);
    EXPECT_STREQ(g_added[0].PF_DEF_NAME, "Material");
    EXPECT_EQ(g_added[1].param_type, PF_Param_GROUP_END);
    EXPECT_EQ(g_added[1].uu.id, 21);
}

}  // namespace
