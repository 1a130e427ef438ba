#include "host/session/Session.h"

#include <sstream>

#include "host/comp/Composition.h"
#include "host/api/LayerPixels.h"
#include "host/comp/ParamStore.h"
#include "host/comp/ParamText.h"

namespace host {

namespace {

std::vector<std::string> popupItems(const PF_ParamDef& def) {
    std::vector<std::string> items;
    const char* text = def.u.pd.u.PF_DEF_NAMESPTR;
    if (!text) return items;
    std::string item;
    for (std::istringstream in(text); std::getline(in, item, '|');) items.push_back(item);
    return items;
}

std::string joined(const std::vector<std::string>& names) {
    std::string out;
    for (const std::string& n : names) out += (out.empty() ? "\"" : ", \"") + n + "\"";
    return out;
}

// One value of a scene parameter in the host's units, for the parameter `def` registered.
class ValueConverter {
public:
    ValueConverter(const Scene& scene, const PF_ParamDef& def) : scene_(scene), def_(def) {}

    ParamValue operator()(const SceneValue& v, const std::string& path) const {
        switch (def_.param_type) {
            case PF_Param_LAYER: return layer(v, path);
            case PF_Param_POPUP: return v.kind == SceneValue::Kind::Text ? popup(v.text, path) : number(v, path);
            case PF_Param_COLOR: {
                const std::vector<double>& c = numbers(v, 3, "a colour [r, g, b]", path);
                return ParamValue::color(c[0], c[1], c[2]);
            }
            case PF_Param_POINT: {
                const std::vector<double>& p = numbers(v, 2, "a point [x, y]", path);
                return ParamValue::point(p[0], p[1]);
            }
            default: return number(v, path);
        }
    }

private:
    [[noreturn]] void fail(const std::string& path, const std::string& problem) const {
        throw SceneError(scene_.file + ": " + path + ": " + problem);
    }

    ParamValue number(const SceneValue& v, const std::string& path) const {
        if (v.kind != SceneValue::Kind::Number) fail(path, std::string("\"") + def_.PF_DEF_NAME + "\" expects a number");
        if (v.boolean && def_.param_type != PF_Param_CHECKBOX)
            fail(path, std::string("\"") + def_.PF_DEF_NAME + "\" expects a number, not true/false");
        return ParamValue::number(v.number);
    }

    const std::vector<double>& numbers(const SceneValue& v, std::size_t count, const char* what,
                                       const std::string& path) const {
        if (v.kind != SceneValue::Kind::Numbers || v.numbers.size() != count)
            fail(path, std::string("\"") + def_.PF_DEF_NAME + "\" expects " + what);
        return v.numbers;
    }

    ParamValue popup(const std::string& text, const std::string& path) const {
        const std::vector<std::string> items = popupItems(def_);
        for (std::size_t i = 0; i < items.size(); ++i)
            if (items[i] == text) return ParamValue::number(double(i + 1));
        fail(path, std::string("\"") + def_.PF_DEF_NAME + "\" has no item \"" + text + "\"; its items are " + joined(items));
    }

    ParamValue layer(const SceneValue& v, const std::string& path) const {
        if (v.kind == SceneValue::Kind::None) return ParamValue::layer(0);
        if (v.kind != SceneValue::Kind::Text) fail(path, std::string("\"") + def_.PF_DEF_NAME + "\" expects a layer name or null");
        const Layer* chosen = scene_.composition ? scene_.composition->find_by_name(v.text) : nullptr;
        if (!chosen) fail(path, "the composition has no layer named \"" + v.text + "\"");
        return ParamValue::layer(chosen->id);
    }

    const Scene& scene_;
    const PF_ParamDef& def_;
};

PF_ParamIndex indexOf(Host& host, const Scene& scene, const SceneParameter& p) {
    const PF_ParamIndex index = host.params().find(p.name);
    if (index > 0) return index;
    std::vector<std::string> names;
    for (PF_ParamIndex i = 1; i < host.num_params(); ++i) {
        const PF_ParamDef& def = host.param_def(i);
        if (def.param_type != PF_Param_GROUP_START && def.param_type != PF_Param_GROUP_END) names.push_back(def.PF_DEF_NAME);
    }
    throw SceneError(scene.file + ": " + p.path + ": the effect has no parameter named \"" + p.name +
                     "\"; its parameters are " + joined(names));
}

void applySceneParameter(Host& host, const Scene& scene, const SceneParameter& p) {
    const PF_ParamIndex index = indexOf(host, scene, p);
    const ValueConverter convert(scene, host.param_def(index));
    std::string path = p.path;
    try {
        if (!p.animated()) {
            host.set_param(index, convert(p.value, path));
            return;
        }
        for (std::size_t k = 0; k < p.keys.size(); ++k) {
            path = p.path + ".keys[" + std::to_string(k) + "]";
            host.add_param_key(index, p.keys[k].first, convert(p.keys[k].second, path));
        }
    } catch (const HostError& e) {
        throw SceneError(scene.file + ": " + path + ": " + e.what());
    }
}

}  // namespace

void applySceneParameters(Host& host, const Scene& scene) {
    for (const SceneParameter& p : scene.parameters) applySceneParameter(host, scene, p);
}

Session::Session(const std::string& scene_path, const std::string& module_path, HostOptions options)
    : Session(load_scene(scene_path), module_path, options) {}

Session::Session(Scene scene, const std::string& module_path, HostOptions options)
    : scene_(std::move(scene)), host_(new Host(options)) {
    start(module_path);
}

Session::~Session() = default;

void Session::start(const std::string& module_path) {
    if (!scene_.composition) throw SceneError(scene_.file + ": no composition");
    host_->set_composition(scene_.composition, scene_.effect_layer_id);
    host_->layer_pixels().preload(*scene_.composition);
    host_->load(module_path);
    applySceneParameters(*host_, scene_);
    const PF_Err err = host_->sequence_setup();
    if (err) throw HostError(host_->effect_name() + ": SEQUENCE_SETUP failed with " + errorName(err));
    host_->set_time(scene_.render.has_frames ? times().front() : scene_.render.time);
    for (const SceneParameter& p : scene_.parameters) announce_if_supervised(p);
}

void Session::announce_if_supervised(const SceneParameter& p) {
    const PF_ParamIndex index = host_->params().find(p.name);
    if (index <= 0 || !host_->params().is_supervised(index)) return;
    const PF_Err err = host_->user_changed_param(index);
    if (err != PF_Err_NONE)
        throw HostError(p.path + ": the effect refused the change: error " + std::to_string(err) + " (" +
                        errorName(err) + ")");
}

void Session::set(const std::string& name, const SceneValue& value) {
    SceneParameter p;
    p.name = name;
    p.path = "\"" + name + "\"";
    p.value = value;
    applySceneParameter(*host_, scene_, p);
    announce_if_supervised(p);
}

void Session::set(const std::string& name, double number) {
    SceneValue value;
    value.kind = SceneValue::Kind::Number;
    value.number = number;
    set(name, value);
}

void Session::set_text(const std::string& name, const std::string& text) { set(name, parseParamText(text)); }

std::vector<double> Session::times() const { return scene_.render.times(scene_.composition->frame_rate()); }

RenderResult Session::render(double comp_seconds) {
    return render(comp_seconds, static_cast<short>(scene_.render.bit_depth), scene_.render.downsample);
}

RenderResult Session::render(double comp_seconds, short bit_depth, int downsample) {
    RenderRequest request;
    request.seconds = comp_seconds;
    request.bitdepth = bit_depth;
    request.downsample = downsample;
    return host_->render(request);
}

}  // namespace host
