#include "host/session/Host.h"

#include <atomic>
#include <cmath>
#include <cstring>
#include <iostream>
#include <map>
#include <sstream>

#include "AE_EffectCBSuites.h"
#include "host/api/AegpSuites.h"
#include "host/comp/Composition.h"
#include "host/checks/HandleHeap.h"
#include "host/session/HostInternals.h"
#include "host/api/LayerPixels.h"
#include "host/session/ModuleLibrary.h"
#include "host/comp/ParamStore.h"
#include "host/session/Pipl.h"

namespace host {

namespace core {
namespace {
std::atomic<Host*> g_active{nullptr};
}
Host* activeHost() { return g_active.load(); }
void setActiveHost(Host* host) { g_active.store(host); }
void clearActiveHost(Host* host) { g_active.compare_exchange_strong(host, nullptr); }
}  // namespace core

namespace {

constexpr A_long kAfterEffectsAppId = 0x46585443;  // 'FXTC'
// Row padding beyond the 64-byte rounding, different per role so mixed-up rowbytes show.
constexpr A_long kInputExtraRowBytes = kLayerExtraRowBytes;
constexpr A_long kOutputExtraRowBytes = 16;
constexpr A_long kEffectWorldExtraRowBytes = 32;

std::string hex(std::uint32_t v) {
    char text[16];
    std::snprintf(text, sizeof text, "0x%08X", v);
    return text;
}

double scaleOf(const PF_RationalScale& s) { return s.den ? double(s.num) / double(s.den) : 1.0; }

A_long scaledExtent(A_long full, const PF_RationalScale& s) {
    return static_cast<A_long>(std::ceil(double(full) * scaleOf(s) - 1e-9));
}

}  // namespace

Host::Host(HostOptions options)
    : options_(options), handles_(new HandleHeap), params_(new ParamStore),
      layer_pixels_(new LayerPixels) {
    handles_->set_poison(options_.poison);
    handles_->set_counters(&counters_);
    handles_->make_current();
    faults_.make_current();
    counters_.make_current();
    registry_.make_current();
    core::setActiveHost(this);
    core::registerCoreSuites(registry_);
    aegp_.reset(new AegpSuites(*this));
}

Host::~Host() {
    if (loaded()) {
        try {
            unload();
        } catch (const std::exception& e) {
            std::cerr << "host: " << e.what() << "\n";
        }
    }
    free_module_worlds();
    aegp_.reset();
    core::clearActiveHost(this);
    registry_.release_current();
    counters_.release_current();
    faults_.release_current();
    handles_->release_current();
}

const SPBasicSuite* Host::pica_basic() const { return core::picaBasicSuite(); }

void Host::set_composition(std::shared_ptr<Composition> comp, int effect_layer_id) {
    if (comp && !comp->find_by_id(effect_layer_id))
        throw HostError("the composition has no layer with id " + std::to_string(effect_layer_id));
    comp_ = std::move(comp);
    effect_layer_id_ = effect_layer_id;
}

const Layer* Host::effect_layer() const { return comp_ ? comp_->find_by_id(effect_layer_id_) : nullptr; }

double Host::layer_seconds(double comp_seconds) const {
    const Layer* layer = effect_layer();
    return layer ? layer->layer_time(comp_seconds) : comp_seconds;
}

void Host::message(const std::string& text) {
    std::lock_guard<std::mutex> lock(state_mutex_);
    messages_.push_back(text);
    if (options_.echo_messages) std::cerr << text << "\n";
}

std::vector<std::string> Host::messages() const {
    std::lock_guard<std::mutex> lock(state_mutex_);
    return messages_;
}

std::vector<std::string> Host::command_log() const {
    std::lock_guard<std::mutex> lock(state_mutex_);
    return command_log_;
}

RenderCallLog Host::last_render_calls() const {
    std::lock_guard<std::mutex> lock(state_mutex_);
    return last_render_calls_;
}

std::string Host::return_msg() const {
    std::lock_guard<std::mutex> lock(state_mutex_);
    return return_msg_;
}

void Host::log_command(PF_Cmd cmd) {
    std::lock_guard<std::mutex> lock(state_mutex_);
    command_log_.push_back(commandName(cmd));
}

// --- Contexts ---

void Host::prepare_context(CallContext& context, PF_Cmd cmd, double layer_secs, short bitdepth, int downsample) {
    context.host = this;
    context.cmd = cmd;
    context.layer_seconds = layer_secs;
    context.bitdepth = bitdepth;
    context.render = cmd == PF_Cmd_SMART_PRE_RENDER || cmd == PF_Cmd_SMART_RENDER;

    PF_InData& in = context.in_data;
    in = PF_InData{};
    in.inter = core::interactCallbacks();
    in.utils = core::utilCallbacks();
    in.effect_ref = context.effect_ref();
    in.quality = options_.quality;
    in.version.major = options_.api_major;
    in.version.minor = options_.api_minor;
    in.appl_id = kAfterEffectsAppId;
    in.num_params = cmd == PF_Cmd_PARAMS_SETUP ? 1 : params_->size();
    const unsigned scale = comp_ ? comp_->time_scale() : 30;
    const double rate = comp_ ? comp_->frame_rate() : 30.0;
    in.time_scale = scale;
    in.time_step = static_cast<A_long>(std::lround(scale / rate));
    in.local_time_step = in.time_step;
    in.current_time = static_cast<A_long>(std::lround(layer_secs * scale));
    const Layer* layer = effect_layer();
    in.total_time = layer ? static_cast<A_long>(std::lround(layer->duration * scale)) : 0;
    in.field = PF_Field_FRAME;
    const PF_LRect bounds = layer ? layer_bounds(layer->id, {1, 1}, {1, 1}) : PF_LRect{0, 0, 0, 0};
    in.width = bounds.right;
    in.height = bounds.bottom;
    in.downsample_x = PF_RationalScale{1, static_cast<A_u_long>(downsample)};
    in.downsample_y = in.downsample_x;
    in.pixel_aspect_ratio = PF_RationalScale{layer ? layer->source.par_num : 1,
                                             static_cast<A_u_long>(layer ? layer->source.par_den : 1)};
    in.global_data = global_data_;
    in.sequence_data = sequence_data_;
    in.pica_basicP = const_cast<SPBasicSuite*>(pica_basic());
}

void Host::finish_context(CallContext& context) {
    std::lock_guard<std::mutex> lock(context.checkout_mutex);
    for (const auto& entry : context.param_checkouts)
        message("param " + std::to_string(entry.second.index) + " checked out and never checked in");
    context.param_checkouts.clear();  // frees the pixels; the counters keep the leak
    context.forget_samples();
    for (auto& entry : context.layer_checkouts)
        if (entry.second.fetched && entry.second.world) countRelease(Resource::LayerCheckout, "checkout id " + std::to_string(entry.first));
    context.layer_checkouts.clear();
}

std::unique_ptr<RenderScope> Host::render_scope(short bitdepth, double layer_secs) {
    return std::unique_ptr<RenderScope>(new RenderScope(*this, bitdepth, layer_secs));
}

RenderScope::RenderScope(Host& host, short bitdepth, double layer_seconds)
    : host_(host), context_(new CallContext), running_(context_.get()) {
    host_.prepare_context(*context_, PF_Cmd_SMART_RENDER, layer_seconds, bitdepth, 1);
}

RenderScope::~RenderScope() { host_.finish_context(*context_); }

// --- Worlds and layers ---

std::shared_ptr<OwnedWorld> Host::new_world(A_long width, A_long height, PF_PixelFormat format, bool clear,
                                            bool writeable) {
    WorldOptions opts;
    opts.initial = clear || !options_.poison ? WorldOptions::Initial::Clear : WorldOptions::Initial::Poison;
    opts.writeable = writeable;
    opts.extra_row_bytes = writeable ? kEffectWorldExtraRowBytes : kInputExtraRowBytes;
    auto world = std::make_shared<OwnedWorld>();
    if (world->allocate(width, height, format, opts) != PF_Err_NONE) return nullptr;
    return world;
}

void Host::note_registration(const std::string& name, AEGP_PluginID id) {
    std::lock_guard<std::mutex> lock(state_mutex_);
    registered_name_ = name;
    registered_plugin_id_ = id;
}

std::string Host::registered_name() const {
    std::lock_guard<std::mutex> lock(state_mutex_);
    return registered_name_;
}

AEGP_PluginID Host::registered_plugin_id() const {
    std::lock_guard<std::mutex> lock(state_mutex_);
    return registered_plugin_id_;
}

void Host::adopt_module_world(const PF_EffectWorld& world) {
    std::lock_guard<std::mutex> lock(module_worlds_mutex_);
    module_worlds_.emplace(worldSerial(world), world);
}

void Host::forget_module_world(const PF_EffectWorld& world) {
    std::lock_guard<std::mutex> lock(module_worlds_mutex_);
    module_worlds_.erase(worldSerial(world));
}

void Host::free_module_worlds() {
    std::lock_guard<std::mutex> lock(module_worlds_mutex_);
    for (auto& entry : module_worlds_) freeWorld(&entry.second);
    module_worlds_.clear();
}

PF_LRect Host::layer_bounds(int layer_id, const PF_RationalScale& dsx, const PF_RationalScale& dsy) const {
    const Layer* layer = comp_ ? comp_->find_by_id(layer_id) : nullptr;
    if (!layer) return PF_LRect{0, 0, 0, 0};
    A_long w = layer->source.width, h = layer->source.height;
    if (!layer->has_source() || w <= 0 || h <= 0) {
        w = comp_->width();
        h = comp_->height();
    }
    return PF_LRect{0, 0, scaledExtent(w, dsx), scaledExtent(h, dsy)};
}

// Sources are still pictures, so the time does not change the pixels.
std::shared_ptr<OwnedWorld> Host::layer_world(int layer_id, double, short bitdepth, const PF_RationalScale& dsx,
                                              const PF_RationalScale& dsy, const PF_LRect* rect, bool black) {
    const Layer* layer = comp_ ? comp_->find_by_id(layer_id) : nullptr;
    if (!layer) return nullptr;
    const PF_LRect bounds = layer_bounds(layer_id, dsx, dsy);
    const PF_LRect area = rect ? *rect : bounds;
    const PF_PixelFormat format = bitdepth == 32 ? PF_PixelFormat_ARGB128
                                  : bitdepth == 16 ? PF_PixelFormat_ARGB64 : PF_PixelFormat_ARGB32;
    // The module checks its own layer out several times a frame, and a float layer is large.
    const bool whole_layer = area.left == 0 && area.top == 0 && area.right == bounds.right &&
                             area.bottom == bounds.bottom;
    std::shared_ptr<OwnedWorld> world;
    if (whole_layer && !black) world = layer_view(*layer, area, format, dsx, dsy);
    if (!world) world = layer_copy(*layer, area, format, dsx, dsy, black);
    if (world)
        world->get().pix_aspect_ratio =
            PF_RationalScale{layer->source.par_num, static_cast<A_u_long>(layer->source.par_den)};
    return world;
}

std::shared_ptr<OwnedWorld> Host::layer_view(const Layer& layer, const PF_LRect& area, PF_PixelFormat format,
                                             const PF_RationalScale& dsx, const PF_RationalScale& dsy) {
    std::shared_ptr<const OwnedWorld> pixels =
        layer_pixels_->whole(layer, comp_->width(), comp_->height(), format, scaleOf(dsx), scaleOf(dsy));
    if (!pixels || pixels->get().width != area.right || pixels->get().height != area.bottom) return nullptr;
    auto world = std::make_shared<OwnedWorld>();
    if (world->view(std::move(pixels)) != PF_Err_NONE) return nullptr;
    world->get().origin_x = 0;
    world->get().origin_y = 0;
    markLayerPixels(world->get());
    return world;
}

std::shared_ptr<OwnedWorld> Host::layer_copy(const Layer& layer, const PF_LRect& area, PF_PixelFormat format,
                                             const PF_RationalScale& dsx, const PF_RationalScale& dsy, bool black) {
    WorldOptions opts;
    // fill() writes every pixel: clearing first would write the layer twice.
    opts.initial = black ? WorldOptions::Initial::Clear : WorldOptions::Initial::Unset;
    opts.extra_row_bytes = kInputExtraRowBytes;
    auto world = std::make_shared<OwnedWorld>();
    if (world->allocate(area.right - area.left, area.bottom - area.top, format, opts) != PF_Err_NONE) return nullptr;
    PF_EffectWorld& w = world->get();
    w.origin_x = area.left;  // a smart checkout's origin is in layer space; the whole layer's is 0
    w.origin_y = area.top;
    if (black || !w.data) return world;
    try {
        layer_pixels_->fill(layer, comp_->width(), comp_->height(), format, scaleOf(dsx), scaleOf(dsy), w);
    } catch (const std::exception& e) {
        message("layer \"" + layer.display_name() + "\": " + e.what());  // the layer stays transparent
    }
    return world;
}

A_Err Host::render_thread_rule(const CallContext& command, const char* name) const {
    if (!options_.strict_render_thread || !command.on_render_thread()) return A_Err_NONE;
    return forbiddenOnRenderThread(name) ? A_Err_WRONG_THREAD : A_Err_NONE;
}

// --- Sampling and iteration ---

namespace {

// Hands the command of the calling thread on to the pool's workers, so suite calls made from
// the callback see the command they belong to.
struct CommandForwarding {
    void* refcon;
    IterateFunc fn;
    CallContext* command;

