#include "host/checks/ResourceCounters.h"
#include <sstream>

namespace host {

namespace {

constexpr Resource kAllKinds[] = {
    Resource::Handle,     Resource::HandleLock, Resource::Suite,
    Resource::ParamCheckout, Resource::LayerCheckout, Resource::World,
    Resource::AegpStream, Resource::AegpEffect, Resource::AegpMemHandle,
    Resource::AegpStreamValue,
};
}  // namespace

const char* resourceName(Resource kind) {
    switch (kind) {
        case Resource::Handle: return "handle";
        case Resource::HandleLock: return "handle lock";
        case Resource::Suite: return "suite";
        case Resource::ParamCheckout: return "param checkout";
        case Resource::LayerCheckout: return "layer checkout";
        case Resource::World: return "world";
        case Resource::AegpStream: return "AEGP stream";
        case Resource::AegpEffect: return "AEGP effect";
        case Resource::AegpMemHandle: return "AEGP memory handle";
        case Resource::AegpStreamValue: return "AEGP stream value";
    }
    return "resource";
}

void ResourceCounters::acquire(Resource kind, const std::string& key) {
    std::lock_guard<std::mutex> lock(mutex_);
    ++live_[{kind, key}];
    ++total_[kind];
}

bool ResourceCounters::release(Resource kind, const std::string& key) {
    std::lock_guard<std::mutex> lock(mutex_);
    auto it = live_.find({kind, key});
    if (it == live_.end() || it->second <= 0) {
        problems_.push_back(std::string("released a ") + resourceName(kind) + " that was not held" +
                            (key.empty() ? std::string() : ": " + key));
        return false;
    }
    if (--it->second == 0) live_.erase(it);
    return true;
}

long ResourceCounters::live(Resource kind) const {
    std::lock_guard<std::mutex> lock(mutex_);
    long sum = 0;
    for (const auto& entry : live_)
        if (entry.first.first == kind) sum += entry.second;
    return sum;
}

long ResourceCounters::live(Resource kind, const std::string& key) const {
    std::lock_guard<std::mutex> lock(mutex_);
    auto it = live_.find({kind, key});
    return it == live_.end() ? 0 : it->second;
}

long ResourceCounters::total(Resource kind) const {
    std::lock_guard<std::mutex> lock(mutex_);
    auto it = total_.find(kind);
    return it == total_.end() ? 0 : it->second;
}

void ResourceCounters::note_problem(const std::string& text) {
    std::lock_guard<std::mutex> lock(mutex_);
    problems_.push_back(text);
}

std::string ResourceCounters::leaks() const {
    std::lock_guard<std::mutex> lock(mutex_);
    std::ostringstream out;
    for (const auto& entry : live_) {
        out << "leaked " << entry.second << " x " << resourceName(entry.first.first);
        if (!entry.first.second.empty()) out << " (" << entry.first.second << ")";
        out << "\n";
    }
    for (const auto& problem : problems_) out << problem << "\n";
    return out.str();
}

std::string ResourceCounters::summary() const {
    std::ostringstream out;
    for (Resource kind : kAllKinds)
        out << resourceName(kind) << ": live " << live(kind) << ", total " << total(kind) << "\n";
    return out.str();
}

void ResourceCounters::reset() {
    std::lock_guard<std::mutex> lock(mutex_);
    live_.clear();
    total_.clear();
    problems_.clear();
}

void countAcquire(Resource kind, const std::string& key) {
    if (ResourceCounters* counters = ResourceCounters::current()) counters->acquire(kind, key);
}

bool countRelease(Resource kind, const std::string& key) {
    ResourceCounters* counters = ResourceCounters::current();
    return counters ? counters->release(kind, key) : true;
}

}  // namespace host
