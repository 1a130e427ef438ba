#pragma once
// The host's table of function suites, looked up by (name, version) as the PICA basic suite
// does. Host parts register their suite tables once; the module acquires and releases them.
// Every acquisition is counted per suite so unreleased suites show in the leak report.

#include <cstdint>
#include <map>
#include <mutex>
#include <string>
#include <utility>

#include "SPErrorCodes.h"
#include "host/checks/SessionCurrent.h"

namespace host {

class SuiteRegistry : public SessionCurrent<SuiteRegistry> {
public:
    SuiteRegistry() = default;
    SuiteRegistry(const SuiteRegistry&) = delete;
    SuiteRegistry& operator=(const SuiteRegistry&) = delete;

    // Registers (or replaces) the function table served under (name, version).
    void add(const std::string& name, std::int32_t version, const void* table);
    bool has(const std::string& name, std::int32_t version) const;
    const void* find(const std::string& name, std::int32_t version) const;

    // AcquireSuite: 0 and the table in *suite, or kSPSuiteNotFoundError and null.
    std::int32_t acquire(const char* name, std::int32_t version, const void** suite);
    // ReleaseSuite: 0, or kSPSuiteNotFoundError for a suite that is not held.
    std::int32_t release(const char* name, std::int32_t version);

    static std::string key(const std::string& name, std::int32_t version);

private:
    mutable std::mutex mutex_;
    std::map<std::pair<std::string, std::int32_t>, const void*> tables_;
};

}  // namespace host
