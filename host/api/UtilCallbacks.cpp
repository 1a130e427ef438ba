// The callback blocks every PF_InData carries: in_data->utils (ANSI functions, handles,
// worlds, sampling, iterate_generic) and in_data->inter (params, abort, progress).

#include <algorithm>
#include <atomic>
#include <cmath>
#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <thread>
#include <vector>

#include "host/comp/Composition.h"
#include "host/checks/HandleHeap.h"
#include "host/api/Sampling.h"
#include "host/session/Host.h"
#include "host/session/HostInternals.h"
#include "host/comp/ParamStore.h"

namespace host {
namespace core {

namespace {

// --- ANSI block: plain C library functions with the host's signatures. ---
A_FpLong ansiAtan(A_FpLong x) { return std::atan(x); }
A_FpLong ansiAtan2(A_FpLong y, A_FpLong x) { return std::atan2(y, x); }
A_FpLong ansiCeil(A_FpLong x) { return std::ceil(x); }
A_FpLong ansiCos(A_FpLong x) { return std::cos(x); }
A_FpLong ansiExp(A_FpLong x) { return std::exp(x); }
A_FpLong ansiFabs(A_FpLong x) { return std::fabs(x); }
A_FpLong ansiFloor(A_FpLong x) { return std::floor(x); }
A_FpLong ansiFmod(A_FpLong x, A_FpLong y) { return std::fmod(x, y); }
A_FpLong ansiHypot(A_FpLong x, A_FpLong y) { return std::hypot(x, y); }
A_FpLong ansiLog(A_FpLong x) { return std::log(x); }
A_FpLong ansiLog10(A_FpLong x) { return std::log10(x); }
A_FpLong ansiPow(A_FpLong x, A_FpLong y) { return std::pow(x, y); }
A_FpLong ansiSin(A_FpLong x) { return std::sin(x); }
A_FpLong ansiSqrt(A_FpLong x) { return std::sqrt(x); }
A_FpLong ansiTan(A_FpLong x) { return std::tan(x); }
A_FpLong ansiAsin(A_FpLong x) { return std::asin(x); }
A_FpLong ansiAcos(A_FpLong x) { return std::acos(x); }

int ansiSprintf(A_char* buffer, const A_char* format, ...) {
    HOST_FAULT_POINT("sprintf");
    va_list args;
    va_start(args, format);
    const int n = std::vsprintf(buffer, format, args);
    va_end(args);
    return n;
}

A_char* ansiStrcpy(A_char* dst, const A_char* src) {
    HOST_FAULT_POINT("strcpy");
    return std::strcpy(dst, src);
}

// --- Handles: no effect_ref, so they use the active session's heap. ---
PF_Handle newHandle(A_u_longlong size) {
    if (HOST_FAULT_POINT("host_new_handle")) return nullptr;
    HandleHeap* heap = HandleHeap::current();
    return heap ? reinterpret_cast<PF_Handle>(heap->allocate(size)) : nullptr;
}

void* lockHandle(PF_Handle handle) {
    HOST_FAULT_POINT("host_lock_handle");
    HandleHeap* heap = HandleHeap::current();
    return heap ? heap->lock(reinterpret_cast<char**>(handle)) : nullptr;
}

void unlockHandle(PF_Handle handle) {
    HOST_FAULT_POINT("host_unlock_handle");
    if (HandleHeap* heap = HandleHeap::current()) heap->unlock(reinterpret_cast<char**>(handle));
}

void disposeHandle(PF_Handle handle) {
    HOST_FAULT_POINT("host_dispose_handle");
    if (HandleHeap* heap = HandleHeap::current()) heap->dispose(reinterpret_cast<char**>(handle));
}

A_u_longlong handleSize(PF_Handle handle) {
    HOST_FAULT_POINT("host_get_handle_size");
    HandleHeap* heap = HandleHeap::current();
    return heap ? heap->size(reinterpret_cast<char**>(handle)) : 0;
}

PF_Err resizeHandle(A_u_longlong new_size, PF_Handle* handle) {
    if (PF_Err err = HOST_FAULT_POINT("host_resize_handle")) return err;
    HandleHeap* heap = HandleHeap::current();
    if (!heap || !handle) return PF_Err_BAD_CALLBACK_PARAM;
    return heap->resize(reinterpret_cast<char**>(*handle), new_size) ? PF_Err_NONE : PF_Err_OUT_OF_MEMORY;
}

// --- Worlds (legacy 8/16-bit allocation). ---
PF_Err newWorldLegacy(PF_ProgPtr effect_ref, A_long width, A_long height, PF_NewWorldFlags flags,
                      PF_EffectWorld* world) {
    if (PF_Err err = HOST_FAULT_POINT("new_world")) return err;
    const PF_PixelFormat format = (flags & PF_NewWorldFlag_DEEP_PIXELS) ? PF_PixelFormat_ARGB64 : PF_PixelFormat_ARGB32;
    return newModuleWorld(effect_ref, width, height, format, (flags & PF_NewWorldFlag_CLEAR_PIXELS) != 0, world);
}

PF_Err disposeWorldLegacy(PF_ProgPtr effect_ref, PF_EffectWorld* world) {
    if (PF_Err err = HOST_FAULT_POINT("dispose_world")) return err;
    return disposeModuleWorld(effect_ref, world);
}

// --- Sampling through the legacy utils block (8 and 16 bits). ---
PF_Err sampleVia(const char* name, PF_ProgPtr effect_ref, int depth, int kind, PF_Fixed x, PF_Fixed y,
                 const PF_SampPB* params, void* dst) {
    if (PF_Err err = HOST_FAULT_POINT(name)) return err;
    CallContext* context = CallContext::from(effect_ref);
    if (!context) return PF_Err_BAD_CALLBACK_PARAM;
    if (depth == 16) return sampleForCommand(*context, kind, x, y, params, static_cast<PF_Pixel16*>(dst));
    return sampleForCommand(*context, kind, x, y, params, static_cast<PF_Pixel*>(dst));
}

PF_Err utilSubpixel8(PF_ProgPtr r, PF_Fixed x, PF_Fixed y, const PF_SampPB* p, PF_Pixel* d) {
    return sampleVia("subpixel_sample", r, 8, kSubpixelSample, x, y, p, d);
}
PF_Err utilArea8(PF_ProgPtr r, PF_Fixed x, PF_Fixed y, const PF_SampPB* p, PF_Pixel* d) {
    return sampleVia("area_sample", r, 8, kAreaSample, x, y, p, d);
}
PF_Err utilSubpixel16(PF_ProgPtr r, PF_Fixed x, PF_Fixed y, const PF_SampPB* p, PF_Pixel16* d) {
    return sampleVia("subpixel_sample16", r, 16, kSubpixelSample, x, y, p, d);
}
PF_Err utilArea16(PF_ProgPtr r, PF_Fixed x, PF_Fixed y, const PF_SampPB* p, PF_Pixel16* d) {
    return sampleVia("area_sample16", r, 16, kAreaSample, x, y, p, d);
}
PF_Err utilBeginEndSampling(PF_ProgPtr, PF_Quality, PF_ModeFlags, PF_SampPB*) { return PF_Err_NONE; }

PF_Err utilIterateGeneric(A_long iterations, void* refcon,
                          PF_Err (*fn)(void* refcon, A_long thread_index, A_long i, A_long iterations)) {
    if (PF_Err err = HOST_FAULT_POINT("iterate_generic")) return err;
    // No effect_ref here: the session is the one of the command running on this thread.
    CallContext* command = CallContext::current();
    Host* host = command ? command->host : activeHost();
    if (!host || !fn) return PF_Err_BAD_CALLBACK_PARAM;
    return host->iterate(iterations, refcon, fn);
}

// --- Interaction callbacks. ---
PF_Err interAddParam(PF_ProgPtr effect_ref, PF_ParamIndex index, PF_ParamDefPtr def) {
    if (PF_Err err = HOST_FAULT_POINT("add_param")) return err;
    CallContext* context = CallContext::from(effect_ref);
    if (!context || !def) return PF_Err_BAD_CALLBACK_PARAM;
    if (context->cmd != PF_Cmd_PARAMS_SETUP) {
        context->host->message("add_param outside PARAMS_SETUP refused");
        return PF_Err_INVALID_CALLBACK;
    }
    std::vector<std::string> warnings;
    const PF_Err err = context->host->params().add(index, *def, warnings);
    for (const std::string& w : warnings) context->host->message("warning: " + w);
    if (!err) ++context->adds;
    return err;
}

PF_Err interCheckoutParam(PF_ProgPtr effect_ref, PF_ParamIndex index, A_long what_time, A_long time_step,
                          A_u_long time_scale, PF_ParamDef* param);
PF_Err interCheckinParam(PF_ProgPtr effect_ref, PF_ParamDef* param);

PF_Err interAbort(PF_ProgPtr effect_ref) {
    if (PF_Err err = HOST_FAULT_POINT("abort")) return err;
    CallContext* context = CallContext::from(effect_ref);
    if (!context) return PF_Err_BAD_CALLBACK_PARAM;
    return context->host->faults().cancel_requested() ? PF_Interrupt_CANCEL : PF_Err_NONE;
}

PF_Err interProgress(PF_ProgPtr effect_ref, A_long, A_long) {
    if (PF_Err err = HOST_FAULT_POINT("progress")) return err;
    CallContext* context = CallContext::from(effect_ref);
    if (!context) return PF_Err_BAD_CALLBACK_PARAM;
    return context->host->faults().cancel_requested() ? PF_Interrupt_CANCEL : PF_Err_NONE;
}

PF_Err interRegisterUi(PF_ProgPtr, PF_CustomUIInfo*) { return PF_Err_INVALID_CALLBACK; }

PF_UtilCallbacks makeUtils() {
    PF_UtilCallbacks u{};
    u.begin_sampling = utilBeginEndSampling;
    u.subpixel_sample = utilSubpixel8;
    u.area_sample = utilArea8;
    u.end_sampling = utilBeginEndSampling;
    u.new_world = newWorldLegacy;
    u.dispose_world = disposeWorldLegacy;
    u.host_new_handle = newHandle;
    u.host_lock_handle = lockHandle;
    u.host_unlock_handle = unlockHandle;
    u.host_dispose_handle = disposeHandle;
    u.host_get_handle_size = handleSize;
    u.host_resize_handle = resizeHandle;
    u.iterate_generic = utilIterateGeneric;
    u.subpixel_sample16 = utilSubpixel16;
    u.area_sample16 = utilArea16;
    u.ansi.atan = ansiAtan;
    u.ansi.atan2 = ansiAtan2;
    u.ansi.ceil = ansiCeil;
    u.ansi.cos = ansiCos;
    u.ansi.exp = ansiExp;
    u.ansi.fabs = ansiFabs;
    u.ansi.floor = ansiFloor;
    u.ansi.fmod = ansiFmod;
    u.ansi.hypot = ansiHypot;
    u.ansi.log = ansiLog;
    u.ansi.log10 = ansiLog10;
    u.ansi.pow = ansiPow;
    u.ansi.sin = ansiSin;
    u.ansi.sqrt = ansiSqrt;
    u.ansi.tan = ansiTan;
    u.ansi.sprintf = ansiSprintf;
    u.ansi.strcpy = ansiStrcpy;
    u.ansi.asin = ansiAsin;
    u.ansi.acos = ansiAcos;
    return u;
}

}  // namespace

// --- PF_CHECKOUT_PARAM / PF_CHECKIN_PARAM. ---
namespace {

// The value of layer parameter `index` at `comp_seconds`: the chosen layer rendered at the
// command's depth and downsample, or no pixels (data NULL) for <none> and for a layer whose time
// span does not include that time, as After Effects gives. The first pointer word carries the
// chosen layer's AEGP_LayerH, as in the interface commands' parameter array, so an effect can
// tell a trimmed-out layer from none without AEGP stream calls on a render thread.
PF_Err checkoutLayerValue(CallContext& context, PF_ParamIndex index, double comp_seconds, const DeliveryFrame& frame,
                          CallContext::ParamCheckout& record, PF_LayerDef& value) {
    Host& host = *context.host;
    const int layer_id = index == 0 ? host.effect_layer_id() : host.params().layer_id(index, comp_seconds, frame);
    if (layer_id == 0) return PF_Err_NONE;
    const Layer* layer = host.composition() ? host.composition()->find_by_id(layer_id) : nullptr;
    const bool has_frame = index == 0 || (layer && layer->spans(comp_seconds));
    if (has_frame) {
        // Since 13.5 the panel only gets a black frame of the right size.
        const bool black = context.cmd == PF_Cmd_UPDATE_PARAMS_UI;
        record.world = host.layer_world(layer_id, comp_seconds, context.bitdepth, frame.downsample_x,
                                        frame.downsample_y, nullptr, black);
        if (!record.world) return PF_Err_OUT_OF_MEMORY;
        const A_long dephault = value.dephault;
        value = record.world->get();
        value.dephault = dephault;
    }
    if (index > 0 && host.options().layer_handle_in_params) value.reserved0 = host.layer_handle(layer_id);
    return PF_Err_NONE;
}

PF_Err interCheckoutParam(PF_ProgPtr effect_ref, PF_ParamIndex index, A_long what_time, A_long,
                          A_u_long time_scale, PF_ParamDef* param) {
    if (PF_Err err = HOST_FAULT_POINT("checkout_param")) return err;
    CallContext* context = CallContext::from(effect_ref);
    if (!context || !param || time_scale == 0) return PF_Err_BAD_CALLBACK_PARAM;
    Host& host = *context->host;
    if (index < 0 || index >= host.num_params()) return PF_Err_INVALID_INDEX;

    const double layer_seconds = double(what_time) / double(time_scale);
    const double comp_seconds = host.effect_layer() ? host.effect_layer()->comp_time(layer_seconds) : layer_seconds;
    DeliveryFrame frame;
    frame.layer_width = context->in_data.width;
    frame.layer_height = context->in_data.height;
    frame.downsample_x = context->in_data.downsample_x;
    frame.downsample_y = context->in_data.downsample_y;
    frame.effect_layer_id = host.effect_layer_id();
    *param = host.params().deliver(index, comp_seconds, frame);

    CallContext::ParamCheckout record;
    record.index = index;
    if (param->param_type == PF_Param_LAYER) {
        if (PF_Err err = checkoutLayerValue(*context, index, comp_seconds, frame, record, param->u.ld)) return err;
    }
    countAcquire(Resource::ParamCheckout, "param " + std::to_string(index));
    std::lock_guard<std::mutex> lock(context->checkout_mutex);
    context->param_checkouts.emplace(param, record);
    return PF_Err_NONE;
}

PF_Err interCheckinParam(PF_ProgPtr effect_ref, PF_ParamDef* param) {
    if (PF_Err err = HOST_FAULT_POINT("checkin_param")) return err;
    CallContext* context = CallContext::from(effect_ref);
    if (!context || !param) return PF_Err_BAD_CALLBACK_PARAM;
    CallContext::ParamCheckout record;
    {
        std::lock_guard<std::mutex> lock(context->checkout_mutex);
        auto it = context->param_checkouts.find(param);
        if (it == context->param_checkouts.end() && param->param_type == PF_Param_LAYER && param->u.ld.data) {
            // A copy of the checked-out record: match it by its pixels.
            it = std::find_if(context->param_checkouts.begin(), context->param_checkouts.end(), [&](const auto& e) {
                return e.second.world && e.second.world->get().data == param->u.ld.data;
            });
        }
        if (it == context->param_checkouts.end()) {
            context->host->counters().note_problem("checkin_param of a param that was not checked out");
            return PF_Err_BAD_CALLBACK_PARAM;
        }
        record = it->second;
        context->param_checkouts.erase(it);
    }
    if (record.world) context->forget_samples(record.world->get().data);
    countRelease(Resource::ParamCheckout, "param " + std::to_string(record.index));
    return PF_Err_NONE;
}

}  // namespace

PF_UtilCallbacks* utilCallbacks() {
    static PF_UtilCallbacks table = makeUtils();
    return &table;
}

PF_InteractCallbacks interactCallbacks() {
    PF_InteractCallbacks inter{};
    inter.checkout_param = interCheckoutParam;
    inter.checkin_param = interCheckinParam;
    inter.add_param = interAddParam;
    inter.abort = interAbort;
    inter.progress = interProgress;
    inter.register_ui = interRegisterUi;
    return inter;
}

}  // namespace core
}  // namespace host
