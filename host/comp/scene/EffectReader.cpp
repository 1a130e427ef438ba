// Reads the layer's "effect": its parameter values by display name, constant or keyed.
#include "host/comp/scene/EffectReader.h"

namespace host {
namespace scene {

namespace {

SceneValue value(const Reader& in, const Json& j, const std::string& path) {
    SceneValue v;
    if (j.is_null()) {
        v.kind = SceneValue::Kind::None;
    } else if (j.is_boolean()) {
        v.kind = SceneValue::Kind::Number;
        v.boolean = true;
        v.number = j.get<bool>() ? 1 : 0;
    } else if (j.is_number()) {
        v.kind = SceneValue::Kind::Number;
        v.number = j.get<double>();
    } else if (j.is_string()) {
        v.kind = SceneValue::Kind::Text;
        v.text = j.get<std::string>();
    } else if (j.is_array() && (j.size() == 2 || j.size() == 3)) {
        v.kind = SceneValue::Kind::Numbers;
        v.numbers = in.numbers(j, path, j.size());
    } else {
        in.fail(path, "expected a number, true/false, a string, null, [x, y] or [r, g, b]");
    }
    return v;
}

// The first key's value stands in wherever a single value is asked for.
void read_keys(const Reader& in, const Json& j, SceneParameter& p) {
    std::string kp = field(p.path, "keys");
    if (!j.contains("keys") || !j["keys"].is_array() || j["keys"].empty()) {
        in.fail(kp, "expected a non-empty array of [seconds, value]");
    }
    for (std::size_t i = 0; i < j["keys"].size(); ++i) {
        const Json& key = j["keys"][i];
        std::string ip = element(kp, i);
        if (!key.is_array() || key.size() != 2) in.fail(ip, "expected [seconds, value]");
        p.keys.emplace_back(in.number(key[0], element(ip, 0)), value(in, key[1], element(ip, 1)));
    }
    p.value = p.keys.front().second;
}

}  // namespace

void read_effect(const Reader& in, const Json& j, const std::string& path, std::vector<SceneParameter>& parameters) {
    in.only_fields(j, path, {"parameters"});
    if (!j.contains("parameters")) return;
    std::string pp = field(path, "parameters");
    const Json& params = j["parameters"];
    if (!params.is_object()) in.fail(pp, "expected an object of name: value");
    for (auto it = params.begin(); it != params.end(); ++it) {
        SceneParameter p;
        p.name = it.key();
        p.path = field(pp, it.key());
        if (it->is_object()) {
            in.only_fields(*it, p.path, {"keys"});
            read_keys(in, *it, p);
        } else {
            p.value = value(in, *it, p.path);
        }
        parameters.push_back(std::move(p));
    }
}

}  // namespace scene
}  // namespace host
