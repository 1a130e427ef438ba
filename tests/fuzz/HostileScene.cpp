#include "fuzz/HostileScene.h"

#include <cmath>
#include <limits>
#include <memory>
#include <random>
#include <sstream>
#include <vector>

#include "host/comp/Composition.h"
#include "support/RawPixels.h"
#include "shell/ParamIds.h"

namespace fuzz {

namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kInf = std::numeric_limits<double>::infinity();

class Picker {
public:
    Picker(std::uint64_t seed, bool wild) : rng_(seed), wild_(wild) {}

    bool chance(double p) { return std::uniform_real_distribution<double>(0, 1)(rng_) < p; }
    int integer(int lo, int hi) { return std::uniform_int_distribution<int>(lo, hi)(rng_); }
    double uniform(double lo, double hi) { return std::uniform_real_distribution<double>(lo, hi)(rng_); }
    template <class T>
    T oneOf(const std::vector<T>& values) { return values[std::size_t(integer(0, int(values.size()) - 1))]; }

    // A host-provided value: usually ordinary, often an edge, in wild cases not even finite.
    double value(double lo, double hi) {
        if (wild_ && chance(0.25)) return oneOf<double>({kNaN, kInf, -kInf, 1e30, -1e30, 1e-300});
        if (chance(0.3)) return oneOf<double>({0.0, -0.0, lo, hi, 1e-6, -1e-6});
        return uniform(lo, hi);
    }
    host::Vec3 vec(double lo, double hi) { return host::Vec3{value(lo, hi), value(lo, hi), value(lo, hi)}; }
    host::Color color() { return host::Color{value(0, 1), value(0, 2), value(0, 2), value(0, 2)}; }
    int size() { return oneOf<int>({1, 1, 2, 3, 8, 17, 64, 640, 2}); }

private:
    std::mt19937_64 rng_;
    bool wild_;
};

std::uint64_t mix(std::uint64_t seed, std::uint64_t salt) {
    std::uint64_t z = seed + 0x9E3779B97F4A7C15ull * (salt + 1);
    z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9ull;
    z = (z ^ (z >> 27)) * 0x94D049BB133111EBull;
    return z ^ (z >> 31);
}

host::Layer sourceLayer(Picker& pick, const char* name, host::LayerKind kind) {
    host::Layer layer;
    layer.name = name;
    layer.kind = kind;
    layer.source.name = std::string(name) + " source";
    layer.source.pattern = pick.oneOf<host::GeneratedPattern>(
        {host::GeneratedPattern::Solid, host::GeneratedPattern::Checkerboard, host::GeneratedPattern::Gradient});
    // Very long and thin keeps a large layer cheap; 0 falls back to the composition's size.
    const bool huge = pick.chance(0.1);
    layer.source.width = huge ? 6000 : pick.chance(0.1) ? 0 : pick.size();
    layer.source.height = huge ? 2 : pick.chance(0.1) ? 0 : pick.size();
    layer.source.color = host::Color{pick.uniform(0, 1), pick.uniform(0, 1), pick.uniform(0, 1), pick.uniform(0, 1)};
    layer.source.cell = pick.integer(1, 4);
    if (pick.chance(0.15)) {
        layer.source.par_num = pick.integer(1, 3);
        layer.source.par_den = pick.integer(1, 3);
    }
    return layer;
}

void hostileTransform(Picker& pick, host::LayerTransform& t, double extent) {
    t.position = pick.vec(-extent, extent);
    t.anchor = pick.vec(-extent, extent);
    if (pick.chance(0.5)) t.scale = pick.chance(0.3) ? host::Vec3{0, 0, 0} : pick.vec(-400, 400);
    t.orientation = pick.vec(-720, 720);
    t.rotation_x = pick.value(-720, 720);
    t.rotation_y = pick.value(-720, 720);
    t.rotation_z = pick.value(-720, 720);
    t.point_of_interest = pick.vec(-extent, extent);
}

}  // namespace

