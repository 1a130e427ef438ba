#include "cli/ParamListing.h"

#include "host/Composition.h"

#include <cstdio>
#include <sstream>

namespace cli {

namespace {

constexpr double kFixedOne = 65536.0;

std::string number(double v, int precision = 3) {
    // At most `precision` decimals, without trailing zeros.
    char buffer[64];
    std::snprintf(buffer, sizeof buffer, "%.*f", precision, v);
    std::string s = buffer;
    if (s.find('.') != std::string::npos) {
        while (s.back() == '0') s.pop_back();
        if (s.back() == '.') s.pop_back();
    }
    return s == "-0" ? "0" : s;
}

std::string popupItem(const PF_ParamDef& def, int choice) {
    const std::string items = def.u.pd.u.namesptr ? def.u.pd.u.namesptr : "";
    std::size_t start = 0;
    for (int i = 1; i < choice; ++i) {
        start = items.find('|', start);
        if (start == std::string::npos) return std::to_string(choice);
        ++start;
    }
    return "\"" + items.substr(start, items.find('|', start) - start) + "\"";
}

std::string layerName(host::Host& host, int id) {
    if (id == 0) return "none";
    const host::Composition* comp = host.composition();
    const host::Layer* layer = comp ? comp->find_by_id(id) : nullptr;
    return layer ? "\"" + layer->display_name() + "\"" : "layer " + std::to_string(id);
}

std::string range(const PF_ParamDef& def) {
    switch (def.param_type) {
        case PF_Param_FIX_SLIDER:
            return number(def.u.fd.valid_min / kFixedOne) + " .. " + number(def.u.fd.valid_max / kFixedOne);
        case PF_Param_SLIDER:
            return std::to_string(def.u.sd.valid_min) + " .. " + std::to_string(def.u.sd.valid_max);
        case PF_Param_FLOAT_SLIDER:
            return number(def.u.fs_d.valid_min) + " .. " + number(def.u.fs_d.valid_max);
        case PF_Param_ANGLE: return "degrees";
        case PF_Param_CHECKBOX: return "on/off";
        case PF_Param_COLOR: return "r,g,b 0..255";
        case PF_Param_POINT: return "x,y pixels";
        case PF_Param_POPUP: return def.u.pd.u.namesptr ? def.u.pd.u.namesptr : "";
        case PF_Param_LAYER: return "layer name or none";
        default: return "";
    }
}

std::string defaultOf(const PF_ParamDef& def) {
    switch (def.param_type) {
        case PF_Param_FIX_SLIDER: return number(def.u.fd.dephault / kFixedOne);
        case PF_Param_SLIDER: return std::to_string(def.u.sd.dephault);
        case PF_Param_FLOAT_SLIDER: return number(def.u.fs_d.dephault);
        case PF_Param_ANGLE: return number(def.u.ad.dephault / kFixedOne);
        case PF_Param_CHECKBOX: return def.u.bd.dephault ? "on" : "off";
        case PF_Param_POPUP: return popupItem(def, def.u.pd.dephault);
        case PF_Param_COLOR: {
            const PF_Pixel& c = def.u.cd.dephault;
            return std::to_string(c.red) + "," + std::to_string(c.green) + "," + std::to_string(c.blue);
        }
        case PF_Param_POINT:
            return number(def.u.td.x_dephault / kFixedOne) + "%," + number(def.u.td.y_dephault / kFixedOne) + "%";
        case PF_Param_LAYER: return "none";
        default: return "";
    }
}

std::string valueOf(host::Host& host, PF_ParamIndex index, double seconds) {
    const PF_ParamDef& def = host.param_def(index);
    const host::ParamValue v = host.param_value(index, seconds);
    switch (def.param_type) {
        case PF_Param_CHECKBOX: return v.v[0] != 0 ? "on" : "off";
        case PF_Param_POPUP: return popupItem(def, static_cast<int>(v.v[0]));
        case PF_Param_COLOR:
            return number(v.v[1], 0) + "," + number(v.v[2], 0) + "," + number(v.v[3], 0);
        case PF_Param_POINT: return number(v.v[0], 1) + "," + number(v.v[1], 1);
        case PF_Param_LAYER: return layerName(host, static_cast<int>(v.v[0]));
        default: return number(v.v[0]);
    }
}

}  // namespace

const char* uiState(const PF_ParamDef& def) {
    if (def.ui_flags & PF_PUI_INVISIBLE) return "hidden";
    if (def.ui_flags & PF_PUI_DISABLED) return "disabled";
    return "enabled";
}

const char* kindName(PF_ParamType type) {
    switch (type) {
        case PF_Param_LAYER: return "layer";
        case PF_Param_SLIDER: return "integer slider";
        case PF_Param_FIX_SLIDER:
        case PF_Param_FLOAT_SLIDER: return "slider";
        case PF_Param_ANGLE: return "angle";
        case PF_Param_CHECKBOX: return "checkbox";
        case PF_Param_COLOR: return "colour";
        case PF_Param_POINT: return "point";
        case PF_Param_POPUP: return "popup";
        case PF_Param_GROUP_START: return "group";
        default: return "other";
    }
}

std::string listParams(host::Host& host, double seconds) {
    std::ostringstream out;
    char line[512];
    std::snprintf(line, sizeof line, "%-3s %-28s %-15s %-36s %-14s %-14s %s\n", "#", "Name", "Kind", "Range",
                  "Default", "Value", "State");
    out << line;
    int depth = 0;
    for (PF_ParamIndex i = 1; i < host.num_params(); ++i) {
        const PF_ParamDef& def = host.param_def(i);
        if (def.param_type == PF_Param_GROUP_END) {
            if (depth > 0) --depth;
            continue;
        }
        const std::string name = std::string(2 * depth, ' ') + def.PF_DEF_NAME;
        if (def.param_type == PF_Param_GROUP_START) {
            std::snprintf(line, sizeof line, "%-3d %-28s %-15s %-36s %-14s %-14s %s\n", i, name.c_str(), "group", "",
                          "", "", uiState(def));
            ++depth;
        } else {
            std::snprintf(line, sizeof line, "%-3d %-28s %-15s %-36s %-14s %-14s %s\n", i, name.c_str(),
                          kindName(def.param_type), range(def).c_str(), defaultOf(def).c_str(),
                          valueOf(host, i, seconds).c_str(), uiState(def));
        }
        out << line;
    }
    return out.str();
}

}  // namespace cli
