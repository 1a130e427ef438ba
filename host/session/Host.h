#pragma once
// One emulated After Effects session: loads an effect module, keeps its global data and its
// parameters, places the effect on a layer of a composition and sends it the host's commands
// in the host's order. It also owns the services every other host part plugs into: the suite
// registry behind in_data->pica_basicP, the fault injector, the resource counters and the
// handle heap.
//
// Without a module, render_scope() hands unit tests a ready PF_InData (utility callbacks,
// handles, the world and sampling suites, an effect_ref) for calling module code directly.

#include <atomic>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include "AE_Effect.h"
#include "AE_EffectCB.h"
#include "AE_GeneralPlug.h"
#include "SPBasic.h"
#include "host/comp/Animated.h"
#include "host/checks/CallContext.h"
#include "host/pixels/PixelWorld.h"
#include "host/checks/FaultInjector.h"
#include "host/checks/RenderCallLog.h"
#include "host/pixels/IterateGeneric.h"
#include "host/checks/ResourceCounters.h"
#include "host/api/SuiteRegistry.h"
#include "host/comp/ParamValue.h"
#include "host/session/HostError.h"

namespace host {

class AegpSuites;
class Composition;
struct Layer;
class HandleHeap;
class LayerPixels;
class ModuleLibrary;
class ParamStore;
struct PiplInfo;

struct HostOptions {
    A_short api_major = 13;  // effect API version reported in in_data->version
    A_short api_minor = 29;  // 13.1 exercises the module's pre-CS6 branch
    int threads = 0;         // iterate_generic threads, the caller's included; 0: min(cores, 32)
    // The calls After Effects refuses on render threads (renderThreadForbiddenNames()) answer
    // A_Err_WRONG_THREAD during SMART_PRE_RENDER and SMART_RENDER.
    bool strict_render_thread = false;
    bool poison = true;      // fill new handles and uncleared worlds with a non-zero pattern
    PF_Quality quality = PF_Quality_HI;
    // Fill the first pointer word (u.ld.reserved0) of layer params with the chosen layer's
    // AEGP_LayerH: in the UI commands' params array and in every PF_CHECKOUT_PARAM of a layer
    // param, render commands included. Off, the module must find the layer through its effect
    // stream.
    bool layer_handle_in_params = true;
    bool echo_messages = false;  // also print host messages to stderr
};

struct RenderRequest {
    double seconds = 0;  // composition time
    short bitdepth = 8;  // 8, 16 or 32
    int downsample = 1;  // 1 full, 2 half, ...
    std::optional<PF_LRect> rect;  // in downsampled layer pixels; default: the whole layer
};

struct RenderResult {
    PF_Err err = PF_Err_NONE;
    bool rendered = false;  // false for an empty result or an error
    PF_LRect result_rect{0, 0, 0, 0};
    PF_LRect max_result_rect{0, 0, 0, 0};
    std::shared_ptr<OwnedWorld> output;  // the output world the module rendered into
    std::string return_msg;
    RenderCallLog calls;  // what the module called on the host in each smart command
};

// A command in progress for module code called directly by unit tests: in_data() is ready
// to use until the scope ends; leftover checkouts are reported on destruction. The scope is
// the command running on the thread that created it (CallContext::current()), so it must be
// destroyed on that thread.
class RenderScope {
public:
    RenderScope(Host& host, short bitdepth, double layer_seconds);
    ~RenderScope();
    RenderScope(const RenderScope&) = delete;
    RenderScope& operator=(const RenderScope&) = delete;

    PF_InData* in_data() { return &context_->in_data; }
    PF_ProgPtr effect_ref() { return context_->effect_ref(); }
    CallContext& context() { return *context_; }

private:
    Host& host_;
    std::unique_ptr<CallContext> context_;
    CurrentCommand running_;
};

class Host {
public:
    explicit Host(HostOptions options = HostOptions());
    ~Host();
    Host(const Host&) = delete;
    Host& operator=(const Host&) = delete;

    const HostOptions& options() const { return options_; }
    SuiteRegistry& registry() { return registry_; }
    FaultInjector& faults() { return faults_; }
    ResourceCounters& counters() { return counters_; }
    HandleHeap& handles() { return *handles_; }
    // The AEGP suites over this session's composition, registered from construction on.
    AegpSuites& aegp() { return *aegp_; }
    const SPBasicSuite* pica_basic() const;