HostileCase buildHostileScene(std::uint64_t seed, host::Host& session) {
    HostileCase hostile;
    hostile.seed = seed;
    hostile.wild = mix(seed, 1) % 3 == 0;
    Picker pick(mix(seed, 2), hostile.wild);
    std::ostringstream what;

    const int comp_w = pick.chance(0.05) ? 1 : pick.size(), comp_h = pick.chance(0.05) ? 1 : pick.size();
    auto comp = std::make_shared<host::Composition>("Hostile", comp_w, comp_h, pick.oneOf<double>({1, 24, 29.97, 120}),
                                                    pick.oneOf<double>({0.5, 2, 10}));
    if (pick.chance(0.2)) comp->set_pixel_aspect(pick.integer(1, 4), pick.integer(1, 4));
    what << (hostile.wild ? "wild " : "") << "comp " << comp_w << "x" << comp_h;
    const double extent = 4.0 * std::max(comp_w, comp_h);

    if (pick.chance(0.7)) {
        host::Layer camera;
        camera.name = "Camera";
        camera.kind = host::LayerKind::Camera;
        hostileTransform(pick, camera.transform, extent);
        camera.transform.auto_orient = pick.chance(0.5);
        camera.camera.zoom = pick.value(0, 5000);
        camera.camera.depth_of_field = pick.chance(0.5) ? 1.0 : 0.0;
        camera.camera.focus_distance = pick.value(0, 5000);
        camera.camera.aperture = pick.value(0, 500);
        camera.camera.blur_level = pick.value(0, 1000);
        camera.camera.projection = pick.chance(0.2) ? host::CameraProjection::Orthographic
                                                    : host::CameraProjection::Perspective;
        comp->add_layer(camera);
        what << ", camera";
    }
    const int lights = pick.integer(0, 4);
    for (int i = 0; i < lights; ++i) {
        host::Layer light;
        light.name = "Light " + std::to_string(i + 1);
        light.kind = host::LayerKind::Light;
        light.light.type = pick.oneOf<host::LightType>(
            {host::LightType::Parallel, host::LightType::Spot, host::LightType::Point, host::LightType::Ambient});
        hostileTransform(pick, light.transform, extent);
        light.light.intensity = pick.value(-100, 1000);
        light.light.color = pick.color();
        light.light.cone_angle = pick.value(0, 180);
        light.light.cone_feather = pick.value(0, 100);
        light.light.shadow_darkness = pick.value(0, 100);
        light.light.shadow_diffusion = pick.value(0, 500);
        light.light.casts_shadows = pick.chance(0.5) ? 1.0 : 0.0;
        comp->add_layer(light);
    }
    what << ", " << lights << " lights";

    host::Layer effect = sourceLayer(pick, "Surface", host::LayerKind::Solid);
    effect.start_time = pick.oneOf<double>({0, 0, 0.5, -1});
    const int effect_id = comp->add_layer(effect).id;
    const host::Layer& placed = *comp->find_by_id(effect_id);
    what << ", effect layer " << placed.source.width << "x" << placed.source.height;

    host::Layer texture = sourceLayer(pick, "Texture", host::LayerKind::Footage);
    texture.is_3d = pick.chance(0.5);
    hostileTransform(pick, texture.transform, extent);
    comp->add_layer(texture);
    comp->add_layer(sourceLayer(pick, "Reflection", host::LayerKind::Solid));
    host::Layer control;
    control.name = "Control";
    control.kind = pick.chance(0.5) ? host::LayerKind::Null : host::LayerKind::Solid;
    control.source = sourceLayer(pick, "Control", host::LayerKind::Solid).source;
    control.is_3d = pick.chance(0.8);
    hostileTransform(pick, control.transform, extent);
    comp->add_layer(control);

    session.set_composition(comp, effect_id);

    hostile.request.seconds = pick.oneOf<double>({0, 0.25, 1.0, -1.0, 100.0});
    hostile.request.bitdepth = static_cast<short>(pick.oneOf<int>({8, 16, 32}));
    hostile.request.downsample = pick.oneOf<int>({1, 1, 2, 3, 16, 100000});
    what << ", " << hostile.request.bitdepth << "-bit at " << hostile.request.seconds << " s, downsample "
         << hostile.request.downsample;
    hostile.description = what.str();
    return hostile;
}

