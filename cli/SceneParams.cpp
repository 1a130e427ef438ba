#include "cli/SceneParams.h"

#include "cli/CliError.h"
#include "host/Composition.h"
#include "host/ParamStore.h"

#include <algorithm>
#include <cctype>
#include <sstream>

namespace cli {

namespace {

using Kind = host::SceneValue::Kind;

std::string lower(std::string s) {
    for (char& c : s) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    return s;
}

std::vector<std::string> splitItems(const std::string& items) {
    std::vector<std::string> out;
    std::size_t start = 0;
    while (true) {
        const std::size_t bar = items.find('|', start);
        out.push_back(items.substr(start, bar - start));
        if (bar == std::string::npos) return out;
        start = bar + 1;
    }
}

std::size_t editDistance(const std::string& a, const std::string& b) {
    std::vector<std::size_t> row(b.size() + 1);
    for (std::size_t j = 0; j <= b.size(); ++j) row[j] = j;
    for (std::size_t i = 1; i <= a.size(); ++i) {
        std::size_t diagonal = row[0];
        row[0] = i;
        for (std::size_t j = 1; j <= b.size(); ++j) {
            const std::size_t above = row[j];
            row[j] = std::min({row[j] + 1, row[j - 1] + 1, diagonal + (a[i - 1] == b[j - 1] ? 0 : 1)});
            diagonal = above;
        }
    }
    return row[b.size()];
}

bool hasValue(PF_ParamType type) {
    return type != PF_Param_GROUP_START && type != PF_Param_GROUP_END && type != PF_Param_NO_DATA &&
           type != PF_Param_BUTTON;
}

[[noreturn]] void fail(const std::string& path, const std::string& problem) {
    throw badInput(path + ": " + problem);
}

// Runs a host call, reporting the host's refusal of the value under `path`.
template <class Call>
void hostChecked(const std::string& path, Call&& call) {
    try {
        call();
    } catch (const host::HostError& e) {
        fail(path, e.what());
    }
}

const char* expectedFor(PF_ParamType type) {
    switch (type) {
        case PF_Param_LAYER: return "a layer name or none";
        case PF_Param_CHECKBOX: return "on/off (true/false, 1/0)";
        case PF_Param_POPUP: return "one of the items or its number";
        case PF_Param_COLOR: return "a colour r,g,b (0-255)";
        case PF_Param_POINT: return "a point x,y in layer pixels";
        default: return "a number";
    }
}

host::ParamValue layerValue(host::Host& host, const host::SceneValue& value, const std::string& path) {
    if (value.kind == Kind::None) return host::ParamValue::layer(0);
    if (value.kind != Kind::Text) fail(path, "expected a layer name or none");
    const host::Composition* comp = host.composition();
    const host::Layer* layer = comp ? comp->find_by_name(value.text) : nullptr;
    if (!layer) fail(path, "the composition has no layer named \"" + value.text + "\"");
    return host::ParamValue::layer(layer->id);
}

host::ParamValue popupValue(const PF_ParamDef& def, const host::SceneValue& value, const std::string& path) {
    const std::string items = def.u.pd.u.namesptr ? def.u.pd.u.namesptr : "";
    if (value.kind == Kind::Number) return host::ParamValue::number(value.number);
    if (value.kind != Kind::Text) fail(path, std::string("expected ") + expectedFor(PF_Param_POPUP));
    const int choice = popupChoice(items, value.text);
    if (choice == 0) {
        std::string list;
        for (const std::string& item : splitItems(items)) list += (list.empty() ? "\"" : ", \"") + item + "\"";
        fail(path, "\"" + value.text + "\" is not one of " + list);
    }
    return host::ParamValue::number(choice);
}

}  // namespace

int popupChoice(const std::string& items, const std::string& text) {
    const std::vector<std::string> list = splitItems(items);
    for (std::size_t i = 0; i < list.size(); ++i)
        if (list[i] == text) return static_cast<int>(i + 1);
    for (std::size_t i = 0; i < list.size(); ++i)
        if (lower(list[i]) == lower(text)) return static_cast<int>(i + 1);
    return 0;
}

std::string closestParamName(const host::Host& host, const std::string& name) {
    std::string best;
    std::size_t best_distance = std::max<std::size_t>(3, name.size() / 3) + 1;
    for (int i = 1; i < host.num_params(); ++i) {
        const PF_ParamDef& def = host.param_def(i);
        if (!hasValue(def.param_type)) continue;
        const std::string candidate = def.PF_DEF_NAME;
        const std::size_t d = editDistance(lower(name), lower(candidate));
        if (d < best_distance) {
            best_distance = d;
            best = candidate;
        }
    }
    return best;
}

host::ParamValue toParamValue(host::Host& host, PF_ParamIndex index, const host::SceneValue& value,
                              const std::string& path) {
    const PF_ParamDef& def = host.param_def(index);
    const PF_ParamType type = def.param_type;
    if (!hasValue(type)) fail(path, std::string("\"") + def.PF_DEF_NAME + "\" is a group heading and has no value");
    switch (type) {
        case PF_Param_LAYER: return layerValue(host, value, path);
        case PF_Param_POPUP: return popupValue(def, value, path);
        case PF_Param_COLOR:
            if (value.kind != Kind::Numbers || value.numbers.size() != 3) fail(path, "expected a colour r,g,b (0-255)");
            return host::ParamValue::color(value.numbers[0], value.numbers[1], value.numbers[2]);
        case PF_Param_POINT:
            if (value.kind != Kind::Numbers || value.numbers.size() != 2) fail(path, "expected a point x,y in layer pixels");
            return host::ParamValue::point(value.numbers[0], value.numbers[1]);
        default:
            if (value.kind != Kind::Number) fail(path, std::string("expected ") + expectedFor(type));
            return host::ParamValue::number(value.number);
    }
}

void applySceneParameters(host::Host& host, const std::vector<host::SceneParameter>& parameters) {
    for (const host::SceneParameter& p : parameters) {
        const PF_ParamIndex index = host.params().find(p.name);
        if (index <= 0) {
            const std::string guess = closestParamName(host, p.name);
            fail(p.path, "the effect has no parameter named \"" + p.name + "\"" +
                             (guess.empty() ? "" : " (did you mean \"" + guess + "\"?)") +
                             "; see --list-params");
        }
        if (p.animated()) {
            for (std::size_t k = 0; k < p.keys.size(); ++k) {
                const std::string key_path = p.path + ".keys[" + std::to_string(k) + "]";
                const host::ParamValue v = toParamValue(host, index, p.keys[k].second, key_path);
                hostChecked(key_path, [&] { host.add_param_key(index, p.keys[k].first, v); });
            }
        } else {
            const host::ParamValue v = toParamValue(host, index, p.value, p.path);
            hostChecked(p.path, [&] { host.set_param(index, v); });
        }
        if (host.params().is_supervised(index)) {
            const PF_Err err = host.user_changed_param(index);
            if (err != PF_Err_NONE) {
                throw CliError(kExitRenderFailed, p.path + ": the effect refused the change: error " +
                                                      std::to_string(err) + " (" + host::errorName(err) + ")");
            }
        }
    }
}

}  // namespace cli