    // --- The scene: the composition and the layer the effect is applied to. ---
    void set_composition(std::shared_ptr<Composition> comp, int effect_layer_id);
    Composition* composition() { return comp_.get(); }
    const Layer* effect_layer() const;
    int effect_layer_id() const { return effect_layer_id_; }
    // Layer pixels come from the composition's sources (image files, generated images,
    // solids) through layer_pixels().
    LayerPixels& layer_pixels() { return *layer_pixels_; }
    // Resolves a layer id to the AEGP_LayerH the composition's suites hand out.
    void set_layer_handle_resolver(std::function<void*(int layer_id)> resolver) {
        layer_handle_ = std::move(resolver);
    }
    void* layer_handle(int layer_id) const { return layer_handle_ ? layer_handle_(layer_id) : nullptr; }

    // --- Module lifetime. ---
    // Module load (dlopen / LoadLibrary), PiPL check, GLOBAL_SETUP, PARAMS_SETUP. Throws
    // HostError when refused.
    void load(const std::string& module_path);
    // SEQUENCE_SETDOWN, GLOBAL_SETDOWN, module unload. Returns the leak report (empty when clean).
    std::string unload();
    bool loaded() const { return entry_ != nullptr; }
    const std::string& effect_name() const { return effect_name_; }
    A_u_long module_version() const { return my_version_; }
    PF_OutFlags out_flags() const { return out_flags_; }
    PF_OutFlags2 out_flags2() const { return out_flags2_; }
    // The loaded module's PiPL (sidecar on Linux, resource on Windows); null when it has none.
    const PiplInfo* pipl() const { return pipl_.get(); }

    // --- Commands. Each returns the module's error; return_msg() holds its message. ---
    PF_Err about();
    PF_Err sequence_setup();  // then UPDATE_PARAMS_UI when the module wants it
    PF_Err update_params_ui();
    PF_Err user_changed_param(PF_ParamIndex index);  // then UPDATE_PARAMS_UI
    RenderResult render(const RenderRequest& request);
    void set_time(double comp_seconds) { ui_seconds_ = comp_seconds; }

    // --- Parameters (after load). ---
    int num_params() const;
    // out_data->num_params as the module left it after its last PARAMS_SETUP (the host hands
    // it 0), -1 before any.
    int declared_num_params() const;
    const PF_ParamDef& param_def(PF_ParamIndex index) const;  // as registered, with UI state
    PF_ParamIndex param_index(const std::string& name) const; // throws HostError if unknown
    void set_param(PF_ParamIndex index, const ParamValue& value);
    void set_param(const std::string& name, const ParamValue& value);
    void add_param_key(PF_ParamIndex index, double comp_seconds, const ParamValue& value);
    ParamValue param_value(PF_ParamIndex index, double comp_seconds) const;
    ParamStore& params() { return *params_; }

    // --- Observations. ---
    std::string return_msg() const;
    PF_Err last_error() const { return last_error_; }
    std::vector<std::string> messages() const;     // warnings, errors, information
    std::vector<std::string> command_log() const;  // every command sent, in order
    RenderCallLog last_render_calls() const;       // the calls of the render that ended last
    std::string leaks() const { return counters_.leaks(); }

    // A ready context for unit tests of module code (no module needed).
    std::unique_ptr<RenderScope> render_scope(short bitdepth = 8, double layer_seconds = 0);

