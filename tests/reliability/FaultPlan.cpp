#include "reliability/FaultPlan.h"

#include <map>
#include <set>

#include "host/api/SuiteRegistry.h"

namespace reliability {

namespace {

bool startsWith(const std::string& s, const char* prefix) { return s.rfind(prefix, 0) == 0; }

// The parts of a "change parameter" step: its USER_CHANGED_PARAM calls come first, then an
// interface update as long as the lone update that the lifetime runs right after it.
std::uint64_t changeCallsEnd(const LifetimeResult& counted, std::size_t step) {
    const StepResult& change = counted.steps[step];
    const std::uint64_t length = change.end_call - change.first_call;
    std::uint64_t update_length = 0;
    if (step + 1 < counted.steps.size() && counted.steps[step + 1].kind == StepKind::UpdateUi)
        update_length = counted.steps[step + 1].end_call - counted.steps[step + 1].first_call;
    return change.first_call + (length > update_length ? length - update_length : 0);
}

Allowed inLoad(const std::string& name) {
    Allowed a;
    if (name == "AEGP_RegisterWithAEGP") {
        a.none = true;  // kept in the global data as the registration result
    } else if (name == "AcquireSuite") {
        a.injected = a.missing_suite = true;
        a.none = true;  // the sampling suites the memory wrapper loads are not needed here
    } else {
        a.injected = true;
    }
    return a;
}

// A failed control update ends the interface update with its error. The look-up of the
// chosen control layer may fail quietly (the controls then keep their state).
Allowed inInterfaceUpdate(const std::string& name) {
    Allowed a;
    a.injected = true;
    if (name != "PF_UpdateParamUI") a.none = a.missing_suite = true;
    return a;
}

// `suite_ordinal`: the how-many-th suite acquisition of SMART_RENDER this is (0 when not one).
Allowed inRender(const std::string& name, int suite_ordinal) {
    Allowed a;
    if (name == "AcquireSuite" && suite_ordinal > 0) {
        if (suite_ordinal <= 2) {
            a.none = true;  // 8- and 16-bit sampling: only the float suite's error counts
        } else if (suite_ordinal <= 4) {
            a.injected = a.missing_suite = true;  // float sampling, then the world suite
        } else {
            a.none = a.injected = a.missing_suite = true;
        }
    } else if (name == "checkout_layer" || name == "checkout_layer_pixels" || name == "checkout_output" ||
               name == "PF_GetPixelFormat" || name == "iterate_generic" || name == "PF_NewWorld" ||
               name == "new_world") {
        a.injected = true;
    } else {
        // Record construction keeps host errors in its wrappers and reports none; the texture
        // and reflection checkouts and the sampling inside the passes may report theirs.
        a.none = a.injected = a.missing_suite = true;
    }
    return a;
}

}  // namespace

bool Allowed::accepts(PF_Err err, PF_Err injected_err) const {
    if (err == PF_Err_NONE) return none;
    if (err == injected_err) return injected;
    if (err == PF_Err_BAD_CALLBACK_PARAM) return missing_suite;
    return false;
}

bool isInert(const std::string& name) {
    static const std::set<std::string> inert = {"strcpy", "sprintf", "host_lock_handle", "host_unlock_handle",
                                                "host_dispose_handle", "host_get_handle_size"};
    return inert.count(name) != 0;
}

bool isRelease(const std::string& name) {
    return name == "ReleaseSuite" || name == "checkin_param" || name == "checkin_layer_pixels" ||
           name == "dispose_world" || name == "PF_DisposeWorld" || startsWith(name, "AEGP_Dispose") ||
           startsWith(name, "AEGP_Free") || startsWith(name, "AEGP_Unlock") || name == "AEGP_EndUndoGroup";
}

bool isSampling(const std::string& name) { return name.find("sample") != std::string::npos; }

PF_Err errorFor(const std::string& name) {
    if (name == "AcquireSuite") return kSPSuiteNotFoundError;
    if (name == "host_new_handle" || name == "host_resize_handle" || name == "new_world" || name == "PF_NewWorld" ||
        name == "AEGP_NewMemHandle" || name == "AllocateBlock" || name == "ReallocateBlock")
        return PF_Err_OUT_OF_MEMORY;
    return PF_Err_INTERNAL_STRUCT_DAMAGED;
}

FaultPlan planFaults(const LifetimeResult& counted, const std::vector<std::string>& names) {
    FaultPlan plan;
    plan.total_calls = names.size();
    for (std::size_t s = 0; s < counted.steps.size(); ++s) {
        const StepResult& step = counted.steps[s];
        const std::uint64_t change_end = step.kind == StepKind::ChangeParam ? changeCallsEnd(counted, s) : 0;
        // Per-pixel sampling repeats the same call thousands of times: fail its first and last.
        std::map<std::string, std::uint64_t> last_sample;
        for (std::uint64_t c = step.first_call; c < step.end_call && c <= names.size(); ++c)
            if (isSampling(names[c - 1])) last_sample[names[c - 1]] = c;
        std::set<std::string> sampled;
        bool render_started = false;  // past SMART_PRE_RENDER's layer checkout
        int suite_ordinal = 0;
        for (std::uint64_t c = step.first_call; c < step.end_call && c <= names.size(); ++c) {
            const std::string& name = names[c - 1];
            if (step.kind == StepKind::Render && name != "checkout_layer") render_started = true;
            const bool is_acquire = name == "AcquireSuite";
            if (is_acquire && render_started) ++suite_ordinal;
            if (isInert(name)) {
                ++plan.inert_calls;
                continue;
            }
            if (isSampling(name) && !sampled.insert(name).second && last_sample[name] != c) {
                ++plan.thinned_calls;
                continue;
            }
            FaultPoint point;
            point.call = c;
            point.name = name;
            point.step = s;
            point.error = errorFor(name);
            switch (step.kind) {
                case StepKind::Load: point.allowed = inLoad(name); break;
                case StepKind::UpdateUi: point.allowed = inInterfaceUpdate(name); break;
                case StepKind::ChangeParam:
                    if (c < change_end) {
                        point.allowed.none = true;  // every failure of a parameter change is swallowed
                    } else {
                        point.allowed = inInterfaceUpdate(name);
                    }
                    break;
                case StepKind::Render:
                    point.allowed = inRender(name, is_acquire && render_started ? suite_ordinal : 0);
                    break;
                case StepKind::Unload: point.allowed.none = true; break;  // set-down reports nothing
            }
            if (isRelease(name)) {
                point.allowed.none = point.allowed.injected = true;
                point.allowed.may_leak = true;
            }
            plan.points.push_back(point);
        }
    }
    return plan;
}

}  // namespace reliability
