#pragma once

// The host's in-data wrapped for one command: the three sampling suites, and the module's only
// source of heap memory (host handles).

#include <cstddef>
#include <cstdint>
#include <new>

#include "AE_MyLib/AEObject/AEO_Base.h"

namespace AEO {

class InData : public ObjectBase {
public:
    // Bytes in front of every block from malloc(): they hold the block's host handle.
    static constexpr std::size_t kHandleHeaderBytes = 8;

    // Acquires the 8-bit, 16-bit and float sampling suites (version 1), in that order; the
    // destructor releases them in reverse order. A failure is kept in that suite's holder.
    explicit InData(PF_InData* in_data);

    PF_InData* in_data() const { return _in_data; }
    const SPBasicSuite* pica() const { return _in_data ? _in_data->pica_basicP : nullptr; }

    const Suite<PF_Sampling8Suite1>& sampling8() const { return _sampling8; }
    const Suite<PF_Sampling16Suite1>& sampling16() const { return _sampling16; }
    const Suite<PF_SamplingFloatSuite1>& samplingFloat() const { return _sampling_float; }

    // size bytes of host handle memory, locked; null when the host has none or there is no
    // in-data. The handle lives in the kHandleHeaderBytes just below the returned address.
    void* malloc(A_u_longlong size) const;
    // Unlocks and disposes of the handle behind a block from malloc(); null is ignored.
    void free(void* p) const;

    // The host handle behind a block from malloc().
    static PF_Handle handle_of(const void* p);
    // The block inside a locked handle made by malloc(), i.e. the inverse of handle_of().
    static void* block_in(void* locked_handle_data);

    // A copy of tmpl at an address that is a multiple of alignment (a power of two), in host
    // memory; null on failure. The raw block's address is kept in the pointer just below.
    template <class T>
    T* aligned_new(const T& tmpl, std::size_t alignment) const
    {
        void* raw = malloc(sizeof(T) + alignment + 7);
        if (!raw) {
            return nullptr;
        }
        const std::uintptr_t lowest = reinterpret_cast<std::uintptr_t>(raw) + sizeof(void*);
        const std::uintptr_t aligned = (lowest + alignment - 1) & ~std::uintptr_t(alignment - 1);
        reinterpret_cast<void**>(aligned)[-1] = raw;
        return new (reinterpret_cast<void*>(aligned)) T(tmpl);
    }
    // Frees a block from aligned_new(); null, a null raw pointer or no in-data are ignored.
    void aligned_free(void* p) const;

private:
    PF_InData* _in_data;
    // Declared in acquisition order, so that destruction releases them in reverse.
    Suite<PF_Sampling8Suite1> _sampling8;
    Suite<PF_Sampling16Suite1> _sampling16;
    Suite<PF_SamplingFloatSuite1> _sampling_float;
};

}  // namespace AEO
