#include "reliability/TestScene.h"

#include "shell/ParamIds.h"

namespace reliability {

namespace {

constexpr double kFrameRate = 25.0;
constexpr double kSeconds = 2.0;

host::Layer lightLayer(const char* name, host::LightType type, host::Vec3 position) {
    host::Layer light;
    light.name = name;
    light.kind = host::LayerKind::Light;
    light.light.type = type;
    light.transform.position = position;
    light.transform.point_of_interest = host::Vec3{kSceneWidth / 2.0, kSceneHeight / 2.0, 0};
    return light;
}

}  // namespace

std::shared_ptr<host::Composition> makeScene(SceneLayers& layers) {
    auto comp = std::make_shared<host::Composition>("Reliability", kSceneWidth, kSceneHeight, kFrameRate,
                                                    kSeconds);
    host::Layer camera;
    camera.name = "Camera";
    camera.kind = host::LayerKind::Camera;
    camera.transform.position = host::Vec3{kSceneWidth / 2.0, kSceneHeight / 2.0, -40};
    camera.transform.point_of_interest = host::Vec3{kSceneWidth / 2.0, kSceneHeight / 2.0, 0};
    camera.camera.depth_of_field = 1.0;
    camera.camera.focus_distance = 30.0;
    camera.camera.aperture = 40.0;
    layers.camera = comp->add_layer(camera).id;

    host::Layer spot = lightLayer("Spot", host::LightType::Spot, host::Vec3{0, 0, -30});
    spot.light.casts_shadows = 1.0;
    spot.light.shadow_darkness = 60.0;
    comp->add_layer(spot);
    comp->add_layer(lightLayer("Point", host::LightType::Point, host::Vec3{20, 5, -10}));
    comp->add_layer(lightLayer("Parallel", host::LightType::Parallel, host::Vec3{-10, -10, -10}));
    comp->add_layer(lightLayer("Ambient", host::LightType::Ambient, host::Vec3{}));

    host::Layer effect;
    effect.name = "Surface";
    effect.kind = host::LayerKind::Solid;
    effect.source.name = "Surface Solid";
    effect.source.width = kSceneWidth;
    effect.source.height = kSceneHeight;
    effect.source.color = host::Color{1, 0.2, 0.2, 0.2};
    layers.effect = comp->add_layer(effect).id;

    host::Layer texture;
    texture.name = "Texture";
    texture.kind = host::LayerKind::Footage;
    texture.source.name = "checker";
    texture.source.pattern = host::GeneratedPattern::Checkerboard;
    texture.source.width = 8;
    texture.source.height = 6;
    texture.source.cell = 2;
    texture.source.color = host::Color{1, 1, 0.5, 0};
    texture.source.color2 = host::Color{0.5, 0, 0.5, 1};
    layers.texture = comp->add_layer(texture).id;

    host::Layer reflection;
    reflection.name = "Environment";
    reflection.kind = host::LayerKind::Solid;
    reflection.source.name = "Environment Solid";
    reflection.source.width = 6;
    reflection.source.height = 4;
    reflection.source.color = host::Color{1, 0.1, 0.6, 0.9};
    layers.reflection = comp->add_layer(reflection).id;

    host::Layer control;
    control.name = "Control";
    control.kind = host::LayerKind::Null;
    control.is_3d = true;
    control.transform.position = host::Vec3{kSceneWidth / 2.0, kSceneHeight / 2.0, 0};
    control.transform.scale = host::Vec3{40, 60, 40};
    control.transform.rotation_y.add_key(0.0, 0.0);
    control.transform.rotation_y.add_key(kSeconds, 90.0);
    layers.control = comp->add_layer(control).id;
    return comp;
}

Session::Session(host::HostOptions options) : host_(options) {
    comp_ = makeScene(layers_);
    host_.set_composition(comp_, layers_.effect);
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
