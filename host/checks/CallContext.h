#pragma once
// The state of one command the host is running: what the module's effect_ref points at.
//
// Every callback and suite function that receives an effect_ref reaches its host session and
// the command's own state through CallContext::from(effect_ref). Several renders may run at
// once on one host, each with its own context; a context is used by one command only.

#include <cstdint>
#include <map>
#include <memory>
#include <mutex>
#include <set>
#include <vector>

#include "AE_Effect.h"
#include "host/checks/CallTally.h"

namespace host {

class Host;
class OwnedWorld;
class SamplerCache;

struct LayerCheckout {
    PF_ParamIndex index = 0;
    int layer_id = 0;         // 0: nothing chosen (<none>)
    double layer_seconds = 0; // time asked for, in the effect layer's seconds
    PF_LRect result_rect{0, 0, 0, 0};
    bool fetched = false;     // checkout_layer_pixels was called
    std::shared_ptr<OwnedWorld> world;
};

struct CallContext {
    static constexpr std::uint64_t kMagic = 0x4f5242564e484354ull;  // "ORBVNHCT"

    CallContext();
    ~CallContext();
    CallContext(const CallContext&) = delete;
    CallContext& operator=(const CallContext&) = delete;

    std::uint64_t magic = kMagic;
    Host* host = nullptr;
    PF_Cmd cmd = PF_Cmd_ABOUT;
    PF_InData in_data{};
    double layer_seconds = 0;  // the effect layer's time of this command
    short bitdepth = 8;        // pixel depth of the worlds checked out in this command
    bool render = false;       // SMART_PRE_RENDER / SMART_RENDER
    int adds = 0;              // add_param calls during PARAMS_SETUP

    // Smart render bookkeeping.
    std::map<A_long, LayerCheckout> layer_checkouts;  // by the effect's checkout id
    bool any_input_fetched = false;
    std::shared_ptr<OwnedWorld> output;
    PF_LRect output_rect{0, 0, 0, 0};

    // PF_CHECKOUT_PARAM records not yet checked in, by the caller's struct address.
    struct ParamCheckout {
        PF_ParamIndex index = 0;
        std::shared_ptr<OwnedWorld> world;  // null for non-layer params and <none>
    };
    std::mutex checkout_mutex;
    std::multimap<const PF_ParamDef*, ParamCheckout> param_checkouts;

    // Area-sampling tables of the worlds this command samples. Per command, so forgetting them
    // never pulls a table from under another render still sampling.
    SamplerCache& samplers() { return *samplers_; }
    // Call when the pixels at `data` change or are freed; null forgets every table (the effect
    // may have written to any of its worlds, e.g. in iterate_generic).
    void forget_samples(const void* data = nullptr);

    // The host entry points this command called, by name (see host/checks/RenderCallLog.h).
    CallTally& calls() { return calls_; }
    const CallTally& calls() const { return calls_; }

    // effect_ref -> context; null (and no crash) for a foreign pointer.
    static CallContext* from(PF_ProgPtr effect_ref);
    // The command running on this thread (the module's call, a render scope, or the
    // iteration workers of either); null when none. Suite functions that receive no
    // effect_ref find their command and session here.
    static CallContext* current();
    PF_ProgPtr effect_ref() { return reinterpret_cast<PF_ProgPtr>(this); }
    // True for the commands that run on a render thread.
    bool on_render_thread() const { return render; }

private:
    std::unique_ptr<SamplerCache> samplers_;
    CallTally calls_;
};

// Makes `context` the command running on this thread until destroyed, then restores the
// previous one (commands nest: a render scope may call the module's entry point).
class CurrentCommand {
public:
    explicit CurrentCommand(CallContext* context);
    ~CurrentCommand();
    CurrentCommand(const CurrentCommand&) = delete;
    CurrentCommand& operator=(const CurrentCommand&) = delete;

private:
    CallContext* previous_;
};

}  // namespace host
