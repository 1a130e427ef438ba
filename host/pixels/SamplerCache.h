#pragma once
// Area samplers shared by all render threads, each built once per source world, and the
// host's three sampling calls on top of them.
//
// The first thread to sample a world builds its table while any other thread asking for the
// same world waits (a world holding a layer's source pixels takes the table of an earlier
// world with byte-for-byte the same pixels instead, if one is still kept); afterwards a thread finds the sampler through a small per-thread memory of
// recent hits without taking any lock. A sampler stays valid until its world's entry is
// invalidated, the cache is cleared or destroyed: the host must not do that while a render
// that samples the world is running, and must invalidate a world whose pixels it rewrites.

#include "host/pixels/AreaSampler.h"

#include "AE_EffectCB.h"

#include <atomic>
#include <cstdint>
#include <map>
#include <memory>
#include <mutex>
#include <shared_mutex>
#include <tuple>

namespace host {

class SamplerCache {
public:
    SamplerCache();
    ~SamplerCache();
    SamplerCache(const SamplerCache&) = delete;
    SamplerCache& operator=(const SamplerCache&) = delete;

    // The sampler of `world` in its recorded pixel format, built on first use. Throws
    // std::bad_alloc when the table does not fit in memory.
    const AreaSampler& get(const PF_EffectWorld& world);

    // Drops every sampler built over pixels at `data`.
    void invalidate(const void* data);
    void clear();

    // Samplers held, and tables built so far (for tests and statistics).
    std::size_t size() const;
    std::size_t buildCount() const { return builds_.load(std::memory_order_relaxed); }

private:
    struct Key {
        const void* data;
        A_long width;
        A_long height;
        A_long rowbytes;
        PF_PixelFormat format;
        // Allocation serial: a freed world's address reused by a new world is a new key.
        std::uint64_t serial;
        bool operator<(const Key& o) const {
            return std::tie(data, width, height, rowbytes, format, serial) <
                   std::tie(o.data, o.width, o.height, o.rowbytes, o.format, o.serial);
        }
    };
    struct Entry {
        std::once_flag built;
        std::shared_ptr<const AreaSampler> sampler;
    };

    const AreaSampler& lookupOrBuild(const PF_EffectWorld& world);
    void bumpGeneration();

    mutable std::shared_mutex mutex_;
    std::map<Key, std::unique_ptr<Entry>> entries_;
    // Per-thread hits remember the generation they were made in; a change forgets them all.
    std::atomic<std::uint64_t> generation_;
    std::atomic<std::size_t> builds_{0};
};

// The host's sampling calls, shaped like the suite functions minus the effect reference.
// Errors: PF_Err_BAD_CALLBACK_PARAM for a null parameter block, source or destination, or a
// source whose pixel format is not Pixel's; PF_Err_OUT_OF_MEMORY when a table cannot be built.
// A source without pixels (a layer set to None) samples as transparent black. At
// PF_Quality_LO area and subpixel sampling fall back to the nearest pixel.
template <class Pixel>
PF_Err sampleArea(SamplerCache& cache, PF_Quality quality, PF_Fixed x, PF_Fixed y, const PF_SampPB* params,
                  Pixel* dst);
template <class Pixel>
PF_Err sampleSubpixel(PF_Quality quality, PF_Fixed x, PF_Fixed y, const PF_SampPB* params, Pixel* dst);
template <class Pixel>
PF_Err sampleNearest(PF_Fixed x, PF_Fixed y, const PF_SampPB* params, Pixel* dst);

}  // namespace host
