// Which controls the effect greys out, seen through the emulated host: the transform controls
// while a control layer is chosen, the falloff sliders by "Falloff", and how a refused update
// ends the command. Each case runs with the host handing over the chosen layer in the
// parameter array and without it (the effect then asks the parameter's stream).

#include <gtest/gtest.h>

#include <initializer_list>

#include "shell/params_ui/UiSession.h"
#include "shell/ParamIds.h"

namespace ui_test {
namespace {

class ControlGreying : public ::testing::TestWithParam<bool> {
protected:
    ControlGreying() : ui(withLayerInParams(GetParam())) {}

    UiSession ui;
};

// The controls a control layer takes over, in the order the effect updates them, then the
// falloff sliders.
constexpr PF_ParamIndex kUpdateOrder[] = {
    PARAM_ELLIPSE_XY, PARAM_RADIUS_SCALE, PARAM_HEIGHT_SCALE, PARAM_POSITION_XY,    PARAM_POSITION_Z,
    PARAM_ROTATION_X, PARAM_ROTATION_Y,   PARAM_ROTATION_Z,   PARAM_FALLOFF_RADIUS, PARAM_FALLOFF_DISTANCE,
};
constexpr int kLayerDrivenCount = 8;

TEST_P(ControlGreying, ControlLayerGreysTheTransformButNotTheShapeControls)
{
    auto expectLayerDriven = [&](bool disabled, const char* when) {
        for (int i = 0; i < kLayerDrivenCount; ++i)
            EXPECT_EQ(ui.disabled(kUpdateOrder[i]), disabled) << "index " << kUpdateOrder[i] << " " << when;
    };
    expectLayerDriven(false, "without a layer");
    ASSERT_EQ(ui.chooseControlLayer(ui.rig_id), PF_Err_NONE);
    expectLayerDriven(true, "with a layer");
    // Shape and texture placement stay the user's, as do the control layer and the open
    // cylinder controls.
    for (PF_ParamIndex stays : {PARAM_SLIDE_TEXTURE, PARAM_HYPERBOLOID, PARAM_CONTROL_LAYER,
                                PARAM_FIXED_POINT_U, PARAM_OPEN_PARAMETER}) {
        EXPECT_FALSE(ui.disabled(stays)) << "index " << stays;
    }
    ASSERT_EQ(ui.chooseControlLayer(0), PF_Err_NONE);
    expectLayerDriven(false, "after clearing");
}

TEST_P(ControlGreying, FalloffChoiceDecidesRadiusAndDistance)
{
    // The default, None, needs neither; Inverse Square Clamped a radius only; Smooth both.
    EXPECT_TRUE(ui.disabled(PARAM_FALLOFF_RADIUS));
    EXPECT_TRUE(ui.disabled(PARAM_FALLOFF_DISTANCE));
    const struct {
        int choice;
        bool radius_disabled, distance_disabled;
    } steps[] = {{3, false, true}, {2, false, false}, {3, false, true}, {1, true, true}};
    for (const auto& step : steps) {
        ASSERT_EQ(ui.chooseFalloff(step.choice), PF_Err_NONE);
        EXPECT_EQ(ui.disabled(PARAM_FALLOFF_RADIUS), step.radius_disabled) << "Falloff " << step.choice;
        EXPECT_EQ(ui.disabled(PARAM_FALLOFF_DISTANCE), step.distance_disabled) << "Falloff " << step.choice;
    }

    // Falloff and the control layer do not disturb each other.
    ASSERT_EQ(ui.chooseControlLayer(ui.rig_id), PF_Err_NONE);
    EXPECT_TRUE(ui.disabled(PARAM_FALLOFF_DISTANCE));
    ASSERT_EQ(ui.chooseFalloff(2), PF_Err_NONE);
    EXPECT_TRUE(ui.disabled(PARAM_POSITION_Z));
}

TEST_P(ControlGreying, RefusedUpdateEndsTheCommandWithItsError)
{
    // From a state where every one of the ten updates changes something (no layer, falloff
    // None) to one where none matches it (a layer, falloff Smooth), refuse the k-th update:
    // the k-1 before it have taken effect, the refused one and all after it have not.
    auto toStart = [&] {
        ui.session.set_param(PARAM_CONTROL_LAYER, host::ParamValue::layer(0));
        ui.session.set_param(PARAM_FALLOFF, host::ParamValue::number(1));
        ASSERT_EQ(ui.session.update_params_ui(), PF_Err_NONE);
    };
    auto toTarget = [&] {
        ui.session.set_param(PARAM_CONTROL_LAYER, host::ParamValue::layer(ui.rig_id));
        ui.session.set_param(PARAM_FALLOFF, host::ParamValue::number(2));
    };
    toTarget();
    const std::vector<std::size_t> updates =
        positionsOf(ui.callsOf([&] { ui.session.update_params_ui(); }), "PF_UpdateParamUI");
    ASSERT_EQ(updates.size(), 10u);

    for (std::size_t k = 0; k < updates.size(); ++k) {
        toStart();
        toTarget();
        ui.session.faults().reset();
        ui.session.faults().fail_call(updates[k], PF_Err_OUT_OF_MEMORY);
        EXPECT_EQ(ui.session.update_params_ui(), PF_Err_OUT_OF_MEMORY) << "refusing update " << k + 1;
        ui.session.faults().reset();

        for (std::size_t i = 0; i < updates.size(); ++i) {
            const PF_ParamIndex index = kUpdateOrder[i];
            const bool greyed_at_start = i >= kLayerDrivenCount ? true : false;
            const bool greyed_at_target = !greyed_at_start;
            EXPECT_EQ(ui.disabled(index), i < k ? greyed_at_target : greyed_at_start)
                << "index " << index << " when update " << k + 1 << " is refused";
        }
    }
}

INSTANTIATE_TEST_SUITE_P(LayerHandOver, ControlGreying, ::testing::Values(true, false),
                         layerHandOverName);

}  // namespace
}  // namespace ui_test
