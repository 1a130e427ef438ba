#pragma once
// Live counts of every resource the module takes from the host, so a session can prove that
// the module gave everything back. Each acquisition names the resource kind and a key (the
// suite name, the handle's address, ...); the leak report lists every key still held.

#include <cstdint>
#include <map>
#include <mutex>
#include <string>
#include <utility>
#include <vector>

#include "host/checks/SessionCurrent.h"

namespace host {

enum class Resource {
    Handle,           // host_new_handle / PF_NEW_HANDLE
    HandleLock,       // host_lock_handle not yet unlocked
    Suite,            // AcquireSuite not yet released
    ParamCheckout,    // PF_CHECKOUT_PARAM not yet checked in
    LayerCheckout,    // checkout_layer_pixels still held
    World,            // PF_NewWorld / new_world not yet disposed
    AegpStream,       // AEGP stream references
    AegpEffect,       // AEGP effect references
    AegpMemHandle,    // AEGP memory handles
    AegpStreamValue,  // AEGP stream values
};

const char* resourceName(Resource kind);

class ResourceCounters : public SessionCurrent<ResourceCounters> {
public:
    ResourceCounters() = default;
    ResourceCounters(const ResourceCounters&) = delete;
    ResourceCounters& operator=(const ResourceCounters&) = delete;

    void acquire(Resource kind, const std::string& key = std::string());
    // Returns false (and records the problem) when nothing under `key` was held.
    bool release(Resource kind, const std::string& key = std::string());

    long live(Resource kind) const;
    long live(Resource kind, const std::string& key) const;
    // Acquisitions ever made of this kind.
    long total(Resource kind) const;

    // Records a misuse that the leak report must show (double release, bad check-in, ...).
    void note_problem(const std::string& text);

    // One line per leaked key or recorded problem; empty when the module gave back everything.
    std::string leaks() const;
    // Every kind with its live and total counts, for logs.
    std::string summary() const;
    void reset();

private:
    mutable std::mutex mutex_;
    std::map<std::pair<Resource, std::string>, long> live_;
    std::map<Resource, long> total_;
    std::vector<std::string> problems_;
};

// Convenience for suites of other host parts: no-ops without an active session.
void countAcquire(Resource kind, const std::string& key = std::string());
bool countRelease(Resource kind, const std::string& key = std::string());

}  // namespace host
