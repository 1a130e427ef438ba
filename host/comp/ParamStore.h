#pragma once
// The effect's parameters as the host keeps them: the definitions the module registered at
// PARAMS_SETUP (checked as the host checks them), the UI state that PF_UpdateParamUI changes,
// and the user's values with their keyframes.

#include <string>
#include <vector>

#include "AE_Effect.h"
#include "host/comp/Animated.h"
#include "host/comp/ParamValue.h"

namespace host {

// Sizes needed to turn stored values into what the module sees.
struct DeliveryFrame {
    A_long layer_width = 0;   // full-resolution size of the effect layer
    A_long layer_height = 0;
    PF_RationalScale downsample_x{1, 1};
    PF_RationalScale downsample_y{1, 1};
    int effect_layer_id = 0;  // what PF_LayerDefault_MYSELF refers to
};

class ParamStore {
public:
    ParamStore();

    // Starts a new registration: only the implicit input layer (index 0) is defined.
    void begin_setup();
    // Checks and appends one definition. Returns the error the add_param callback answers;
    // warnings (duplicate ids, defaults outside the valid range) go to `warnings`.
    PF_Err add(PF_ParamIndex index, const PF_ParamDef& def, std::vector<std::string>& warnings);
    // Checks what can only be checked once every parameter is known (balanced groups).
    // Returns an empty string when the set is acceptable, otherwise the reason.
    std::string finish_setup(A_long declared_num_params, std::vector<std::string>& warnings);

    int size() const { return static_cast<int>(defs_.size()); }
    const PF_ParamDef& def(PF_ParamIndex index) const { return defs_.at(index).def; }
    // Index of the first parameter with this display name; -1 when none.
    PF_ParamIndex find(const std::string& name) const;
    bool is_supervised(PF_ParamIndex index) const;
    bool any_supervised() const;

    // Honours only the fields the host lets an effect change after setup.
    PF_Err update_ui(PF_ParamIndex index, const PF_ParamDef& changed);

    // Values. Throws HostError for a wrong index, a type without a value, or a value outside
    // the registered range. Keys are in composition seconds.
    void set(PF_ParamIndex index, const ParamValue& value);
    void add_key(PF_ParamIndex index, double comp_seconds, const ParamValue& value);
    ParamValue value(PF_ParamIndex index, double comp_seconds, const DeliveryFrame& frame) const;
    // The layer id a layer parameter points at (0 for <none>).
    int layer_id(PF_ParamIndex index, double comp_seconds, const DeliveryFrame& frame) const;
    // Takes a value the module changed in USER_CHANGED_PARAM (PF_ChangeFlag_CHANGED_VALUE).
    void take_changed_value(PF_ParamIndex index, const PF_ParamDef& def, const DeliveryFrame& frame);

    // The record the module receives: the definition with its UI state and, for non-layer
    // params, the value at `comp_seconds` in the module's units. Layer params are zeroed.
    PF_ParamDef deliver(PF_ParamIndex index, double comp_seconds, const DeliveryFrame& frame) const;

private:
    struct Entry {
        PF_ParamDef def{};
        std::string label;  // checkbox label or popup items, owned by the host
        Animated<ParamValue> value;
        bool user_set = false;
    };

    void check_value(PF_ParamIndex index, const ParamValue& value) const;
    ParamValue default_value(const Entry& entry, const DeliveryFrame& frame) const;
    bool holds(const Entry& entry) const;
    Entry& valued_entry(PF_ParamIndex index);
    void rebind_labels();
    // Warnings about an accepted definition the effect probably did not mean (a popup's item
    // count, a reused disk id, a default outside the range).
    void warn_doubtful(PF_ParamIndex index, const Entry& entry, std::vector<std::string>& warnings) const;

    std::vector<Entry> defs_;
    bool setup_open_ = false;
    int open_groups_ = 0;
};

// The checks of add_param on their own, for tests and diagnostics: PF_Err_NONE or the error,
// with the reason in `why`.
PF_Err validateParamDef(const PF_ParamDef& def, std::string& why);

}  // namespace host
