#include "host/api/SuiteRegistry.h"

#include "host/checks/FaultInjector.h"
#include "host/checks/ResourceCounters.h"

namespace host {

std::string SuiteRegistry::key(const std::string& name, std::int32_t version) {
    return name + " v" + std::to_string(version);
}

void SuiteRegistry::add(const std::string& name, std::int32_t version, const void* table) {
    std::lock_guard<std::mutex> lock(mutex_);
    tables_[{name, version}] = table;
}

bool SuiteRegistry::has(const std::string& name, std::int32_t version) const {
    return find(name, version) != nullptr;
}

const void* SuiteRegistry::find(const std::string& name, std::int32_t version) const {
    std::lock_guard<std::mutex> lock(mutex_);
    auto it = tables_.find({name, version});
    return it == tables_.end() ? nullptr : it->second;
}

std::int32_t SuiteRegistry::acquire(const char* name, std::int32_t version, const void** suite) {
    if (suite) *suite = nullptr;
    if (!name || !suite) return kSPSuiteNotFoundError;
    if (std::int32_t err = HOST_FAULT_POINT("AcquireSuite")) return err;
    const void* table = find(name, version);
    if (!table) return kSPSuiteNotFoundError;
    *suite = table;
    countAcquire(Resource::Suite, key(name, version));
    return 0;
}

std::int32_t SuiteRegistry::release(const char* name, std::int32_t version) {
    if (!name) return kSPSuiteNotFoundError;
    if (std::int32_t err = HOST_FAULT_POINT("ReleaseSuite")) return err;
    if (!find(name, version)) return kSPSuiteNotFoundError;
    return countRelease(Resource::Suite, key(name, version)) ? 0 : kSPSuiteNotFoundError;
}

}  // namespace host
