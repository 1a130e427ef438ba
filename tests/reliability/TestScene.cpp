#include "reliability/TestScene.h"

#include "host/comp/Scene.h"
#include "shell/ParamIds.h"

namespace reliability {

Session::Session(host::HostOptions options) : host_(options) {
    const host::Scene scene = host::load_scene(ORBIVANE_SOURCE_DIR "/tests/reliability/lifetime.json");
    auto id = [&](const char* name) { return scene.composition->find_by_name(name)->id; };
    layers_ = SceneLayers{scene.effect_layer_id, id("Texture"), id("Environment"), id("Control")};
    host_.set_composition(scene.composition, layers_.effect);
}

host::HostOptions Session::deterministicOptions() {
    host::HostOptions options;
    options.threads = 1;
    return options;
}

void Session::chooseLayers() {
    host_.set_param(PARAM_TEXTURE, host::ParamValue::layer(layers_.texture));
    host_.set_param(PARAM_REFLECTION_MAP, host::ParamValue::layer(layers_.reflection));
    host_.set_param(PARAM_SELF_SHADOW, host::ParamValue::number(1));
    host_.set_param(PARAM_LIGHT_TRANSMISSION, host::ParamValue::number(50));
    host_.set_param(PARAM_DEPTH_COMPOSITE_MODE, host::ParamValue::number(2));  // Fog
    host_.set_param(PARAM_EXTENSIONS, host::ParamValue::number(1));
}

void Session::setDepthOfField(bool on) {
    host_.set_param(PARAM_DEPTH_OF_FIELD, host::ParamValue::number(on ? 3 : 1));  // On / Off
}

}  // namespace reliability
