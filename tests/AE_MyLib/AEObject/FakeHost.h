#pragma once

// A minimal stand-in for the host, for unit tests of module code: in-data with working handle
// callbacks, a basic suite that logs every acquisition and release, and the few suite functions
// the tests program. Callbacks are plain C functions, so the active FakeHost is process-wide.

#include <map>
#include <string>
#include <vector>

#include "AE_Effect.h"
#include "AE_EffectCB.h"
#include "AE_EffectCBSuites.h"
#include "AE_EffectSuites.h"
#include "AE_GeneralPlug.h"
#include "SPBasic.h"

namespace fake {

// What the basic suite answers for a suite it does not have ('S!Fd').
constexpr SPErr kSuiteNotFound = 0x53214664;

class FakeHost {
public:
    FakeHost();
    ~FakeHost();
    FakeHost(const FakeHost&) = delete;
    FakeHost& operator=(const FakeHost&) = delete;

    static FakeHost& current();

    PF_InData* in() { return &in_data; }

    // --- Suites ---
    // "acquire|refuse|release <name> <version>", and "call <function>" for the effect and stream
    // handle functions below, in call order.
    std::vector<std::string> suite_log;
    std::map<std::string, SPErr> acquire_errors;  // by suite name
    int live_suites() const;
    const void* suite(const std::string& name_and_version) const;  // null when unknown

    // --- Handles ---
    struct HandleInfo {
        A_u_longlong size;
        int locks;
    };
    std::map<PF_Handle, HandleInfo> handles;
    int handles_made = 0;
    bool fail_new_handle = false;
    PF_Handle newHandle(A_u_longlong size);

    // --- Parameters ---
    std::vector<PF_ParamDef> added_params;
    int fail_add_param_at = -1;  // 0-based call number that fails
    PF_Err add_param_error = PF_Err_NONE;
    std::vector<std::string> checkout_log;  // "out 3", "in 3"
    PF_Err checkout_error = PF_Err_NONE;

    // --- AEGP ---
    A_Err register_error = A_Err_NONE;
    AEGP_PluginID plugin_id = 77;
    std::string registered_name;
    int layer_calls = 0;           // calls of the layer-suite functions below
    A_Err layer_flags_error = A_Err_NONE;
    AEGP_LayerFlags layer_flags = 0;
    AEGP_ObjectType object_type = AEGP_ObjectType_AV;
    std::u16string layer_name;
    std::u16string source_name;
    std::u16string name_set;        // last AEGP_SetLayerName
    int mem_handles_live = 0;
    int effects_live = 0;           // AEGP effect handles handed out and not yet disposed of
    int streams_live = 0;           // AEGP stream references likewise
    A_Err new_effect_error = A_Err_NONE;
    A_Err new_stream_error = A_Err_NONE;
    PF_ParamIndex stream_index = -1;  // parameter of the last stream handed out
    std::string expression_set;       // last AEGP_SetExpression
    int stream_values_live = 0;       // AEGP_GetNewStreamValue results not yet disposed of

    // Every table starts zeroed: a function a test does not program is null.
    PF_InData in_data{};
    PF_UtilCallbacks utils{};
    SPBasicSuite basic{};
    PF_Sampling8Suite1 sampling8{};
    PF_Sampling16Suite1 sampling16{};
    PF_SamplingFloatSuite1 sampling_float{};
    PF_WorldSuite2 world{};
    AEGP_UtilitySuite5 utility{};
    AEGP_LayerSuite6 layer{};
    AEGP_MemorySuite1 memory{};
    AEGP_StreamSuite4 stream{};
    AEGP_CameraSuite2 camera{};
    AEGP_LightSuite2 light{};
    AEGP_ItemSuite8 item{};
    AEGP_CompSuite5 comp{};
    AEGP_PFInterfaceSuite1 pf_interface{};
    AEGP_EffectSuite3 effect{};
    AEGP_DynamicStreamSuite4 dynamic_stream{};
    PF_ParamUtilsSuite3 param_utils{};

private:
    std::map<std::string, const void*> suites_;
};

}  // namespace fake
