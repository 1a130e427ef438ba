#include "host/comp/ParamStore.h"

#include "host/session/HostError.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <map>
#include <sstream>

namespace host {

namespace {

constexpr double kFixedOne = 65536.0;

bool isKnownType(PF_ParamType type) {
    return (type >= PF_Param_LAYER && type <= PF_Param_BUTTON) || type == PF_Param_POINT_3D;
}

bool hasValue(PF_ParamType type) {
    switch (type) {
        case PF_Param_SLIDER:
        case PF_Param_FIX_SLIDER:
        case PF_Param_FLOAT_SLIDER:
        case PF_Param_ANGLE:
        case PF_Param_CHECKBOX:
        case PF_Param_COLOR:
        case PF_Param_POINT:
        case PF_Param_POPUP:
        case PF_Param_LAYER:
            return true;
        default:
            return false;
    }
}

bool nameFits(const A_char* name) { return std::memchr(name, '\0', PF_MAX_EFFECT_PARAM_NAME_LEN + 1) != nullptr; }

// What PF_UpdateParamUI may change of a fixed or float slider: its range and how it is shown.
template <class Slider>
void takeShownRange(Slider& def, const Slider& changed) {
    def.slider_min = changed.slider_min;
    def.slider_max = changed.slider_max;
    def.precision = changed.precision;
    def.display_flags = changed.display_flags;
}

std::string paramName(const PF_ParamDef& def) {
    if (!nameFits(def.PF_DEF_NAME)) return std::string(def.PF_DEF_NAME, PF_MAX_EFFECT_PARAM_NAME_LEN + 1);
    return def.PF_DEF_NAME;
}

PF_Fixed toFixed(double x) { return static_cast<PF_Fixed>(std::lround(x * kFixedOne)); }

// A decimal limit such as 0.99 has no exact 16.16 form, and a module registers the raw value
// next to it on either side (64880 for 0.99, although 0.99 rounds to 64881). A value less than
// one 16.16 step beyond a raw limit is therefore that limit as written: it is accepted, and
// held to the raw limit when stored.
bool nearFixedRange(const PF_FixedSliderDef& fd, double x) {
    const double scaled = x * kFixedOne;
    return scaled > fd.valid_min - 1.0 && scaled < fd.valid_max + 1.0;
}

// The shortest decimal that names the raw limit in that sense (64880 -> "0.99", 65470 ->
// "0.999"), so a limit printed in a message is accepted when typed back.
std::string fixedLimitText(PF_Fixed raw) {
    char text[32];
    for (int decimals = 0; decimals < 10; ++decimals) {
        std::snprintf(text, sizeof text, "%.*f", decimals, raw / kFixedOne);
        if (std::fabs(std::strtod(text, nullptr) * kFixedOne - raw) < 1.0) break;
    }
    return text;
}

// `value` with a fixed slider's number held to the raw limits (a change below one 16.16 step).
ParamValue heldToFixedRange(const PF_ParamDef& def, ParamValue value) {
    if (def.param_type == PF_Param_FIX_SLIDER)
        value.v[0] = std::min(std::max(value.v[0], def.u.fd.valid_min / kFixedOne), def.u.fd.valid_max / kFixedOne);
    return value;
}

// Valid range of a slider-like parameter in its user units; false for other types.
bool validRange(const PF_ParamDef& def, double& lo, double& hi) {
    switch (def.param_type) {
        case PF_Param_SLIDER: lo = def.u.sd.valid_min; hi = def.u.sd.valid_max; return true;
        case PF_Param_FIX_SLIDER:
            lo = def.u.fd.valid_min / kFixedOne;
            hi = def.u.fd.valid_max / kFixedOne;
            return true;
        case PF_Param_FLOAT_SLIDER: lo = def.u.fs_d.valid_min; hi = def.u.fs_d.valid_max; return true;
        default: return false;
    }
}

int countItems(const std::string& items) {
    if (items.empty()) return 0;
    int n = 1;
    for (char c : items)
        if (c == '|') ++n;
    return n;
}

std::string describe(PF_ParamIndex index, const PF_ParamDef& def) {
    std::ostringstream out;
    out << "param " << index << " \"" << paramName(def) << "\"";
    return out.str();
}

}  // namespace

PF_Err validateParamDef(const PF_ParamDef& def, std::string& why) {
    const PF_ParamType type = def.param_type;
    if (!isKnownType(type) || type == PF_Param_RESERVED2 || type == PF_Param_RESERVED3) {
        why = "unknown param_type " + std::to_string(type);
        return PF_Err_UNRECOGNIZED_PARAM_TYPE;
    }
    if (!nameFits(def.PF_DEF_NAME)) {
        why = "name longer than 31 characters";
        return PF_Err_BAD_CALLBACK_PARAM;
    }
    if (type == PF_Param_BUTTON && !(def.flags & PF_ParamFlag_SUPERVISE)) {
        why = "a button must be supervised";
        return PF_Err_BAD_CALLBACK_PARAM;
    }
    if (type == PF_Param_ARBITRARY_DATA &&
        !(def.ui_flags & (PF_PUI_TOPIC | PF_PUI_CONTROL | PF_PUI_NO_ECW_UI))) {
        why = "arbitrary data needs PF_PUI_TOPIC, PF_PUI_CONTROL or PF_PUI_NO_ECW_UI";
        return PF_Err_BAD_CALLBACK_PARAM;
    }
    if (def.ui_flags & PF_PUI_STD_CONTROL_ONLY) {
        const bool illegal_type = type == PF_Param_LAYER || type == PF_Param_ARBITRARY_DATA ||
                                  type == PF_Param_PATH || type == PF_Param_CUSTOM ||
                                  type == PF_Param_NO_DATA;
        if (illegal_type || !(def.flags & PF_ParamFlag_SUPERVISE)) {
            why = "PF_PUI_STD_CONTROL_ONLY needs a supervised param of a standard type";
            return PF_Err_BAD_CALLBACK_PARAM;
        }
    }
    if (type == PF_Param_LAYER && (def.flags & PF_ParamFlag_USE_VALUE_FOR_OLD_PROJECTS)) {
        why = "PF_ParamFlag_USE_VALUE_FOR_OLD_PROJECTS is invalid on a layer param";
        return PF_Err_BAD_CALLBACK_PARAM;
    }
    double lo = 0, hi = 0;
    if (validRange(def, lo, hi) && lo > hi) {
        why = "valid_min is greater than valid_max";
        return PF_Err_BAD_CALLBACK_PARAM;
    }
    if (type == PF_Param_POPUP) {
        if (def.u.pd.num_choices < 1 || !def.u.pd.u.PF_DEF_NAMESPTR) {
            why = "a popup needs at least one choice";
            return PF_Err_BAD_CALLBACK_PARAM;
        }
    }
    return PF_Err_NONE;
}

// The strings live in the host, so the module's pointers need not outlive add_param; they
// move with the vector, so every record is pointed at its copy again after each growth.
void ParamStore::rebind_labels() {
    for (Entry& entry : defs_) {
        if (entry.def.param_type == PF_Param_CHECKBOX) entry.def.u.bd.u.PF_DEF_NAMEPTR = entry.label.c_str();
        if (entry.def.param_type == PF_Param_POPUP) entry.def.u.pd.u.PF_DEF_NAMESPTR = entry.label.c_str();
    }
}

ParamStore::ParamStore() { begin_setup(); setup_open_ = false; }

void ParamStore::begin_setup() {
    defs_.clear();
    Entry input;
    input.def.param_type = PF_Param_LAYER;
    input.def.u.ld.dephault = PF_LayerDefault_MYSELF;
    defs_.push_back(input);
    setup_open_ = true;
    open_groups_ = 0;
}

PF_Err ParamStore::add(PF_ParamIndex index, const PF_ParamDef& def, std::vector<std::string>& warnings) {
    if (!setup_open_) return PF_Err_INVALID_CALLBACK;
    const PF_ParamIndex next = static_cast<PF_ParamIndex>(defs_.size());
    if (index != -1 && index != next) {
        warnings.push_back("add_param with index " + std::to_string(index) + ", expected -1 or " +
                           std::to_string(next));
        return PF_Err_INVALID_CALLBACK;
    }
    std::string why;
    if (PF_Err err = validateParamDef(def, why)) {
        warnings.push_back("refused " + describe(next, def) + ": " + why);
        return err;
    }
    if (def.param_type == PF_Param_GROUP_END) {
        if (open_groups_ == 0) {
            warnings.push_back("refused " + describe(next, def) + ": group end without a start");
            return PF_Err_BAD_CALLBACK_PARAM;
        }
        --open_groups_;
    } else if (def.param_type == PF_Param_GROUP_START) {
        ++open_groups_;
    }

    Entry entry;
    entry.def = def;
    if (def.param_type == PF_Param_CHECKBOX) {
        entry.def.flags |= PF_ParamFlag_CANNOT_INTERP;
        if (def.u.bd.u.PF_DEF_NAMEPTR) entry.label = def.u.bd.u.PF_DEF_NAMEPTR;
    }
    if (def.param_type == PF_Param_POPUP) entry.label = def.u.pd.u.PF_DEF_NAMESPTR;
    warn_doubtful(next, entry, warnings);
    defs_.push_back(entry);
    rebind_labels();
    return PF_Err_NONE;
}

void ParamStore::warn_doubtful(PF_ParamIndex index, const Entry& entry, std::vector<std::string>& warnings) const {
    const PF_ParamDef& def = entry.def;
    if (def.param_type == PF_Param_POPUP && countItems(entry.label) != def.u.pd.num_choices)
        warnings.push_back(describe(index, def) + ": num_choices " + std::to_string(def.u.pd.num_choices) +
                           " but " + std::to_string(countItems(entry.label)) + " items");
    for (const Entry& other : defs_)
        if (&other != &defs_.front() && def.uu.id != 0 && other.def.uu.id == def.uu.id) {
            warnings.push_back(describe(index, def) + " reuses disk id " + std::to_string(def.uu.id));
            break;
        }
    double lo = 0, hi = 0;
    const ParamValue initial = default_value(entry, DeliveryFrame());
    if (validRange(def, lo, hi) && (initial.v[0] < lo || initial.v[0] > hi))
        warnings.push_back(describe(index, def) + ": default outside the valid range");
    if (def.param_type == PF_Param_POINT) {
        const double lim_lo = def.u.td.restrict_bounds ? 0 : -600, lim_hi = def.u.td.restrict_bounds ? 100 : 600;
        const double x = def.u.td.x_dephault / kFixedOne, y = def.u.td.y_dephault / kFixedOne;
        if (x < lim_lo || x > lim_hi || y < lim_lo || y > lim_hi)
            warnings.push_back(describe(index, def) + ": point default outside the allowed percentages");
    }
}

std::string ParamStore::finish_setup(A_long declared_num_params, std::vector<std::string>& warnings) {
    setup_open_ = false;
    if (defs_.size() > 1 && defs_[1].def.uu.id == 0) {
        warnings.push_back("first param has disk id 0: numbering the params from 1");
        for (std::size_t i = 1; i < defs_.size(); ++i) defs_[i].def.uu.id = static_cast<A_long>(i);
    }
    if (open_groups_ != 0)
        return std::to_string(open_groups_) + " param group(s) never closed";
    if (declared_num_params != size())
        return "out_data->num_params is " + std::to_string(declared_num_params) + " but " +
               std::to_string(size() - 1) + " params were added (expected " + std::to_string(size()) + ")";
    return std::string();
}

PF_ParamIndex ParamStore::find(const std::string& name) const {
    for (std::size_t i = 1; i < defs_.size(); ++i)
        if (paramName(defs_[i].def) == name) return static_cast<PF_ParamIndex>(i);
    return -1;
}

bool ParamStore::is_supervised(PF_ParamIndex index) const {
    return index >= 0 && index < size() && (defs_[index].def.flags & PF_ParamFlag_SUPERVISE);
}

bool ParamStore::any_supervised() const {
    for (const Entry& entry : defs_)
        if (entry.def.flags & PF_ParamFlag_SUPERVISE) return true;
    return false;
}

PF_Err ParamStore::update_ui(PF_ParamIndex index, const PF_ParamDef& changed) {
    if (index <= 0 || index >= size()) return PF_Err_BAD_CALLBACK_PARAM;
    PF_ParamDef& def = defs_[index].def;
    if (changed.param_type != def.param_type) return PF_Err_BAD_CALLBACK_PARAM;
    const PF_ParamUIFlags changeable = PF_PUI_ECW_SEPARATOR | PF_PUI_DISABLED;
    def.ui_flags = (def.ui_flags & ~changeable) | (changed.ui_flags & changeable);
    def.ui_width = changed.ui_width;
    def.ui_height = changed.ui_height;
    if (nameFits(changed.PF_DEF_NAME)) std::memcpy(def.PF_DEF_NAME, changed.PF_DEF_NAME, sizeof def.PF_DEF_NAME);
    def.flags = (def.flags & ~PF_ParamFlag_COLLAPSE_TWIRLY) | (changed.flags & PF_ParamFlag_COLLAPSE_TWIRLY);
    switch (def.param_type) {
        case PF_Param_SLIDER:
            def.u.sd.slider_min = changed.u.sd.slider_min;
            def.u.sd.slider_max = changed.u.sd.slider_max;
            break;
        case PF_Param_FIX_SLIDER:
            takeShownRange(def.u.fd, changed.u.fd);
            break;
        case PF_Param_FLOAT_SLIDER:
            takeShownRange(def.u.fs_d, changed.u.fs_d);
            break;
        default:
            break;
    }
    return PF_Err_NONE;
}

ParamValue ParamStore::default_value(const Entry& entry, const DeliveryFrame& frame) const {
    const PF_ParamDef& def = entry.def;
    switch (def.param_type) {
        case PF_Param_SLIDER: return ParamValue::number(def.u.sd.dephault);
        case PF_Param_FIX_SLIDER: return ParamValue::number(def.u.fd.dephault / kFixedOne);
        case PF_Param_FLOAT_SLIDER: return ParamValue::number(def.u.fs_d.dephault);
        case PF_Param_ANGLE: return ParamValue::number(def.u.ad.dephault / kFixedOne);
        case PF_Param_CHECKBOX: return ParamValue::number(def.u.bd.dephault ? 1 : 0);
        case PF_Param_POPUP: return ParamValue::number(def.u.pd.dephault);
        case PF_Param_COLOR:
            return ParamValue::color(def.u.cd.dephault.red, def.u.cd.dephault.green, def.u.cd.dephault.blue,
                                     def.u.cd.dephault.alpha);
        case PF_Param_POINT:  // defaults are percent of the layer
            return ParamValue::point(def.u.td.x_dephault / kFixedOne / 100.0 * frame.layer_width,
                                     def.u.td.y_dephault / kFixedOne / 100.0 * frame.layer_height);
        case PF_Param_LAYER:
            return ParamValue::layer(def.u.ld.dephault == PF_LayerDefault_MYSELF ? frame.effect_layer_id : 0);
        default: return ParamValue();
    }
}

bool ParamStore::holds(const Entry& entry) const {
    const PF_ParamType type = entry.def.param_type;
    return type == PF_Param_POPUP || type == PF_Param_CHECKBOX || type == PF_Param_LAYER ||
           (entry.def.flags & PF_ParamFlag_CANNOT_INTERP);
}

void ParamStore::check_value(PF_ParamIndex index, const ParamValue& value) const {
    if (index <= 0 || index >= size())
        throw HostError("no param with index " + std::to_string(index));
    const PF_ParamDef& def = defs_[index].def;
    if (!hasValue(def.param_type))
        throw HostError(describe(index, def) + " has no value to set");
    for (double v : value.v)
        if (!std::isfinite(v)) throw HostError(describe(index, def) + ": value is not a finite number");
    const double x = value.v[0];
    double lo = 0, hi = 0;
    if (def.param_type == PF_Param_FIX_SLIDER) {
        if (!nearFixedRange(def.u.fd, x)) {
            std::ostringstream out;
            out << describe(index, def) << ": " << x << " is outside the valid range "
                << fixedLimitText(def.u.fd.valid_min) << " .. " << fixedLimitText(def.u.fd.valid_max);
            throw HostError(out.str());
        }
    } else if (validRange(def, lo, hi) && (x < lo || x > hi)) {
        std::ostringstream out;
        out << describe(index, def) << ": " << x << " is outside the valid range " << lo << " .. " << hi;
        throw HostError(out.str());
    }
    if (def.param_type == PF_Param_SLIDER && x != std::floor(x))
        throw HostError(describe(index, def) + ": an integer slider needs a whole number");
    if (def.param_type == PF_Param_CHECKBOX && x != 0 && x != 1)
        throw HostError(describe(index, def) + ": a checkbox is 0 or 1");
    if (def.param_type == PF_Param_POPUP && (x != std::floor(x) || x < 1 || x > def.u.pd.num_choices))
        throw HostError(describe(index, def) + ": choice must be 1 .. " + std::to_string(def.u.pd.num_choices));
    if (def.param_type == PF_Param_COLOR)
        for (double c : value.v)
            if (c < 0 || c > 255) throw HostError(describe(index, def) + ": colour channels are 0 .. 255");
    if (def.param_type == PF_Param_LAYER && (x != std::floor(x) || x < 0))
        throw HostError(describe(index, def) + ": a layer param takes a layer id (0 for none)");
}

ParamStore::Entry& ParamStore::valued_entry(PF_ParamIndex index) { return defs_.at(index); }

void ParamStore::set(PF_ParamIndex index, const ParamValue& given) {
    check_value(index, given);
    Entry& entry = valued_entry(index);
    const ParamValue value = heldToFixedRange(entry.def, given);
    entry.value.set(value);
    entry.user_set = true;
}

void ParamStore::add_key(PF_ParamIndex index, double comp_seconds, const ParamValue& given) {
    check_value(index, given);
    Entry& entry = valued_entry(index);
    const ParamValue value = heldToFixedRange(entry.def, given);
    if (entry.def.flags & PF_ParamFlag_CANNOT_TIME_VARY)
        throw HostError(describe(index, entry.def) + " cannot be keyframed");
    if (!entry.user_set) entry.value.set(value);
    entry.value.add_key(comp_seconds, value);
    entry.user_set = true;
}

ParamValue ParamStore::value(PF_ParamIndex index, double comp_seconds, const DeliveryFrame& frame) const {
    if (index < 0 || index >= size()) throw HostError("no param with index " + std::to_string(index));
    const Entry& entry = defs_[index];
    if (!entry.user_set) return default_value(entry, frame);
    if (!holds(entry) || !entry.value.is_animated()) return entry.value.at(comp_seconds);
    // Hold interpolation: the last key at or before the time, the first key before it.
    const auto& keys = entry.value.keys();
    ParamValue held = keys.front().value;
    for (const auto& key : keys)
        if (key.seconds <= comp_seconds) held = key.value;
    return held;
}

int ParamStore::layer_id(PF_ParamIndex index, double comp_seconds, const DeliveryFrame& frame) const {
    return static_cast<int>(value(index, comp_seconds, frame).v[0]);
}

void ParamStore::take_changed_value(PF_ParamIndex index, const PF_ParamDef& def, const DeliveryFrame& frame) {
    if (index <= 0 || index >= size()) return;
    const PF_ParamType type = defs_[index].def.param_type;
    ParamValue v;
    switch (type) {
        case PF_Param_SLIDER: v = ParamValue::number(def.u.sd.value); break;
        case PF_Param_FIX_SLIDER: v = ParamValue::number(def.u.fd.value / kFixedOne); break;
        case PF_Param_FLOAT_SLIDER: v = ParamValue::number(def.u.fs_d.value); break;
        case PF_Param_ANGLE: v = ParamValue::number(def.u.ad.value / kFixedOne); break;
        case PF_Param_CHECKBOX: v = ParamValue::number(def.u.bd.value ? 1 : 0); break;
        case PF_Param_POPUP: v = ParamValue::number(def.u.pd.value); break;
        case PF_Param_COLOR:
            v = ParamValue::color(def.u.cd.value.red, def.u.cd.value.green, def.u.cd.value.blue, def.u.cd.value.alpha);
            break;
        case PF_Param_POINT: {
            const double sx = double(frame.downsample_x.num) / frame.downsample_x.den;
            const double sy = double(frame.downsample_y.num) / frame.downsample_y.den;
            v = ParamValue::point(def.u.td.x_value / kFixedOne / sx, def.u.td.y_value / kFixedOne / sy);
            break;
        }
        default: return;  // layer params cannot be changed by the effect
    }
    set(index, v);
}

PF_ParamDef ParamStore::deliver(PF_ParamIndex index, double comp_seconds, const DeliveryFrame& frame) const {
    const Entry& entry = defs_.at(index);
    PF_ParamDef out = entry.def;
    out.uu.change_flags = PF_ChangeFlag_NONE;
    if (!hasValue(out.param_type)) return out;
    if (out.param_type == PF_Param_LAYER) {
        out.u.ld = PF_LayerDef{};
        out.u.ld.dephault = entry.def.u.ld.dephault;
        return out;
    }
    const ParamValue v = value(index, comp_seconds, frame);
    switch (out.param_type) {
        case PF_Param_SLIDER: out.u.sd.value = static_cast<PF_ParamValue>(std::lround(v.v[0])); break;
        case PF_Param_FIX_SLIDER: out.u.fd.value = toFixed(v.v[0]); break;
        case PF_Param_FLOAT_SLIDER: out.u.fs_d.value = v.v[0]; break;
        case PF_Param_ANGLE: out.u.ad.value = toFixed(v.v[0]); break;
        case PF_Param_CHECKBOX: out.u.bd.value = v.v[0] != 0 ? 1 : 0; break;
        case PF_Param_POPUP: out.u.pd.value = static_cast<PF_ParamValue>(std::lround(v.v[0])); break;
        case PF_Param_COLOR:
            out.u.cd.value.alpha = static_cast<A_u_char>(std::lround(v.v[0]));
            out.u.cd.value.red = static_cast<A_u_char>(std::lround(v.v[1]));
            out.u.cd.value.green = static_cast<A_u_char>(std::lround(v.v[2]));
            out.u.cd.value.blue = static_cast<A_u_char>(std::lround(v.v[3]));
            break;
        case PF_Param_POINT: {
            // Points arrive in the downsampled input buffer's pixels.
            const double sx = double(frame.downsample_x.num) / frame.downsample_x.den;
            const double sy = double(frame.downsample_y.num) / frame.downsample_y.den;
            out.u.td.x_value = toFixed(v.v[0] * sx);
            out.u.td.y_value = toFixed(v.v[1] * sy);
            break;
        }
        default: break;
    }
    return out;
}

}  // namespace host
