// PF Interface, Effect and Memory suites: the effect instance's own view of the composition,
// its AEGP effect references, and the memory handles the other suites return.
#include "host/api/AegpSuitesInternal.h"

#include "host/session/Host.h"
#include "host/comp/Transform.h"

namespace host {
namespace aegp {

namespace {

// The effect layer of a live command, or null for a foreign reference.
const Layer* effect_layer(AegpSuites* s, PF_ProgPtr effect_ref) {
    CallContext* context = CallContext::from(effect_ref);
    if (context == nullptr || s->composition() == nullptr) return nullptr;
    return s->composition()->find_by_id(s->host().effect_layer_id());
}

#define NEED_EFFECT_LAYER(ref)                         \
    const Layer* layer = effect_layer(s_, ref);        \
    if (layer == nullptr) return A_Err_PARAMETER

// ---- PF Interface suite ------------------------------------------------------------------

A_Err GetEffectLayer(PF_ProgPtr effect_ref, AEGP_LayerH* layerPH) {
    AEGP_ENTER("AEGP_GetEffectLayer");
    NEED_EFFECT_LAYER(effect_ref);
    if (layerPH == nullptr) return A_Err_PARAMETER;
    *layerPH = s_->layer_handle(layer->id);
    return A_Err_NONE;
}

AEGP_EffectRefH new_effect(AegpSuites* s, PF_ProgPtr effect_ref, int layer_id) {
    auto record = std::make_unique<EffectRecord>();
    record->effect_ref = effect_ref;
    record->layer_id = layer_id;
    return keep_record<AEGP_EffectRefH>(s, &AegpSuites::Records::effects, std::move(record), Resource::AegpEffect);
}

A_Err GetNewEffectForEffect(AEGP_PluginID, PF_ProgPtr effect_ref, AEGP_EffectRefH* effectPH) {
    AEGP_ENTER("AEGP_GetNewEffectForEffect");
    NEED_EFFECT_LAYER(effect_ref);
    if (effectPH == nullptr) return A_Err_PARAMETER;
    *effectPH = new_effect(s_, effect_ref, layer->id);
    return A_Err_NONE;
}

// Effect time is the effect layer's time: composition time = layer offset + time, no stretch.
A_Err ConvertEffectToCompTime(PF_ProgPtr effect_ref, A_long what_time, A_u_long time_scale, A_Time* comp_time) {
    AEGP_ENTER("AEGP_ConvertEffectToCompTime");
    NEED_EFFECT_LAYER(effect_ref);
    if (comp_time == nullptr || time_scale == 0) return A_Err_PARAMETER;
    double seconds = static_cast<double>(what_time) / time_scale;
    *comp_time = from_seconds(layer->comp_time(seconds), time_scale);
    return A_Err_NONE;
}

A_Err GetEffectCamera(PF_ProgPtr effect_ref, const A_Time* comp_time, AEGP_LayerH* cameraPH) {
    AEGP_ENTER("AEGP_GetEffectCamera");
    NEED_EFFECT_LAYER(effect_ref);
    double seconds;
    if (cameraPH == nullptr || !to_seconds(comp_time, &seconds)) return A_Err_PARAMETER;
    const Layer* camera = s_->composition()->active_camera(seconds);
    *cameraPH = camera == nullptr ? nullptr : s_->layer_handle(camera->id);
    return A_Err_NONE;
}

A_Err GetEffectCameraMatrix(PF_ProgPtr effect_ref, const A_Time* comp_time, A_Matrix4* matrix,
                            A_FpLong* distance, A_short* plane_width, A_short* plane_height) {
    AEGP_ENTER("AEGP_GetEffectCameraMatrix");
    NEED_EFFECT_LAYER(effect_ref);
    double seconds;
    if (matrix == nullptr || !to_seconds(comp_time, &seconds)) return A_Err_PARAMETER;
    const Composition& comp = *s_->composition();
    const Layer* camera = comp.active_camera(seconds);
    Matrix4d m;
    double d;
    if (camera != nullptr) {
        m = layer_to_world(comp, *camera, seconds);
        d = camera->camera.zoom.at(seconds);
    } else {
        DefaultCamera dc = comp.default_camera();
        m = Matrix4d::translation(dc.position);
        d = dc.distance;
    }
    for (int r = 0; r < 4; ++r)
        for (int c = 0; c < 4; ++c) matrix->mat[r][c] = m.m[r][c];
    if (distance != nullptr) *distance = d;
    if (plane_width != nullptr) *plane_width = static_cast<A_short>(comp.width());
    if (plane_height != nullptr) *plane_height = static_cast<A_short>(comp.height());
    return A_Err_NONE;
}

const AEGP_PFInterfaceSuite1 kPFInterfaceSuite = {GetEffectLayer, GetNewEffectForEffect,
                                                 ConvertEffectToCompTime, GetEffectCamera,
                                                 GetEffectCameraMatrix};

// ---- Effect suite ------------------------------------------------------------------------

A_Err GetLayerNumEffects(AEGP_LayerH layerH, A_long* num) {
    AEGP_ENTER("AEGP_GetLayerNumEffects");
    NEED_LAYER(layerH);
    if (num == nullptr) return A_Err_PARAMETER;
    *num = layer->id == s_->host().effect_layer_id() ? 1 : 0;
    return A_Err_NONE;
}

A_Err GetLayerEffectByIndex(AEGP_PluginID, AEGP_LayerH layerH, AEGP_EffectIndex index, AEGP_EffectRefH* effectPH) {
    AEGP_ENTER("AEGP_GetLayerEffectByIndex");
    NEED_LAYER(layerH);
    if (effectPH == nullptr || index != 0 || layer->id != s_->host().effect_layer_id()) {
        return A_Err_PARAMETER;
    }
    *effectPH = new_effect(s_, nullptr, layer->id);
    return A_Err_NONE;
}

bool is_effect(AegpSuites* s, AEGP_EffectRefH effectH) {
    return find_record(s, &AegpSuites::Records::effects, effectH) != nullptr;
}

A_Err GetEffectFlags(AEGP_EffectRefH effectH, AEGP_EffectFlags* flags) {
    AEGP_ENTER("AEGP_GetEffectFlags");
    if (!is_effect(s_, effectH) || flags == nullptr) return A_Err_PARAMETER;
    *flags = AEGP_EffectFlags_ACTIVE;
    return A_Err_NONE;
}

A_Err DisposeEffect(AEGP_EffectRefH effectH) {
    AEGP_ENTER("AEGP_DisposeEffect");
    return drop_record(s_, &AegpSuites::Records::effects, effectH, Resource::AegpEffect);
}

AEGP_EffectSuite3 make_effect_suite() {
    AEGP_EffectSuite3 t{};
    t.AEGP_GetLayerNumEffects = GetLayerNumEffects;
    t.AEGP_GetLayerEffectByIndex = GetLayerEffectByIndex;
    AEGP_UNIMPLEMENTED(t, AEGP_GetInstalledKeyFromLayerEffect);
    AEGP_UNIMPLEMENTED(t, AEGP_GetEffectParamUnionByIndex);
    t.AEGP_GetEffectFlags = GetEffectFlags;
    AEGP_UNIMPLEMENTED(t, AEGP_SetEffectFlags);
    AEGP_UNIMPLEMENTED(t, AEGP_ReorderEffect);
    AEGP_UNIMPLEMENTED(t, AEGP_EffectCallGeneric);
    t.AEGP_DisposeEffect = DisposeEffect;
    AEGP_UNIMPLEMENTED(t, AEGP_ApplyEffect);
    AEGP_UNIMPLEMENTED(t, AEGP_DeleteLayerEffect);
    AEGP_UNIMPLEMENTED(t, AEGP_GetNumInstalledEffects);
    AEGP_UNIMPLEMENTED(t, AEGP_GetNextInstalledEffect);
    AEGP_UNIMPLEMENTED(t, AEGP_GetEffectName);
    AEGP_UNIMPLEMENTED(t, AEGP_GetEffectMatchName);
    AEGP_UNIMPLEMENTED(t, AEGP_GetEffectCategory);
    AEGP_UNIMPLEMENTED(t, AEGP_DuplicateEffect);
    return t;
}

// ---- Memory suite ------------------------------------------------------------------------

MemRecord* mem_of(AegpSuites* s, AEGP_MemHandle memH) {
    return find_record(s, &AegpSuites::Records::mems, memH);
}

A_Err NewMemHandle(AEGP_PluginID, const A_char*, AEGP_MemSize size, AEGP_MemFlag flags, AEGP_MemHandle* memPH) {
    AEGP_ENTER("AEGP_NewMemHandle");
    if (memPH == nullptr) return A_Err_PARAMETER;
    std::vector<char> bytes(size, (flags & AEGP_MemFlag_CLEAR) ? 0 : static_cast<char>(0xA5));
    *memPH = new_mem_handle(bytes.data(), bytes.size());
    return A_Err_NONE;
}

A_Err FreeMemHandle(AEGP_MemHandle memH) {
    AEGP_ENTER("AEGP_FreeMemHandle");
    return drop_record(s_, &AegpSuites::Records::mems, memH, Resource::AegpMemHandle);
}

A_Err LockMemHandle(AEGP_MemHandle memH, void** ptr) {
    AEGP_ENTER("AEGP_LockMemHandle");
    MemRecord* mem = mem_of(s_, memH);
    if (mem == nullptr || ptr == nullptr) return A_Err_PARAMETER;
    ++mem->locks;
    *ptr = mem->data.data();
    return A_Err_NONE;
}

A_Err UnlockMemHandle(AEGP_MemHandle memH) {
    AEGP_ENTER("AEGP_UnlockMemHandle");
    MemRecord* mem = mem_of(s_, memH);
    if (mem == nullptr || mem->locks == 0) return A_Err_PARAMETER;
    --mem->locks;
    return A_Err_NONE;
}

A_Err GetMemHandleSize(AEGP_MemHandle memH, AEGP_MemSize* size) {
    AEGP_ENTER("AEGP_GetMemHandleSize");
    MemRecord* mem = mem_of(s_, memH);
    if (mem == nullptr || size == nullptr) return A_Err_PARAMETER;
    *size = static_cast<AEGP_MemSize>(mem->data.size());
    return A_Err_NONE;
}

A_Err ResizeMemHandle(const A_char*, AEGP_MemSize new_size, AEGP_MemHandle memH) {
    AEGP_ENTER("AEGP_ResizeMemHandle");
    MemRecord* mem = mem_of(s_, memH);
    // A locked handle's address is in use and must not move.
    if (mem == nullptr || mem->locks != 0) return A_Err_PARAMETER;
    mem->data.resize(new_size);
    return A_Err_NONE;
}

A_Err SetMemReportingOn(A_Boolean) {
    AEGP_ENTER("AEGP_SetMemReportingOn");
    return A_Err_NONE;
}

A_Err GetMemStats(AEGP_PluginID, A_long* count, A_long* size) {
    AEGP_ENTER("AEGP_GetMemStats");
    if (count == nullptr || size == nullptr) return A_Err_PARAMETER;
    std::lock_guard<std::mutex> lock(s_->records().mutex);
    *count = static_cast<A_long>(s_->records().mems.size());
    std::size_t total = 0;
    for (const auto& m : s_->records().mems) total += m.second->data.size();
    *size = static_cast<A_long>(total);
    return A_Err_NONE;
}

const AEGP_MemorySuite1 kMemorySuite = {NewMemHandle, FreeMemHandle, LockMemHandle, UnlockMemHandle,
                                        GetMemHandleSize, ResizeMemHandle, SetMemReportingOn, GetMemStats};
const AEGP_EffectSuite3 kEffectSuite = make_effect_suite();

}  // namespace

void register_effect_suites(SuiteRegistry& registry) {
    registry.add(kAEGPPFInterfaceSuite, kAEGPPFInterfaceSuiteVersion1, &kPFInterfaceSuite);
    registry.add(kAEGPEffectSuite, kAEGPEffectSuiteVersion3, &kEffectSuite);
    registry.add(kAEGPMemorySuite, kAEGPMemorySuiteVersion1, &kMemorySuite);
}

}  // namespace aegp
}  // namespace host