void setHostileParams(std::uint64_t seed, host::Host& session, HostileCase& hostile) {
    Picker pick(mix(seed, 3), false);
    const host::Composition& comp = *session.composition();
    std::vector<int> layer_ids{0};
    for (std::size_t i = 0; i < comp.num_layers(); ++i) layer_ids.push_back(comp.layer(i).id);
    int changed = 0;
    for (PF_ParamIndex i = 1; i < session.num_params(); ++i) {
        if (pick.chance(0.4)) continue;  // keep some defaults: they are the common case
        const PF_ParamDef& def = session.param_def(i);
        const auto& fd = def.u.fd;
        const double fixed = 65536.0;
        host::ParamValue v;
        switch (def.param_type) {
            case PF_Param_FIX_SLIDER:
                v = host::ParamValue::number(
                    pick.oneOf<double>({fd.valid_min / fixed, fd.valid_max / fixed, fd.slider_min / fixed,
                                        fd.slider_max / fixed, pick.uniform(fd.valid_min / fixed, fd.valid_max / fixed)}));
                break;
            case PF_Param_SLIDER:
                v = host::ParamValue::number(
                    pick.oneOf<int>({def.u.sd.valid_min, def.u.sd.valid_max, def.u.sd.slider_max, 1}));
                break;
            case PF_Param_ANGLE:
                v = host::ParamValue::number(pick.oneOf<double>({0, 90, -90, 180, 360, -720, 32767, -32767, 0.001}));
                break;
            case PF_Param_POPUP: v = host::ParamValue::number(pick.integer(1, def.u.pd.num_choices)); break;
            case PF_Param_CHECKBOX: v = host::ParamValue::number(pick.integer(0, 1)); break;
            case PF_Param_LAYER: v = host::ParamValue::layer(pick.oneOf<int>(layer_ids)); break;
            case PF_Param_COLOR:
                v = host::ParamValue::color(pick.integer(0, 255), pick.integer(0, 255), pick.integer(0, 255),
                                            pick.integer(0, 255));
                break;
            case PF_Param_POINT: v = host::ParamValue::point(pick.value(-1e5, 1e5), pick.value(-1e5, 1e5)); break;
            default: continue;  // topics carry no value
        }
        session.set_param(i, v);
        ++changed;
    }
    hostile.description += ", " + std::to_string(changed) + " parameters set";
}

std::string runHostileCase(std::uint64_t seed) {
    host::HostOptions options;
    options.threads = 2;
    host::Host session(options);
    HostileCase hostile = buildHostileScene(seed, session);
    std::ostringstream problems;
    try {
        session.load(ORBIVANE_MODULE_PATH);
        setHostileParams(seed, session, hostile);
        if (PF_Err err = session.sequence_setup()) problems << "sequence set-up failed with " << err << "; ";
        if (session.param_value(PARAM_CONTROL_LAYER, hostile.request.seconds).v[0] != 0) {
            if (PF_Err err = session.user_changed_param(PARAM_CONTROL_LAYER))
                problems << "choosing the control layer failed with " << err << "; ";
        }
        const host::RenderResult result = session.render(hostile.request);
        if (result.err != PF_Err_NONE) problems << "render failed with " << host::errorName(result.err) << "; ";
        if (!hostile.wild && hostile.request.bitdepth == 32) {
            const std::size_t bad = test_support::nonFiniteChannels(test_support::rawChannels(result));
            if (bad) problems << bad << " NaN or infinite output channels from finite input; ";
        }
        const std::string leaks = session.unload();
        if (!leaks.empty()) problems << "left behind: " << leaks;
    } catch (const std::exception& e) {
        problems << "host error: " << e.what();
    }
    const std::string text = problems.str();
    return text.empty() ? text : "seed " + std::to_string(seed) + " (" + hostile.description + "): " + text;
}

}  // namespace fuzz
