#pragma once

// Module code under test, called inside a command of the emulated host. The command's basic
// suite goes through a recorder, so that the host's call list names every suite taken, refused
// or given back. Callbacks are plain C functions: one HostedCommand at a time.

#include <memory>
#include <string>
#include <vector>

#include "AE_GeneralPlug.h"
#include "host/api/AegpSuites.h"
#include "host/session/Host.h"

namespace hosted {

class HostedCommand {
public:
    // With `load_module` the built module is loaded first (global data, 57 parameters). The
    // composition always holds the effect layer (footage "Footage été", no name of its own)
    // and a light; calls are recorded from the end of construction.
    explicit HostedCommand(bool load_module = false);
    ~HostedCommand();
    HostedCommand(const HostedCommand&) = delete;
    HostedCommand& operator=(const HostedCommand&) = delete;

    PF_InData* in() { return &in_data_; }
    const SPBasicSuite* basic() const { return &basic_; }
    host::Host& host() { return *host_; }

    // Host calls so far, "acquire|refuse|release <suite> <version>" for the suite calls.
    std::vector<std::string> calls() const;
    long count(const std::string& call) const;
    long live_suites() const { return host_->counters().live(host::Resource::Suite); }
    // From now on the host answers this suite as missing.
    void remove_suite(const char* name, int version);

    AEGP_LayerH effect_layer() { return host_->aegp().layer_handle(effect_layer_id_); }
    AEGP_LayerH light_layer() { return host_->aegp().layer_handle(light_layer_id_); }

    // The suite calls the recorder saw, in order (for the C callbacks).
    std::vector<std::string> suite_calls;

private:
    std::unique_ptr<host::Host> host_;
    std::unique_ptr<host::RenderScope> scope_;
    PF_InData in_data_{};
    SPBasicSuite basic_{};
    int effect_layer_id_ = 0;
    int light_layer_id_ = 0;
};

}  // namespace hosted