    // --- For the other host parts. ---
    void message(const std::string& text);
    // Fills `context` for `cmd` at the effect layer's time `layer_seconds`.
    void prepare_context(CallContext& context, PF_Cmd cmd, double layer_seconds, short bitdepth,
                         int downsample);
    // Releases what a command left behind (unreturned checkouts are reported as leaks).
    void finish_context(CallContext& context);
    // Allocates a host world (row padding, poison unless `clear`).
    std::shared_ptr<OwnedWorld> new_world(A_long width, A_long height, PF_PixelFormat format,
                                           bool clear, bool writeable);
    // Worlds handed to the module (world suite, legacy new_world) are the module's until it
    // disposes of them; the host keeps a note so that what the module never gives back is still
    // freed when the session ends, after the counters have reported it.
    void adopt_module_world(const PF_EffectWorld& world);
    void forget_module_world(const PF_EffectWorld& world);
    void free_module_worlds();
    // `rect` (downsampled layer pixels) gives a smart checkout with its origin; without it the
    // whole layer at origin 0. `black` gives the right size without rendering.
    std::shared_ptr<OwnedWorld> layer_world(int layer_id, double comp_seconds, short bitdepth,
                                             const PF_RationalScale& dsx,
                                             const PF_RationalScale& dsy, const PF_LRect* rect,
                                             bool black);
    // Layer-space bounds of a layer at the context's downsample.
    PF_LRect layer_bounds(int layer_id, const PF_RationalScale& dsx,
                          const PF_RationalScale& dsy) const;
    // A_Err_WRONG_THREAD when strict mode refuses the entry point `name` in `command`: a call
    // After Effects forbids on render threads made during a smart command. Every entry point
    // applies it through HOST_FAULT_POINT.
    A_Err render_thread_rule(const CallContext& command, const char* name) const;
    // True while GLOBAL_SETUP runs (the only time AEGP_RegisterWithAEGP is allowed).
    bool registering() const { return registering_; }
    // What AEGP_RegisterWithAEGP gave the module: its name and plug-in id (0 before).
    void note_registration(const std::string& name, AEGP_PluginID id);
    std::string registered_name() const;
    AEGP_PluginID registered_plugin_id() const;
    // iterate_generic on the host's pool: HostOptions::threads threads, or the shared pool;
    // the command of the calling thread is the command of every worker; the fault injector's
    // cancel switch stops it with PF_Interrupt_CANCEL.
    PF_Err iterate(A_long iterations, void* refcon, IterateFunc fn);

private:
    friend class RenderScope;
    PF_Err call(CallContext& context, PF_ParamDef** params, PF_LayerDef* output, void* extra);
    // SMART_RENDER into a new output world the size of the pre-render's result; fills `result`.
    void smart_render(CallContext& context, const PF_RenderRequest& request, const PF_PreRenderOutput& pre_render,
                      short bitdepth, RenderResult& result);
    PF_Err run_ui_command(PF_Cmd cmd, void* extra);
    void global_setup();
    void params_setup();
    bool wants_update_params_ui() const;
    double layer_seconds(double comp_seconds) const;
    void log_command(PF_Cmd cmd);
    // The two ways layer_world makes a world: a view of the host's converted pixels for a
    // checkout of the whole layer (none when there are none), or a world of its own that the
    // layer's pixels are copied into (black: cleared instead).
    std::shared_ptr<OwnedWorld> layer_view(const Layer& layer, const PF_LRect& area, PF_PixelFormat format,
                                           const PF_RationalScale& dsx, const PF_RationalScale& dsy);
    std::shared_ptr<OwnedWorld> layer_copy(const Layer& layer, const PF_LRect& area, PF_PixelFormat format,
                                           const PF_RationalScale& dsx, const PF_RationalScale& dsy, bool black);

    HostOptions options_;
    SuiteRegistry registry_;
    FaultInjector faults_;
    ResourceCounters counters_;
    std::unique_ptr<HandleHeap> handles_;
    std::unique_ptr<ParamStore> params_;
    std::unique_ptr<PiplInfo> pipl_;
    std::unique_ptr<AegpSuites> aegp_;  // needs registry_; reset before it is released

    std::shared_ptr<Composition> comp_;
    int effect_layer_id_ = 0;
    std::unique_ptr<LayerPixels> layer_pixels_;
    std::function<void*(int)> layer_handle_;

    std::unique_ptr<ModuleLibrary> module_;
    PF_FilterProc entry_ = nullptr;
    std::string effect_name_;
    A_u_long my_version_ = 0;
    PF_OutFlags out_flags_ = 0;
    PF_OutFlags2 out_flags2_ = 0;
    PF_Handle global_data_ = nullptr;
    PF_Handle sequence_data_ = nullptr;
    bool sequence_live_ = false;
    std::atomic<bool> registering_{false};
    double ui_seconds_ = 0;

    std::mutex global_mutex_;  // serialises commands on global data
    mutable std::mutex state_mutex_;
    std::string return_msg_;
    PF_Err last_error_ = PF_Err_NONE;
    std::vector<std::string> messages_;
    std::vector<std::string> command_log_;
    RenderCallLog last_render_calls_;

    int declared_num_params_ = -1;
    std::string registered_name_;
    AEGP_PluginID registered_plugin_id_ = 0;

    std::mutex module_worlds_mutex_;
    std::map<std::uint64_t, PF_EffectWorld> module_worlds_;  // by world serial

    std::once_flag pool_started_;
    std::unique_ptr<IterationPool> pool_;  // only with HostOptions::threads set
};

// Symbolic name of a PF_Err / A_Err / SPErr code ("PF_Err_OUT_OF_MEMORY", ...).
const char* errorName(A_long err);
// Name of a PF_Cmd code ("PF_Cmd_SMART_RENDER", ...).
const char* commandName(PF_Cmd cmd);

}  // namespace host
