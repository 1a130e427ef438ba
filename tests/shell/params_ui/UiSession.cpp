#include "shell/params_ui/UiSession.h"

#include <gtest/gtest.h>

#include "host/api/AegpSuites.h"
#include "shell/ParamIds.h"

namespace ui_test {

UiSession::UiSession(host::HostOptions options) : session(options)
{
    comp = std::make_shared<host::Composition>("Main", 640, 360, 25, 10);

    host::Layer surface;
    surface.name = "Surface";
    surface.kind = host::LayerKind::Solid;
    surface.source.name = "Gray Solid 1";
    surface.source.width = 640;
    surface.source.height = 360;
    surface_id = comp->add_layer(surface).id;

    host::Layer rig;
    rig.name = "Rig";
    rig.kind = host::LayerKind::Null;
    rig.is_3d = true;
    rig_id = comp->add_layer(rig).id;

    host::Layer nameless;
    nameless.kind = host::LayerKind::Solid;
    nameless.source.name = "Pivot Solid";
    nameless.source.width = 100;
    nameless.source.height = 100;
    nameless_id = comp->add_layer(nameless).id;

    session.set_composition(comp, surface_id);
    session.load(ORBIVANE_MODULE_PATH);
    EXPECT_EQ(session.sequence_setup(), PF_Err_NONE);
}

UiSession::~UiSession()
{
    if (session.loaded()) {
        session.unload();
    }
}

PF_Err UiSession::chooseControlLayer(int layer_id)
{
    session.set_param(PARAM_CONTROL_LAYER, host::ParamValue::layer(layer_id));
    return session.user_changed_param(PARAM_CONTROL_LAYER);
}

PF_Err UiSession::chooseFalloff(int choice)
{
    session.set_param(PARAM_FALLOFF, host::ParamValue::number(choice));
    return session.user_changed_param(PARAM_FALLOFF);
}

bool UiSession::disabled(PF_ParamIndex index)
{
    return (session.param_def(index).ui_flags & PF_PUI_DISABLED) != 0;
}

std::optional<std::string> UiSession::expression(PF_ParamIndex index)
{
    const std::string* text = session.aegp().effect_expression(index);
    if (!text) {
        return std::nullopt;
    }
    return *text;
}

AEGP_DynStreamFlags UiSession::dynamicFlags(PF_ParamIndex index)
{
    return session.aegp().effect_stream_flags(index);
}

host::HostOptions withLayerInParams(bool layer_in_params)
{
    host::HostOptions options;
    options.layer_handle_in_params = layer_in_params;
    return options;
}

std::string layerHandOverName(const ::testing::TestParamInfo<bool>& info)
{
    return info.param ? "InParams" : "ByStream";
}

std::vector<std::size_t> positionsOf(const std::vector<std::string>& calls, const std::string& name)
{
    std::vector<std::size_t> positions;
    for (std::size_t i = 0; i < calls.size(); ++i) {
        if (calls[i] == name) {
            positions.push_back(i + 1);
        }
    }
    return positions;
}

}  // namespace ui_test
