#pragma once
// What the AEGP suite files share: the records behind the handles they hand out and the
// small conversions every suite function needs. Not for other host parts.

#include "host/api/AegpSuites.h"
#include "host/comp/Composition.h"
#include "host/checks/FaultInjector.h"
#include "host/session/Host.h"

#include <set>
#include <string>
#include <vector>

namespace host {

class SuiteRegistry;

namespace aegp {

// A host handle is a pointer to a pointer: `self` is what the handle points at.
struct Slot {
    void* self = nullptr;
};

struct StreamRecord {
    void* self = nullptr;
    bool effect = false;  // an effect parameter's stream rather than a layer's
    int layer_id = 0;     // the layer whose stream it is (the effect's layer for parameters)
    int which = 0;        // AEGP_LayerStream, or the parameter index
};

struct EffectRecord {
    void* self = nullptr;
    PF_ProgPtr effect_ref = nullptr;
    int layer_id = 0;
};

struct MemRecord {
    void* self = nullptr;
    std::vector<char> data;
    int locks = 0;
};

template <class Handle, class Record>
Handle handle_of(Record& r) {
    r.self = &r;
    return reinterpret_cast<Handle>(&r.self);
}

// The session's suites, or null outside a session.
AegpSuites* session();
// Logs (once per function) and answers A_Err_GENERIC.
A_Err unimplemented(const char* name);
std::string key_of(const void* handle);

// Rational time to seconds; false for a null time or a zero scale.
bool to_seconds(const A_Time* t, double* seconds);
A_Time from_seconds(double seconds, A_u_long scale);

Layer* layer_of(AEGP_LayerH layer);

// Memory handles the suites return (names, expressions): counted until freed.
AEGP_MemHandle new_mem_handle(const void* data, std::size_t size);
std::vector<A_UTF16Char> to_utf16(const std::string& utf8);
std::string to_utf8(const A_UTF16Char* text);

void register_layer_suites(SuiteRegistry& registry);
void register_stream_suites(SuiteRegistry& registry);
void register_effect_suites(SuiteRegistry& registry);

}  // namespace aegp

struct AegpSuites::Records {
    mutable std::mutex mutex;
    std::map<int, std::unique_ptr<aegp::Slot>> layers;  // by layer id
    std::map<const void*, int> layer_ids;               // handle -> layer id
    aegp::Slot comp;
    std::map<int, std::unique_ptr<aegp::Slot>> items;   // by layer id, 0 = the composition
    std::map<const void*, int> item_ids;
    std::map<const void*, std::unique_ptr<aegp::StreamRecord>> streams;
    std::map<const void*, std::unique_ptr<aegp::EffectRecord>> effects;
    std::map<const void*, std::unique_ptr<aegp::MemRecord>> mems;
    std::map<PF_ParamIndex, std::string> effect_expressions;
    std::map<std::pair<int, int>, AEGP_DynStreamFlags> dyn_flags;  // (layer id or 0, which)
    std::set<std::string> reported;  // messages given once
};

namespace aegp {

// The records of one kind of handle the suites hand out, by handle.
template <class Record>
using RecordTable = std::map<const void*, std::unique_ptr<Record>> AegpSuites::Records::*;

// Files `record` under a new handle and counts the handle as held (`kind`).
template <class Handle, class Record>
Handle keep_record(AegpSuites* s, RecordTable<Record> table, std::unique_ptr<Record> record, Resource kind) {
    Handle h = handle_of<Handle>(*record);
    {
        std::lock_guard<std::mutex> lock(s->records().mutex);
        (s->records().*table)[h] = std::move(record);
    }
    s->host().counters().acquire(kind, key_of(h));
    return h;
}

// The record behind a held handle, or null.
template <class Record>
Record* find_record(AegpSuites* s, RecordTable<Record> table, const void* h) {
    std::lock_guard<std::mutex> lock(s->records().mutex);
    const auto& records = s->records().*table;
    auto it = records.find(h);
    return it == records.end() ? nullptr : it->second.get();
}

// Forgets a held handle and counts it as given back; A_Err_PARAMETER for one not held.
template <class Record>
A_Err drop_record(AegpSuites* s, RecordTable<Record> table, const void* h, Resource kind) {
    {
        std::lock_guard<std::mutex> lock(s->records().mutex);
        if ((s->records().*table).erase(h) == 0) return A_Err_PARAMETER;
    }
    s->host().counters().release(kind, key_of(h));
    return A_Err_NONE;
}

}  // namespace aegp

}  // namespace host

// Every suite function starts with this: the session's fault point, then a live session.
#define AEGP_ENTER(name)                                            \
    if (A_Err fault_ = HOST_FAULT_POINT(name)) return fault_;       \
    ::host::AegpSuites* s_ = ::host::aegp::session();               \
    if (s_ == nullptr) return A_Err_GENERIC

// The layer behind a layer handle as `layer`; an unknown handle answers A_Err_PARAMETER.
#define NEED_LAYER(handle)                                 \
    ::host::Layer* layer = ::host::aegp::layer_of(handle); \
    if (layer == nullptr) return A_Err_PARAMETER

// Members with no use in this host: logged once and answered with A_Err_GENERIC.
#define AEGP_UNIMPLEMENTED(suite, member) \
    (suite).member = [](auto...) -> A_Err { return ::host::aegp::unimplemented(#member); }
