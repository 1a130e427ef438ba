#pragma once
// The AEGP suites of the emulated host, answered from its composition: PF Interface, Layer,
// Stream, Dynamic Stream, Comp, Item, Camera, Light, Effect and Memory, registered under the
// (name, version) pairs the effect asks for.
//
// Every reference handed out (stream, effect, memory handle, stream value) is counted in the
// session's resource counters and must be given back; every function passes the session's
// fault point first. Functions the effect has no use for answer A_Err_GENERIC and are logged.

#include "AE_GeneralPlug.h"

#include <map>
#include <memory>
#include <mutex>
#include <string>

namespace host {

class Host;
class Composition;

class AegpSuites {
public:
    // Registers the suites in `host`'s registry and makes layer handles available to it.
    explicit AegpSuites(Host& host);
    ~AegpSuites();
    AegpSuites(const AegpSuites&) = delete;
    AegpSuites& operator=(const AegpSuites&) = delete;

    Host& host() { return host_; }
    Composition* composition();

    // Stable handles for the model's objects; null / 0 for unknown ones.
    AEGP_LayerH layer_handle(int layer_id);
    int layer_id(AEGP_LayerH layer) const;
    AEGP_CompH comp_handle();
    bool is_comp(AEGP_CompH comp) const;
    // Item 0 is the composition, any other the source of the layer with that id.
    AEGP_ItemH item_handle(int layer_id);
    bool item_of(AEGP_ItemH item, int* layer_id) const;

    // The expression stored on an effect parameter's stream; null when none.
    const std::string* effect_expression(PF_ParamIndex index) const;
    void set_effect_expression(PF_ParamIndex index, const std::string& text);
    AEGP_DynStreamFlags effect_stream_flags(PF_ParamIndex index) const;

    // The suites of the session that is running (null when none).
    static AegpSuites* current();

    // Internal records behind the handles (defined in AegpSuitesInternal.h).
    struct Records;
    Records& records() { return *records_; }

private:
    Host& host_;
    std::unique_ptr<Records> records_;
};

}  // namespace host
