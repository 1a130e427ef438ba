#include "cli/ParamListing.h"

#include "host/comp/Composition.h"

#include <cstdio>
#include <sstream>
#include <vector>

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

namespace {

// The slider range users drag over, where it differs from what the parameter accepts.
std::string sliderRange(const PF_ParamDef& def) {
    switch (def.param_type) {
        case PF_Param_FIX_SLIDER:
            return number(def.u.fd.slider_min / kFixedOne) + " .. " + number(def.u.fd.slider_max / kFixedOne);
        case PF_Param_SLIDER:
            return std::to_string(def.u.sd.slider_min) + " .. " + std::to_string(def.u.sd.slider_max);
        case PF_Param_FLOAT_SLIDER:
            return number(def.u.fs_d.slider_min) + " .. " + number(def.u.fs_d.slider_max);
        default: return "";
    }
}

std::string precisionOf(const PF_ParamDef& def) {
    if (def.param_type == PF_Param_FIX_SLIDER) return std::to_string(def.u.fd.precision);
    if (def.param_type == PF_Param_FLOAT_SLIDER) return std::to_string(def.u.fs_d.precision);
    return "";
}

// The flags the effect chooses (the host itself adds hold interpolation to every checkbox).
std::string flagsOf(const PF_ParamDef& def) {
    std::string flags;
    if (def.flags & PF_ParamFlag_SUPERVISE) flags += "supervise ";
    if (def.flags & PF_ParamFlag_COLLAPSE_TWIRLY) flags += "collapsed ";
    if (!flags.empty()) flags.pop_back();
    return flags;
}

void printRow(std::ostringstream& out, const std::string& index, const std::string& name, const std::string& kind,
              const std::string& range, const std::string& slider, const std::string& dflt,
              const std::string& value, const std::string& precision, const std::string& id,
              const std::string& flags, const std::string& state) {
    char line[640];
    std::snprintf(line, sizeof line, "%-3s %-30s %-14s %-34s %-16s %-13s %-13s %-4s %-4s %-20s %s\n", index.c_str(),
                  name.c_str(), kind.c_str(), range.c_str(), slider.c_str(), dflt.c_str(), value.c_str(),
                  precision.c_str(), id.c_str(), flags.c_str(), state.c_str());
    out << line;
}

}  // namespace

std::string listParams(host::Host& host, double seconds) {
    std::ostringstream out;
    printRow(out, "#", "Name", "Kind", "Range", "Slider", "Default", "Value", "Prec", "Id", "Flags", "State");
    // Index 0 is the layer the effect is applied to; the host supplies it.
    printRow(out, "0", "(input layer)", "layer", "", "", "", "", "", "", "", "");
    std::vector<std::string> open_groups;
    for (PF_ParamIndex i = 1; i < host.num_params(); ++i) {
        const PF_ParamDef& def = host.param_def(i);
        const std::string index = std::to_string(i);
        const std::string id = std::to_string(def.uu.id);
        if (def.param_type == PF_Param_GROUP_END) {
            const std::string group = open_groups.empty() ? std::string() : open_groups.back();
            if (!open_groups.empty()) open_groups.pop_back();
            const std::string name = std::string(2 * open_groups.size(), ' ') + "(end of \"" + group + "\")";
            printRow(out, index, name, "group end", "", "", "", "", "", id, flagsOf(def), uiState(def));
            continue;
        }
        const std::string name = std::string(2 * open_groups.size(), ' ') + def.PF_DEF_NAME;
        if (def.param_type == PF_Param_GROUP_START) {
            printRow(out, index, name, "group", "", "", "", "", "", id, flagsOf(def), uiState(def));
            open_groups.push_back(def.PF_DEF_NAME);
            continue;
        }
        printRow(out, index, name, kindName(def.param_type), range(def), sliderRange(def), defaultOf(def),
                 valueOf(host, i, seconds), precisionOf(def), id, flagsOf(def), uiState(def));
    }
    return out.str();
}

}  // namespace cli
