#include "e2e/SceneSession.h"

#include <sstream>
#include <stdexcept>

#include "host/Composition.h"

namespace e2e {

namespace {

// The 1-based number of `text` among the popup items "A|B|C"; 0 when absent.
int choiceOf(const char* items, const std::string& text)
{
    std::stringstream list(items ? items : "");
    std::string item;
    for (int choice = 1; std::getline(list, item, '|'); ++choice)
        if (item == text)
            return choice;
    return 0;
}

}  // namespace

SceneSession::SceneSession(const std::string& name, host::HostOptions options)
    : host_(options), scene_(host::load_scene(std::string(ORBIVANE_SOURCE_DIR) + "/tests/e2e/scenes/" + name))
{
    host_.set_composition(scene_.composition, scene_.effect_layer_id);
    host_.load(ORBIVANE_MODULE_PATH);
    applyParameters();
}

void SceneSession::applyParameters()
{
    for (const host::SceneParameter& parameter : scene_.parameters) {
        const PF_ParamIndex index = host_.param_index(parameter.name);
        const PF_ParamDef& def = host_.param_def(index);
        const host::SceneValue& value = parameter.value;
        host::ParamValue converted = host::ParamValue::number(value.number);
        if (def.param_type == PF_Param_LAYER) {
            const host::Layer* layer =
                value.kind == host::SceneValue::Kind::Text ? scene_.composition->find_by_name(value.text) : nullptr;
            converted = host::ParamValue::layer(layer ? layer->id : 0);
        } else if (def.param_type == PF_Param_POPUP && value.kind == host::SceneValue::Kind::Text) {
            converted = host::ParamValue::number(choiceOf(def.u.pd.u.PF_DEF_NAMESPTR, value.text));
        } else if (def.param_type == PF_Param_COLOR) {
            converted = host::ParamValue::color(value.numbers.at(0), value.numbers.at(1), value.numbers.at(2));
        } else if (def.param_type == PF_Param_POINT) {
            converted = host::ParamValue::point(value.numbers.at(0), value.numbers.at(1));
        }
        host_.set_param(index, converted);
    }
}

void SceneSession::set(const std::string& name, double value)
{
    host_.set_param(name, host::ParamValue::number(value));
}

void SceneSession::setPoint(const std::string& name, double x, double y)
{
    host_.set_param(name, host::ParamValue::point(x, y));
}

void SceneSession::setLayer(const std::string& name, const std::string& layer)
{
    const host::Layer* chosen = layer.empty() ? nullptr : scene_.composition->find_by_name(layer);
    if (!layer.empty() && !chosen)
        throw std::runtime_error("no layer " + layer);
    host_.set_param(name, host::ParamValue::layer(chosen ? chosen->id : 0));
}

host::RenderResult SceneSession::render(short bit_depth, int downsample)
{
    host::RenderRequest request;
    request.seconds = scene_.render.time;
    request.bitdepth = bit_depth;
    request.downsample = downsample;
    return host_.render(request);
}

PF_PixelFloat pixelAt(const host::RenderResult& result, int x, int y)
{
    PF_PixelFloat out{0, 0, 0, 0};
    const PF_EffectWorld& world = result.output->get();
    host::dispatchPixelType(result.output->format(), [&](auto tag) {
        using Pixel = typename decltype(tag)::type;
        const Pixel& p = host::worldPixel<Pixel>(world, x, y);
        const float white = std::is_same<Pixel, PF_Pixel>::value    ? 255.0f
                            : std::is_same<Pixel, PF_Pixel16>::value ? 32768.0f
                                                                     : 1.0f;
        out = PF_PixelFloat{p.alpha / white, p.red / white, p.green / white, p.blue / white};
    });
    return out;
}

}  // namespace e2e
