#pragma once

// Expected sizes, alignments and offsets of the host API records on LP64 (identical on
// Windows x64). The host and the module exchange these records by pointer, so every byte
// position must match what the real host was built with.

#include <cstddef>

#include "AE_Effect.h"
#include "AE_EffectCB.h"
#include "AE_EffectCBSuites.h"
#include "AE_EffectSuites.h"
#include "AE_GeneralPlug.h"
#include "SPBasic.h"

namespace hostapi_test {

struct TypeLayout {
    const char* type;
    std::size_t size;
    std::size_t expected_size;
    std::size_t align;
    std::size_t expected_align;
};

struct FieldOffset {
    const char* field;
    std::size_t offset;
    std::size_t expected_offset;
};

#define HOSTAPI_TYPE(T, SIZE, ALIGN) \
    TypeLayout { #T, sizeof(T), SIZE, alignof(T), ALIGN }
#define HOSTAPI_FIELD(T, F, OFFSET) \
    FieldOffset { #T "::" #F, offsetof(T, F), OFFSET }
// Suite tables are arrays of 8-byte function pointers: member N (1-based) sits at 8 * (N - 1).
#define HOSTAPI_SLOT(T, F, N) \
    FieldOffset { #T "::" #F, offsetof(T, F), 8u * ((N) - 1u) }

extern const TypeLayout kTypeLayouts[];
extern const std::size_t kTypeLayoutCount;
extern const FieldOffset kFieldOffsets[];
extern const std::size_t kFieldOffsetCount;
extern const FieldOffset kSuiteSlots[];
extern const std::size_t kSuiteSlotCount;

}  // namespace hostapi_test
