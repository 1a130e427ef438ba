// The suites the host session itself serves: the PICA basic suite, "PF World Suite" 2, the
// three sampling suites, "PF Param Utils Suite" 3 and "AEGP Utility Suite" 11.

#include <cstdlib>
#include <cstring>

#include "AE_EffectCBSuites.h"
#include "AE_EffectSuites.h"
#include "AE_GeneralPlug.h"
#include "host/api/Sampling.h"
#include "host/session/Host.h"
#include "host/session/HostInternals.h"
#include "host/comp/ParamStore.h"

namespace host {
namespace core {

PF_Err newModuleWorld(PF_ProgPtr effect_ref, A_long width, A_long height, PF_PixelFormat format, bool clear,
                      PF_EffectWorld* world) {
    CallContext* context = CallContext::from(effect_ref);
    if (!context || !world) return PF_Err_BAD_CALLBACK_PARAM;
    if (!isSupportedFormat(format) || width < 0 || height < 0) return PF_Err_BAD_CALLBACK_PARAM;
    std::shared_ptr<OwnedWorld> made = context->host->new_world(width, height, format, clear, true);
    if (!made) return PF_Err_OUT_OF_MEMORY;
    *world = made->get();
    made->get() = PF_EffectWorld{};  // the module owns it until it disposes of it
    context->host->adopt_module_world(*world);
    countAcquire(Resource::World);
    return PF_Err_NONE;
}

PF_Err disposeModuleWorld(PF_ProgPtr effect_ref, PF_EffectWorld* world) {
    CallContext* context = CallContext::from(effect_ref);
    if (!context || !world || !isLiveWorld(*world)) return PF_Err_BAD_CALLBACK_PARAM;
    context->forget_samples(world->data);
    context->host->forget_module_world(*world);
    countRelease(Resource::World);
    return freeWorld(world);
}

namespace {

// --- SP Basic Suite ---
SPErr spAcquire(const char* name, int32 version, const void** suite) {
    SuiteRegistry* registry = SuiteRegistry::current();
    return registry ? registry->acquire(name, version, suite) : kSPSuiteNotFoundError;
}
SPErr spRelease(const char* name, int32 version) {
    SuiteRegistry* registry = SuiteRegistry::current();
    return registry ? registry->release(name, version) : kSPSuiteNotFoundError;
}
SPBoolean spIsEqual(const char* a, const char* b) { return a && b && std::strcmp(a, b) == 0; }
SPErr spAllocate(size_t size, void** block) {
    if (SPErr err = HOST_FAULT_POINT("AllocateBlock")) return err;
    if (!block) return A_Err_PARAMETER;
    *block = std::malloc(size ? size : 1);
    return *block ? kSPNoError : A_Err_ALLOC;
}
SPErr spFree(void* block) {
    std::free(block);
    return kSPNoError;
}
SPErr spReallocate(void* block, size_t size, void** out) {
    if (SPErr err = HOST_FAULT_POINT("ReallocateBlock")) return err;
    if (!out) return A_Err_PARAMETER;
    void* grown = std::realloc(block, size ? size : 1);
    if (!grown) return A_Err_ALLOC;
    *out = grown;
    return kSPNoError;
}
SPErr spUndefined() { return A_Err_GENERIC; }

// --- PF World Suite 2 ---
PF_Err worldNew(PF_ProgPtr effect_ref, A_long width, A_long height, PF_Boolean clear, PF_PixelFormat format,
                PF_EffectWorld* world) {
    if (PF_Err err = HOST_FAULT_POINT("PF_NewWorld")) return err;
    return newModuleWorld(effect_ref, width, height, format, clear != 0, world);
}

PF_Err worldDispose(PF_ProgPtr effect_ref, PF_EffectWorld* world) {
    if (PF_Err err = HOST_FAULT_POINT("PF_DisposeWorld")) return err;
    return disposeModuleWorld(effect_ref, world);
}

PF_Err worldPixelFormatOf(const PF_EffectWorld* world, PF_PixelFormat* format) {
    if (PF_Err err = HOST_FAULT_POINT("PF_GetPixelFormat")) return err;
    if (!world || !format) return PF_Err_BAD_CALLBACK_PARAM;
    *format = worldPixelFormat(*world);
    return PF_Err_NONE;
}

// --- Sampling suites ---
template <class Pixel, int Depth, int Kind>
PF_Err sampleSuite(PF_ProgPtr effect_ref, PF_Fixed x, PF_Fixed y, const PF_SampPB* params, Pixel* dst) {
    static const char* const names[3][3] = {
        {"nn_sample", "subpixel_sample", "area_sample"},
        {"nn_sample16", "subpixel_sample16", "area_sample16"},
        {"nn_sample_float", "subpixel_sample_float", "area_sample_float"}};
    const int row = Depth == 8 ? 0 : Depth == 16 ? 1 : 2;
    if (PF_Err err = HOST_FAULT_POINT(names[row][Kind])) return err;
    CallContext* context = CallContext::from(effect_ref);
    if (!context) return PF_Err_BAD_CALLBACK_PARAM;
    return sampleForCommand(*context, Kind, x, y, params, dst);
}

// --- PF Param Utils Suite 3 ---
PF_Err paramUpdateUi(PF_ProgPtr effect_ref, PF_ParamIndex index, const PF_ParamDef* def) {
    if (PF_Err err = HOST_FAULT_POINT("PF_UpdateParamUI")) return err;
    CallContext* context = CallContext::from(effect_ref);
    if (!context || !def) return PF_Err_BAD_CALLBACK_PARAM;
    if (context->cmd != PF_Cmd_UPDATE_PARAMS_UI && context->cmd != PF_Cmd_USER_CHANGED_PARAM)
        return PF_Err_INVALID_CALLBACK;
    return context->host->params().update_ui(index, *def);
}

PF_Err paramUnsupported() { return PF_Err_INVALID_CALLBACK; }

PF_Err paramGetCurrentState(PF_ProgPtr, PF_ParamIndex, const A_Time*, const A_Time*, PF_State*) {
    return paramUnsupported();
}
PF_Err paramStatesIdentical(PF_ProgPtr, const PF_State*, const PF_State*, A_Boolean*) { return paramUnsupported(); }
PF_Err paramIdenticalCheckout(PF_ProgPtr, PF_ParamIndex, A_long, A_long, A_u_long, A_long, A_long, A_u_long,
                              PF_Boolean*) {
    return paramUnsupported();
}
PF_Err paramFindKeyframeTime(PF_ProgPtr, PF_ParamIndex, A_long, A_u_long, PF_TimeDir, PF_Boolean*, PF_KeyIndex*,
                             A_long*, A_u_long*) {
    return paramUnsupported();
}
PF_Err paramKeyframeCount(PF_ProgPtr, PF_ParamIndex, PF_KeyIndex*) { return paramUnsupported(); }
PF_Err paramCheckoutKeyframe(PF_ProgPtr, PF_ParamIndex, PF_KeyIndex, A_long*, A_u_long*, PF_ParamDef*) {
    return paramUnsupported();
}
PF_Err paramCheckinKeyframe(PF_ProgPtr, PF_ParamDef*) { return paramUnsupported(); }
PF_Err paramKeyIndexToTime(PF_ProgPtr, PF_ParamIndex, PF_KeyIndex, A_long*, A_u_long*) { return paramUnsupported(); }

// --- AEGP Utility Suite 11 ---
std::atomic<AEGP_PluginID> g_next_plugin_id{1};

A_Err utilRegisterWithAegp(AEGP_GlobalRefcon, const A_char* name, AEGP_PluginID* plugin_id) {
    if (A_Err err = HOST_FAULT_POINT("AEGP_RegisterWithAEGP")) return err;
    if (!name || !plugin_id) return A_Err_PARAMETER;
    if (std::strlen(name) > AEGP_MAX_PLUGIN_NAME_SIZE - 1) return A_Err_PARAMETER;
    Host* host = activeHost();
    // Only during GLOBAL_SETUP; later calls may crash a real host.
    if (host && !host->registering()) {
        host->message("AEGP_RegisterWithAEGP called outside GLOBAL_SETUP");
        return A_Err_GENERIC;
    }
    *plugin_id = g_next_plugin_id.fetch_add(1);
    if (host) host->note_registration(name, *plugin_id);
    return A_Err_NONE;
}

A_Err utilReportInfo(AEGP_PluginID, const A_char* info) {
    if (A_Err err = HOST_FAULT_POINT("AEGP_ReportInfo")) return err;
    if (Host* host = activeHost()) host->message(std::string("info: ") + (info ? info : ""));
    return A_Err_NONE;
}

A_Err utilWriteToOsConsole(const A_char* text) {
    if (A_Err err = HOST_FAULT_POINT("AEGP_WriteToOSConsole")) return err;
    if (Host* host = activeHost()) host->message(std::string("console: ") + (text ? text : ""));
    return A_Err_NONE;
}

A_Err utilStartUndoGroup(const A_char*) {
    if (A_Err err = HOST_FAULT_POINT("AEGP_StartUndoGroup")) return err;
    return A_Err_NONE;
}
A_Err utilEndUndoGroup() {
    if (A_Err err = HOST_FAULT_POINT("AEGP_EndUndoGroup")) return err;
    return A_Err_NONE;
}

A_Err utilSuppressInteractiveUi(A_Boolean* suppressed) {
    if (A_Err err = HOST_FAULT_POINT("AEGP_GetSuppressInteractiveUI")) return err;
    if (!suppressed) return A_Err_PARAMETER;
    *suppressed = 1;  // headless
    return A_Err_NONE;
}

}  // namespace

SPBasicSuite* picaBasicSuite() {
    static SPBasicSuite suite{spAcquire, spRelease, spIsEqual, spAllocate, spFree, spReallocate, spUndefined};
    return &suite;
}

void registerCoreSuites(SuiteRegistry& registry) {
    static const PF_WorldSuite2 world{worldNew, worldDispose, worldPixelFormatOf};
    static const PF_Sampling8Suite1 sampling8{sampleSuite<PF_Pixel, 8, 0>, sampleSuite<PF_Pixel, 8, 1>,
                                              sampleSuite<PF_Pixel, 8, 2>};
    static const PF_Sampling16Suite1 sampling16{sampleSuite<PF_Pixel16, 16, 0>, sampleSuite<PF_Pixel16, 16, 1>,
                                                sampleSuite<PF_Pixel16, 16, 2>};
    static const PF_SamplingFloatSuite1 samplingFloat{sampleSuite<PF_PixelFloat, 32, 0>,
                                                      sampleSuite<PF_PixelFloat, 32, 1>,
                                                      sampleSuite<PF_PixelFloat, 32, 2>};
    static const PF_ParamUtilsSuite3 paramUtils{paramUpdateUi,         paramGetCurrentState, paramStatesIdentical,
                                                paramIdenticalCheckout, paramFindKeyframeTime, paramKeyframeCount,
                                                paramCheckoutKeyframe, paramCheckinKeyframe, paramKeyIndexToTime};
    static const AEGP_UtilitySuite5 utility = [] {
        AEGP_UtilitySuite5 u{};
        u.AEGP_ReportInfo = utilReportInfo;
        u.AEGP_StartUndoGroup = utilStartUndoGroup;
        u.AEGP_EndUndoGroup = utilEndUndoGroup;
        u.AEGP_RegisterWithAEGP = utilRegisterWithAegp;
        u.AEGP_GetSuppressInteractiveUI = utilSuppressInteractiveUi;
        u.AEGP_WriteToOSConsole = utilWriteToOsConsole;
        return u;
    }();
    registry.add(kPFWorldSuite, kPFWorldSuiteVersion2, &world);
    registry.add(kPFSampling8Suite, kPFSampling8SuiteVersion1, &sampling8);
    registry.add(kPFSampling16Suite, kPFSampling16SuiteVersion1, &sampling16);
    registry.add(kPFSamplingFloatSuite, kPFSamplingFloatSuiteVersion1, &samplingFloat);
    registry.add(kPFParamUtilsSuite, kPFParamUtilsSuiteVersion3, &paramUtils);
    registry.add(kAEGPUtilitySuite, kAEGPUtilitySuiteVersion5, &utility);
}

}  // namespace core
}  // namespace host