    static PF_Err run(void* self, A_long thread_index, A_long i, A_long iterations) {
        auto* f = static_cast<CommandForwarding*>(self);
        if (CallContext::current() == f->command) return f->fn(f->refcon, thread_index, i, iterations);
        CurrentCommand running(f->command);
        return f->fn(f->refcon, thread_index, i, iterations);
    }
};

}  // namespace

PF_Err Host::iterate(A_long iterations, void* refcon, IterateFunc fn) {
    if (!fn) return PF_Err_BAD_CALLBACK_PARAM;
    CallContext* command = CallContext::current();
    // The effect may have written to any of its worlds since it last sampled them.
    if (command) command->forget_samples();
    IterateOptions options;
    options.cancel = faults_.cancel_flag();
    CommandForwarding forwarding{refcon, fn, command};
    if (options_.threads <= 0) return iterate_generic(iterations, &forwarding, CommandForwarding::run, options);
    std::call_once(pool_started_, [this] { pool_.reset(new IterationPool(unsigned(options_.threads))); });
    return pool_->iterate(iterations, &forwarding, CommandForwarding::run, options);
}

// --- Parameters ---

int Host::num_params() const { return params_->size(); }

int Host::declared_num_params() const {
    std::lock_guard<std::mutex> lock(state_mutex_);
    return declared_num_params_;
}
const PF_ParamDef& Host::param_def(PF_ParamIndex index) const {
    if (index < 0 || index >= params_->size()) throw HostError("no param with index " + std::to_string(index));
    return params_->def(index);
}

PF_ParamIndex Host::param_index(const std::string& name) const {
    const PF_ParamIndex index = params_->find(name);
    if (index < 0) throw HostError("the effect has no param named \"" + name + "\"");
    return index;
}

void Host::set_param(PF_ParamIndex index, const ParamValue& value) {
    if (value.v[0] != 0 && index > 0 && index < params_->size() && params_->def(index).param_type == PF_Param_LAYER &&
        (!comp_ || !comp_->find_by_id(static_cast<int>(value.v[0]))))
        throw HostError("param " + std::to_string(index) + ": no layer with id " + std::to_string(int(value.v[0])));
    params_->set(index, value);
}

void Host::set_param(const std::string& name, const ParamValue& value) { set_param(param_index(name), value); }

void Host::add_param_key(PF_ParamIndex index, double comp_seconds, const ParamValue& value) {
    params_->add_key(index, comp_seconds, value);
}

ParamValue Host::param_value(PF_ParamIndex index, double comp_seconds) const {
    DeliveryFrame frame;
    const PF_LRect bounds = layer_bounds(effect_layer_id_, {1, 1}, {1, 1});
    frame.layer_width = bounds.right;
    frame.layer_height = bounds.bottom;
    frame.effect_layer_id = effect_layer_id_;
    return params_->value(index, comp_seconds, frame);
}

// --- Calling the module ---

PF_Err Host::call(CallContext& context, PF_ParamDef** params, PF_LayerDef* output, void* extra) {
    if (!entry_) throw HostError("no module loaded");
    PF_OutData out{};
    out.global_data = global_data_;
    out.sequence_data = sequence_data_;
    out.return_msg[0] = '\0';
    // The host locks its handles around every call; the effect's own locks nest on top.
    PF_Handle locked = global_data_;
    if (locked) handles_->lock(reinterpret_cast<char**>(locked));
    log_command(context.cmd);
    PF_Err err = PF_Err_NONE;
    CurrentCommand running(&context);
    try {
        err = entry_(context.cmd, &context.in_data, &out, params, output, extra);
    } catch (...) {
        if (locked && handles_->owns(reinterpret_cast<char**>(locked))) handles_->unlock(reinterpret_cast<char**>(locked));
        throw HostError(effect_name_ + ": an exception escaped the entry point during " + commandName(context.cmd));
    }
    if (locked && handles_->owns(reinterpret_cast<char**>(locked))) handles_->unlock(reinterpret_cast<char**>(locked));

    out.return_msg[PF_MAX_EFFECT_MSG_LEN] = '\0';
    const std::string msg = out.return_msg;
    switch (context.cmd) {
        case PF_Cmd_GLOBAL_SETUP:
            my_version_ = out.my_version;
            out_flags_ = out.out_flags;
            out_flags2_ = out.out_flags2;
            global_data_ = out.global_data;
            break;
        case PF_Cmd_PARAMS_SETUP: {
            context.adds = out.num_params;  // reused: declared count
            std::lock_guard<std::mutex> lock(state_mutex_);
            declared_num_params_ = out.num_params;
            break;
        }
        case PF_Cmd_SEQUENCE_SETUP: sequence_data_ = out.sequence_data; break;
        case PF_Cmd_GLOBAL_SETDOWN: global_data_ = nullptr; break;
        case PF_Cmd_SEQUENCE_SETDOWN: sequence_data_ = nullptr; break;
        default: break;
    }
    {
        std::lock_guard<std::mutex> lock(state_mutex_);
        return_msg_ = msg;
        last_error_ = err;
    }
    if (err != PF_Err_NONE && err != PF_Err_OUT_OF_MEMORY && err != PF_Interrupt_CANCEL) {
        message(effect_name_ + ": error " + std::to_string(err) + " (" + errorName(err) + ") in " +
                commandName(context.cmd) + (msg.empty() ? std::string() : ": " + msg));
    } else if (!msg.empty()) {
        const bool as_error = (out_flags_ & PF_OutFlag_DISPLAY_ERROR_MESSAGE) != 0 && context.cmd != PF_Cmd_ABOUT;
        message(effect_name_ + (as_error ? ": error: " : ": ") + msg);
    }
    return err;
}

namespace {

// The module's PiPL, checked to describe an effect; null when the module has none.
std::unique_ptr<PiplInfo> modulePipl(const ModuleLibrary& module, const std::string& file) {
    const auto bytes = module.piplBytes();
    if (!bytes) return nullptr;
    PiplInfo info;
    try {
        info = parsePipl(*bytes);
    } catch (const std::exception& e) {
        throw HostError(file + ": unreadable PiPL: " + e.what());
    }
    if (info.kind != fourCC("eFKT"))
        throw HostError(file + ": the PiPL does not describe an effect (kind is not 'eFKT')");
    return std::make_unique<PiplInfo>(info);
}

}  // namespace

void Host::load(const std::string& module_path) {
    if (loaded()) throw HostError("a module is already loaded");
    const std::size_t slash = module_path.find_last_of('/');
    const std::string file = slash == std::string::npos ? module_path : module_path.substr(slash + 1);

    pipl_.reset();
    module_ = std::make_unique<ModuleLibrary>(module_path);
    try {
        pipl_ = modulePipl(*module_, file);
    } catch (...) {
        module_.reset();
        throw;
    }
    std::string entry_name;
    if (pipl_) {
        entry_name = pipl_->entry_point.empty() ? "EffectMain" : pipl_->entry_point;
        effect_name_ = pipl_->name;
    } else {
        message("warning: " + file + " has no " + ModuleLibrary::piplKind() + "; its flags cannot be checked");
    }
    if (effect_name_.empty()) effect_name_ = file.substr(0, file.find('.'));

    void* symbol = nullptr;
    for (const char* name : {entry_name.c_str(), "EntryPointFunc", "EffectMain"}) {
        if (*name && (symbol = module_->symbol(name))) break;
        if (!entry_name.empty()) break;  // the PiPL names the one entry point to use
    }
    if (!symbol) {
        module_.reset();
        throw HostError("After Effects Error: Couldn't find main entry point for " + file + " ( 48 :: 72 )");
    }
    entry_ = reinterpret_cast<PF_FilterProc>(symbol);
    try {
        global_setup();
        params_setup();
    } catch (...) {
        // A module refused after its global set-up still owns global data: set it down first.
        if (global_data_) {
            CallContext context;
            prepare_context(context, PF_Cmd_GLOBAL_SETDOWN, 0, 8, 1);
            try {
                call(context, nullptr, nullptr, nullptr);
            } catch (...) {
            }
            finish_context(context);
            global_data_ = nullptr;
        }
        entry_ = nullptr;
        module_.reset();
        throw;
    }
}

void Host::global_setup() {
    CallContext context;
    prepare_context(context, PF_Cmd_GLOBAL_SETUP, 0, 8, 1);
    registering_ = true;
    PF_Err err = PF_Err_NONE;
    try {
        err = call(context, nullptr, nullptr, nullptr);
    } catch (...) {
        registering_ = false;
        throw;
    }
    registering_ = false;
    finish_context(context);
    if (err) throw HostError(effect_name_ + ": GLOBAL_SETUP failed with " + errorName(err));
    if ((out_flags2_ & PF_OutFlag2_FLOAT_COLOR_AWARE) && !(out_flags2_ & PF_OutFlag2_SUPPORTS_SMART_RENDER))
        throw HostError(effect_name_ + ": PF_OutFlag2_FLOAT_COLOR_AWARE requires PF_OutFlag2_SUPPORTS_SMART_RENDER");
    if (!pipl_) return;
    const bool overrides = pipl_->global_out_flags && (*pipl_->global_out_flags & PF_OutFlag_PiPL_OVERRIDES_OUTDATA_OUTFLAGS);
    if (pipl_->global_out_flags && !overrides && *pipl_->global_out_flags != std::uint32_t(out_flags_))
        message("warning: " + effect_name_ + ": flag mismatch. Code flags: " + hex(out_flags_) +
                " / PiPL flags: " + hex(*pipl_->global_out_flags) + " (25::16)");
    if (pipl_->global_out_flags2 && *pipl_->global_out_flags2 != std::uint32_t(out_flags2_))
        message("warning: " + effect_name_ + ": flag mismatch. Code flags 2: " + hex(out_flags2_) +
                " / PiPL flags 2: " + hex(*pipl_->global_out_flags2) + " (25::16)");
    if (pipl_->effect_version && *pipl_->effect_version != my_version_)
        message("warning: " + effect_name_ + ": version mismatch with the PiPL. Code version: " + hex(my_version_) +
                " / PiPL version: " + hex(*pipl_->effect_version));
}

void Host::params_setup() {
    params_->begin_setup();
    CallContext context;
    prepare_context(context, PF_Cmd_PARAMS_SETUP, 0, 8, 1);
    const PF_Err err = call(context, nullptr, nullptr, nullptr);
    finish_context(context);
    std::vector<std::string> warnings;
    const std::string refusal = params_->finish_setup(context.adds, warnings);
    for (const std::string& w : warnings) message("warning: " + w);
    if (err) throw HostError(effect_name_ + ": PARAMS_SETUP failed with " + errorName(err));
    if (!refusal.empty()) throw HostError(effect_name_ + ": parameter set refused: " + refusal);
}

bool Host::wants_update_params_ui() const {
    return (out_flags_ & PF_OutFlag_SEND_UPDATE_PARAMS_UI) || params_->any_supervised();
}

PF_Err Host::run_ui_command(PF_Cmd cmd, void* extra) {
    std::lock_guard<std::mutex> serial(global_mutex_);
    CallContext context;
    const double comp_seconds = ui_seconds_;
    prepare_context(context, cmd, layer_seconds(comp_seconds), 8, 1);

    DeliveryFrame frame;
    frame.layer_width = context.in_data.width;
    frame.layer_height = context.in_data.height;
    frame.effect_layer_id = effect_layer_id_;
    std::vector<PF_ParamDef> records(params_->size());
    std::vector<PF_ParamDef*> pointers(params_->size());
    for (int i = 0; i < params_->size(); ++i) {
        records[i] = params_->deliver(i, comp_seconds, frame);
        if (i > 0 && records[i].param_type == PF_Param_LAYER && options_.layer_handle_in_params)
            records[i].u.ld.reserved0 = layer_handle(params_->layer_id(i, comp_seconds, frame));
        pointers[i] = &records[i];
    }
    const PF_Err err = call(context, pointers.data(), nullptr, extra);
    if (cmd == PF_Cmd_USER_CHANGED_PARAM && !err) {
        for (int i = 1; i < params_->size(); ++i)
            if (records[i].uu.change_flags & PF_ChangeFlag_CHANGED_VALUE) params_->take_changed_value(i, records[i], frame);
    }
    finish_context(context);
    return err;
}

PF_Err Host::about() {
    CallContext context;
    prepare_context(context, PF_Cmd_ABOUT, 0, 8, 1);
    const PF_Err err = call(context, nullptr, nullptr, nullptr);
    finish_context(context);
    return err;
}

PF_Err Host::sequence_setup() {
    PF_Err err = run_ui_command(PF_Cmd_SEQUENCE_SETUP, nullptr);
    if (err) return err;
    sequence_live_ = true;
    return wants_update_params_ui() ? update_params_ui() : PF_Err_NONE;
}

PF_Err Host::update_params_ui() { return run_ui_command(PF_Cmd_UPDATE_PARAMS_UI, nullptr); }

PF_Err Host::user_changed_param(PF_ParamIndex index) {
    if (!params_->is_supervised(index))
        throw HostError("param " + std::to_string(index) + " is not supervised; the host would not tell the effect");
    PF_UserChangedParamExtra extra{index};
    const PF_Err err = run_ui_command(PF_Cmd_USER_CHANGED_PARAM, &extra);
    if (err) return err;
    return update_params_ui();
}

std::string Host::unload() {
    if (!loaded()) return counters_.leaks();
    if (sequence_live_) {
        run_ui_command(PF_Cmd_SEQUENCE_SETDOWN, nullptr);
        sequence_live_ = false;
    }
    {
        CallContext context;
        prepare_context(context, PF_Cmd_GLOBAL_SETDOWN, 0, 8, 1);
        call(context, nullptr, nullptr, nullptr);
        finish_context(context);
    }
    global_data_ = nullptr;
    module_.reset();
    entry_ = nullptr;
    const std::string report = counters_.leaks();
    if (!report.empty()) message(effect_name_ + ": leaks at set-down:\n" + report);
    return report;
}

}  // namespace host
