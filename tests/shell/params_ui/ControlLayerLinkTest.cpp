// The link between the chosen control layer and the hidden "dammy" slider, seen through the
// emulated host: the expression text, renaming a layer that has no name of its own, which
// commands touch the link, and host failures that must neither surface nor leak. Each case runs with the host handing over the chosen layer
// in the parameter array and without it.

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "shell/ParamIds.h"
#include "shell/params_ui/UiSession.h"

namespace ui_test {
namespace {

std::string linkTo(const std::string& layer_name)
{
    return "try{length(thisComp.layer(\"" + layer_name + "\").toWorld([1,1,1]));}catch(e){value;}\n";
}

class ControlLayerLink : public ::testing::TestWithParam<bool> {
protected:
    ControlLayerLink() : ui(withLayerInParams(GetParam())) {}

    std::string& nameOf(int layer_id) { return ui.comp->find_by_id(layer_id)->name; }

    UiSession ui;
};

TEST_P(ControlLayerLink, ChoosingALayerWritesItsNameIntoTheExpression)
{
    EXPECT_EQ(ui.expression(PARAM_DAMMY), std::nullopt);

    ASSERT_EQ(ui.chooseControlLayer(ui.rig_id), PF_Err_NONE);
    EXPECT_EQ(ui.expression(PARAM_DAMMY), linkTo("Rig"));

    // Another layer replaces the link; a layer with a name of its own keeps it, even when its
    // source is called otherwise.
    ASSERT_EQ(ui.chooseControlLayer(ui.surface_id), PF_Err_NONE);
    EXPECT_EQ(ui.expression(PARAM_DAMMY), linkTo("Surface"));
    EXPECT_EQ(nameOf(ui.surface_id), "Surface");

    // No layer: the link is removed.
    ASSERT_EQ(ui.chooseControlLayer(0), PF_Err_NONE);
    EXPECT_EQ(ui.expression(PARAM_DAMMY), std::nullopt);

    // Only "dammy" carries an expression.
    for (PF_ParamIndex index = PARAM_INPUT; index < PARAM_DAMMY; ++index) {
        EXPECT_EQ(ui.expression(index), std::nullopt) << "index " << index;
    }
    EXPECT_EQ(ui.session.unload(), "");
}

// A nameless layer is named after its source so the expression finds it; names beyond ASCII
// make the round trip through the host's UTF-16 and reach the expression as UTF-8.
TEST_P(ControlLayerLink, TheLayerNameReachesTheExpressionAsTheCompositionShowsIt)
{
    ui.comp->find_by_id(ui.nameless_id)->source.name = "Pivot \xC3\xA9t\xC3\xA9";  // "Pivot été"
    ASSERT_EQ(nameOf(ui.nameless_id), "");
    ASSERT_EQ(ui.chooseControlLayer(ui.nameless_id), PF_Err_NONE);
    EXPECT_EQ(nameOf(ui.nameless_id), "Pivot \xC3\xA9t\xC3\xA9");
    EXPECT_EQ(ui.expression(PARAM_DAMMY), linkTo("Pivot \xC3\xA9t\xC3\xA9"));

    nameOf(ui.rig_id) = "Rig \xC3\xA9t\xC3\xA9";  // "Rig été"
    ASSERT_EQ(ui.chooseControlLayer(ui.rig_id), PF_Err_NONE);
    EXPECT_EQ(ui.expression(PARAM_DAMMY), linkTo("Rig \xC3\xA9t\xC3\xA9"));
}

TEST_P(ControlLayerLink, OtherCommandsLeaveTheLinkAlone)
{
    ASSERT_EQ(ui.chooseControlLayer(ui.rig_id), PF_Err_NONE);

    // The value changes without the user touching the Control Layer control (as from a
    // keyframe), then the user changes Falloff, the other supervised parameter.
    ui.session.set_param(PARAM_CONTROL_LAYER, host::ParamValue::layer(ui.nameless_id));
    ASSERT_EQ(ui.chooseFalloff(2), PF_Err_NONE);
    ASSERT_EQ(ui.session.update_params_ui(), PF_Err_NONE);

    EXPECT_EQ(ui.expression(PARAM_DAMMY), linkTo("Rig"));
    EXPECT_EQ(nameOf(ui.nameless_id), "") << "only choosing a layer names it";
}

// Names of host calls whose failure leaves the host holding something by its own refusal.
bool releasesSomething(const std::string& call)
{
    for (const char* word : {"Dispose", "dispose", "Free", "Release", "unlock", "Unlock"}) {
        if (call.find(word) != std::string::npos) {
            return true;
        }
    }
    return false;
}

// The lines of `after` that `before` does not have.
std::vector<std::string> newLines(const std::string& before, const std::string& after)
{
    std::vector<std::string> added;
    std::size_t start = 0;
    while (start < after.size()) {
        std::size_t end = after.find('\n', start);
        if (end == std::string::npos) {
            end = after.size();
        }
        const std::string line = after.substr(start, end - start);
        if (before.find(line) == std::string::npos) {
            added.push_back(line);
        }
        start = end + 1;
    }
    return added;
}

TEST_P(ControlLayerLink, EveryFailingHostCallIsSwallowedAndLeavesNothingBehind)
{
    auto restore = [&] {
        ASSERT_EQ(ui.chooseControlLayer(0), PF_Err_NONE);
        nameOf(ui.nameless_id) = "";
    };
    auto choose = [&] { return ui.chooseControlLayer(ui.nameless_id); };

    // The calls of the parameter change are those of the whole user action less the interface
    // update the host sends after it.
    restore();
    const std::vector<std::string> action = ui.callsOf(choose);
    const std::vector<std::string> update = ui.callsOf([&] { ui.session.update_params_ui(); });
    ASSERT_GT(action.size(), update.size());
    const std::size_t change_calls = action.size() - update.size();
    ASSERT_GE(change_calls, 8u) << "effect, stream, names, expression";

    for (std::size_t n = 1; n <= change_calls; ++n) {
        const std::string& failing = action[n - 1];
        restore();
        const std::string leaks_before = ui.session.leaks();
        ui.session.faults().reset();
        ui.session.faults().fail_call(n, A_Err_GENERIC);
        EXPECT_EQ(choose(), PF_Err_NONE) << "failing call " << n << ", " << failing;
        ui.session.faults().reset();

        // A refused release keeps what it was to release. Nothing else may stay behind.
        if (!releasesSomething(failing)) {
            for (const std::string& leak : newLines(leaks_before, ui.session.leaks())) {
                ADD_FAILURE() << leak << " after failing call " << n << ", " << failing;
            }
        }
        // Either the complete link or none at all, never a part of one.
        const std::optional<std::string> text = ui.expression(PARAM_DAMMY);
        if (text) {
            EXPECT_EQ(*text, linkTo("Pivot Solid")) << "failing call " << n << ", " << failing;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(LayerHandOver, ControlLayerLink, ::testing::Values(true, false),
                         layerHandOverName);

}  // namespace
}  // namespace ui_test
