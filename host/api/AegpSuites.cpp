#include "host/api/AegpSuites.h"

#include "host/api/AegpSuitesInternal.h"
#include "host/session/Host.h"

#include <atomic>
#include <cmath>
#include <cstdio>

namespace host {

namespace {

// The suites of the most recent session, for calls made outside any command.
std::atomic<AegpSuites*> g_current{nullptr};

}  // namespace

AegpSuites::AegpSuites(Host& host) : host_(host), records_(std::make_unique<Records>()) {
    aegp::register_layer_suites(host.registry());
    aegp::register_stream_suites(host.registry());
    aegp::register_effect_suites(host.registry());
    host.set_layer_handle_resolver([this](int id) -> void* { return layer_handle(id); });
    g_current.store(this);
}

AegpSuites::~AegpSuites() {
    AegpSuites* self = this;
    g_current.compare_exchange_strong(self, nullptr);
    host_.set_layer_handle_resolver(nullptr);
}

AegpSuites* AegpSuites::current() {
    const CallContext* command = CallContext::current();
    if (command != nullptr && command->host != nullptr) return &command->host->aegp();
    return g_current.load();
}

Composition* AegpSuites::composition() { return host_.composition(); }

AEGP_LayerH AegpSuites::layer_handle(int layer_id) {
    Composition* comp = composition();
    if (comp == nullptr || comp->find_by_id(layer_id) == nullptr) return nullptr;
    std::lock_guard<std::mutex> lock(records_->mutex);
    auto& slot = records_->layers[layer_id];
    if (!slot) {
        slot = std::make_unique<aegp::Slot>();
        records_->layer_ids[&slot->self] = layer_id;
    }
    return aegp::handle_of<AEGP_LayerH>(*slot);
}

int AegpSuites::layer_id(AEGP_LayerH layer) const {
    std::lock_guard<std::mutex> lock(records_->mutex);
    auto it = records_->layer_ids.find(layer);
    return it == records_->layer_ids.end() ? 0 : it->second;
}

AEGP_CompH AegpSuites::comp_handle() {
    std::lock_guard<std::mutex> lock(records_->mutex);
    return aegp::handle_of<AEGP_CompH>(records_->comp);
}

bool AegpSuites::is_comp(AEGP_CompH comp) const {
    return comp != nullptr && reinterpret_cast<const void*>(comp) == &records_->comp.self;
}

AEGP_ItemH AegpSuites::item_handle(int layer_id) {
    std::lock_guard<std::mutex> lock(records_->mutex);
    auto& slot = records_->items[layer_id];
    if (!slot) {
        slot = std::make_unique<aegp::Slot>();
        records_->item_ids[&slot->self] = layer_id;
    }
    return aegp::handle_of<AEGP_ItemH>(*slot);
}

bool AegpSuites::item_of(AEGP_ItemH item, int* layer_id) const {
    std::lock_guard<std::mutex> lock(records_->mutex);
    auto it = records_->item_ids.find(item);
    if (it == records_->item_ids.end()) return false;
    *layer_id = it->second;
    return true;
}

const std::string* AegpSuites::effect_expression(PF_ParamIndex index) const {
    std::lock_guard<std::mutex> lock(records_->mutex);
    auto it = records_->effect_expressions.find(index);
    return it == records_->effect_expressions.end() ? nullptr : &it->second;
}

void AegpSuites::set_effect_expression(PF_ParamIndex index, const std::string& text) {
    std::lock_guard<std::mutex> lock(records_->mutex);
    if (text.empty()) {
        records_->effect_expressions.erase(index);
    } else {
        records_->effect_expressions[index] = text;
    }
}

AEGP_DynStreamFlags AegpSuites::effect_stream_flags(PF_ParamIndex index) const {
    std::lock_guard<std::mutex> lock(records_->mutex);
    auto it = records_->dyn_flags.find({0, index});
    return it == records_->dyn_flags.end() ? 0 : it->second;
}

namespace aegp {

AegpSuites* session() { return AegpSuites::current(); }

A_Err unimplemented(const char* name) {
    if (AegpSuites* s = session()) {
        bool first;
        {
            std::lock_guard<std::mutex> lock(s->records().mutex);
            first = s->records().reported.insert(name).second;
        }
        if (first) s->host().message(std::string(name) + " is not implemented by this host");
    }
    return A_Err_GENERIC;
}

std::string key_of(const void* handle) {
    char text[32];
    std::snprintf(text, sizeof text, "%p", handle);
    return text;
}

bool to_seconds(const A_Time* t, double* seconds) {
    if (t == nullptr || t->scale == 0) return false;
    *seconds = static_cast<double>(t->value) / static_cast<double>(t->scale);
    return true;
}

A_Time from_seconds(double seconds, A_u_long scale) {
    return A_Time{static_cast<A_long>(std::llround(seconds * scale)), scale};
}

Layer* layer_of(AEGP_LayerH layer) {
    AegpSuites* s = session();
    if (s == nullptr || layer == nullptr || s->composition() == nullptr) return nullptr;
    int id = s->layer_id(layer);
    return id == 0 ? nullptr : s->composition()->find_by_id(id);
}

AEGP_MemHandle new_mem_handle(const void* data, std::size_t size) {
    AegpSuites* s = session();
    auto record = std::make_unique<MemRecord>();
    record->data.assign(static_cast<const char*>(data), static_cast<const char*>(data) + size);
    return keep_record<AEGP_MemHandle>(s, &AegpSuites::Records::mems, std::move(record), Resource::AegpMemHandle);
}

std::vector<A_UTF16Char> to_utf16(const std::string& utf8) {
    std::vector<A_UTF16Char> out;
    for (std::size_t i = 0; i < utf8.size();) {
        unsigned char c = static_cast<unsigned char>(utf8[i]);
        int extra = c < 0x80 ? 0 : c < 0xE0 ? 1 : c < 0xF0 ? 2 : 3;
        std::uint32_t cp = extra == 0 ? c : c & (0x3F >> extra);
        for (int k = 1; k <= extra && i + k < utf8.size(); ++k) {
            cp = (cp << 6) | (static_cast<unsigned char>(utf8[i + k]) & 0x3F);
        }
        i += extra + 1;
        if (cp >= 0x10000) {
            cp -= 0x10000;
            out.push_back(static_cast<A_UTF16Char>(0xD800 + (cp >> 10)));
            out.push_back(static_cast<A_UTF16Char>(0xDC00 + (cp & 0x3FF)));
        } else {
            out.push_back(static_cast<A_UTF16Char>(cp));
        }
    }
    out.push_back(0);
    return out;
}

std::string to_utf8(const A_UTF16Char* text) {
    std::string out;
    for (; *text != 0; ++text) {
        std::uint32_t cp = *text;
        if (cp >= 0xD800 && cp < 0xDC00 && text[1] >= 0xDC00 && text[1] < 0xE000) {
            cp = 0x10000 + ((cp - 0xD800) << 10) + (text[1] - 0xDC00);
            ++text;
        }
        if (cp < 0x80) {
            out += static_cast<char>(cp);
        } else if (cp < 0x800) {
            out += static_cast<char>(0xC0 | (cp >> 6));
            out += static_cast<char>(0x80 | (cp & 0x3F));
        } else if (cp < 0x10000) {
            out += static_cast<char>(0xE0 | (cp >> 12));
            out += static_cast<char>(0x80 | ((cp >> 6) & 0x3F));
            out += static_cast<char>(0x80 | (cp & 0x3F));
        } else {
            out += static_cast<char>(0xF0 | (cp >> 18));
            out += static_cast<char>(0x80 | ((cp >> 12) & 0x3F));
            out += static_cast<char>(0x80 | ((cp >> 6) & 0x3F));
            out += static_cast<char>(0x80 | (cp & 0x3F));
        }
    }
    return out;
}

}  // namespace aegp
}  // namespace host
