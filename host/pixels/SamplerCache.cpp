#include "host/pixels/SamplerCache.h"

#include "host/pixels/PixelWorld.h"

#include <algorithm>
#include <cstring>
#include <new>
#include <vector>

namespace host {

namespace {

// Generations are unique across all caches, so a cache rebuilt at a freed cache's address
// never matches the old one's per-thread hits.
std::atomic<std::uint64_t> g_next_generation{1};

struct RecentHit {
    const SamplerCache* cache = nullptr;
    std::uint64_t generation = 0;
    std::uint64_t free_epoch = 0;
    const void* data = nullptr;
    A_long width = 0;
    A_long height = 0;
    A_long rowbytes = 0;
    const AreaSampler* sampler = nullptr;
};

// A render usually samples one or two sources (texture, reflection map, blur layers), so a
// few remembered hits per thread cover it.
constexpr unsigned kRecentHits = 4;
thread_local RecentHit t_recent[kRecentHits];
thread_local unsigned t_next_slot = 0;

// Tables of layer pixels, kept across render calls: every frame checks its texture out again,
// into a new world (a copy, or a view of the host's converted layer) that usually holds
// exactly the pixels of the last frame's. Comparing the
// pixels costs a fraction of a rebuild (a plain memory compare against a tight copy, instead
// of four double sums per pixel), and it keeps the reuse exact whatever wrote the world. The
// most recently used tables are kept up to a memory budget.
class KeptTables {
public:
    std::shared_ptr<const AreaSampler> get(const PF_EffectWorld& world, PF_PixelFormat format) {
        const std::size_t row_bytes = static_cast<std::size_t>(world.width) * bytesPerPixel(format);
        {
            std::lock_guard<std::mutex> lock(mutex_);
            for (Kept& kept : kept_) {
                if (kept.width == world.width && kept.height == world.height && kept.format == format &&
                    samePixels(world, row_bytes, kept.pixels)) {
                    kept.last_use = ++uses_;
                    return kept.sampler;
                }
            }
        }
        // Built outside the lock, so renders of other sources are not held up.
        Kept fresh{world.width, world.height, format, tightCopy(world, row_bytes),
                   std::make_shared<const AreaSampler>(world, format), 0};
        const std::shared_ptr<const AreaSampler> sampler = fresh.sampler;
        std::lock_guard<std::mutex> lock(mutex_);
        fresh.last_use = ++uses_;
        kept_.push_back(std::move(fresh));
        evictBeyondBudget();
        return sampler;
    }

private:
    struct Kept {
        A_long width;
        A_long height;
        PF_PixelFormat format;
        std::vector<char> pixels;  // rows without padding
        std::shared_ptr<const AreaSampler> sampler;
        std::uint64_t last_use;
        std::size_t bytes() const { return pixels.size() + sampler->tableBytes(); }
    };

    // Enough for a few 2048 x 2048 textures, or many smaller ones.
    static constexpr std::size_t kBudgetBytes = std::size_t(512) << 20;

    static bool samePixels(const PF_EffectWorld& world, std::size_t row_bytes, const std::vector<char>& pixels) {
        for (A_long j = 0; j < world.height; ++j)
            if (std::memcmp(worldRow<char>(world, j), pixels.data() + j * row_bytes, row_bytes) != 0) return false;
        return true;
    }

    static std::vector<char> tightCopy(const PF_EffectWorld& world, std::size_t row_bytes) {
        std::vector<char> pixels(row_bytes * static_cast<std::size_t>(world.height));
        for (A_long j = 0; j < world.height; ++j)
            std::memcpy(pixels.data() + j * row_bytes, worldRow<char>(world, j), row_bytes);
        return pixels;
    }

    void evictBeyondBudget() {
        std::size_t total = 0;
        for (const Kept& kept : kept_) total += kept.bytes();
        // The newest entry stays even alone over the budget; it is in use.
        while (total > kBudgetBytes && kept_.size() > 1) {
            auto oldest = std::min_element(kept_.begin(), kept_.end(),
                                           [](const Kept& a, const Kept& b) { return a.last_use < b.last_use; });
            total -= oldest->bytes();
            kept_.erase(oldest);
        }
    }

    std::mutex mutex_;
    std::vector<Kept> kept_;
    std::uint64_t uses_ = 0;
};

KeptTables& keptTables() {
    static KeptTables tables;
    return tables;
}

std::shared_ptr<const AreaSampler> makeSampler(const PF_EffectWorld& world, PF_PixelFormat format) {
    if (world.data && world.width > 0 && world.height > 0 && holdsLayerPixels(world))
        return keptTables().get(world, format);
    return std::make_shared<const AreaSampler>(world, format);
}

}  // namespace

SamplerCache::SamplerCache() : generation_(g_next_generation.fetch_add(1)) {}

SamplerCache::~SamplerCache() = default;

void SamplerCache::bumpGeneration() {
    generation_.store(g_next_generation.fetch_add(1), std::memory_order_release);
}

const AreaSampler& SamplerCache::get(const PF_EffectWorld& world) {
    const std::uint64_t generation = generation_.load(std::memory_order_acquire);
    const std::uint64_t epoch = worldFreeEpoch();
    for (const RecentHit& hit : t_recent) {
        if (hit.cache == this && hit.generation == generation && hit.free_epoch == epoch &&
            hit.data == world.data && hit.width == world.width && hit.height == world.height &&
            hit.rowbytes == world.rowbytes)
            return *hit.sampler;
    }
    const AreaSampler& sampler = lookupOrBuild(world);
    t_recent[t_next_slot++ % kRecentHits] =
        RecentHit{this, generation, epoch, world.data, world.width, world.height, world.rowbytes, &sampler};
    return sampler;
}

const AreaSampler& SamplerCache::lookupOrBuild(const PF_EffectWorld& world) {
    const Key key{world.data, world.width, world.height, world.rowbytes, worldPixelFormat(world),
                  worldSerial(world)};
    Entry* entry = nullptr;
    {
        std::shared_lock<std::shared_mutex> lock(mutex_);
        auto it = entries_.find(key);
        if (it != entries_.end()) entry = it->second.get();
    }
    if (!entry) {
        std::unique_lock<std::shared_mutex> lock(mutex_);
        std::unique_ptr<Entry>& slot = entries_[key];
        if (!slot) slot = std::make_unique<Entry>();
        entry = slot.get();
    }
    // One thread builds; the others wait here. A failed build (bad_alloc) leaves the flag
    // unset, so a later request tries again.
    std::call_once(entry->built, [&] {
        entry->sampler = makeSampler(world, key.format);
        builds_.fetch_add(1, std::memory_order_relaxed);
    });
    return *entry->sampler;
}

void SamplerCache::invalidate(const void* data) {
    std::unique_lock<std::shared_mutex> lock(mutex_);
    for (auto it = entries_.begin(); it != entries_.end();) {
        if (it->first.data == data)
            it = entries_.erase(it);
        else
            ++it;
    }
    bumpGeneration();
}

void SamplerCache::clear() {
    std::unique_lock<std::shared_mutex> lock(mutex_);
    entries_.clear();
    bumpGeneration();
}

std::size_t SamplerCache::size() const {
    std::shared_lock<std::shared_mutex> lock(mutex_);
    return entries_.size();
}

namespace {

// The world a sample reads, or null with `*answer` set: an error for a call without a source
// or destination, or none (and a transparent pixel in `*dst`) for an empty source.
template <class Pixel>
const PF_EffectWorld* sampleSource(const PF_SampPB* params, Pixel* dst, PF_Err* answer) {
    *answer = PF_Err_NONE;
    if (!params || !params->src || !dst) {
        *answer = PF_Err_BAD_CALLBACK_PARAM;
        return nullptr;
    }
    if (!params->src->data) {
        *dst = Pixel{};
        return nullptr;
    }
    return params->src;
}

// A sample read straight from the source world by `read(world)`.
template <class Pixel, class Read>
PF_Err sampleWorld(const PF_SampPB* params, Pixel* dst, Read read) {
    PF_Err answer;
    const PF_EffectWorld* src = sampleSource(params, dst, &answer);
    if (!src) return answer;
    if (worldPixelFormat(*src) != PixelFormatOf<Pixel>::value) return PF_Err_BAD_CALLBACK_PARAM;
    *dst = read(*src);
    return PF_Err_NONE;
}

}  // namespace

template <class Pixel>
PF_Err sampleNearest(PF_Fixed x, PF_Fixed y, const PF_SampPB* params, Pixel* dst) {
    return sampleWorld(params, dst, [&](const PF_EffectWorld& src) { return nearestSample<Pixel>(src, x, y); });
}

template <class Pixel>
PF_Err sampleSubpixel(PF_Quality quality, PF_Fixed x, PF_Fixed y, const PF_SampPB* params, Pixel* dst) {
    if (quality == PF_Quality_LO) return sampleNearest(x, y, params, dst);
    return sampleWorld(params, dst, [&](const PF_EffectWorld& src) { return bilinearSample<Pixel>(src, x, y); });
}

template <class Pixel>
PF_Err sampleArea(SamplerCache& cache, PF_Quality quality, PF_Fixed x, PF_Fixed y, const PF_SampPB* params,
                  Pixel* dst) {
    if (quality == PF_Quality_LO) return sampleNearest(x, y, params, dst);
    PF_Err answer;
    const PF_EffectWorld* src = sampleSource(params, dst, &answer);
    if (!src) return answer;
    try {
        const AreaSampler& sampler = cache.get(*src);
        if (sampler.format() != PixelFormatOf<Pixel>::value) return PF_Err_BAD_CALLBACK_PARAM;
        *dst = sampler.sample<Pixel>(x, y, params->x_radius, params->y_radius);
    } catch (const std::bad_alloc&) {
        return PF_Err_OUT_OF_MEMORY;
    }
    return PF_Err_NONE;
}

#define ORBIVANE_INSTANTIATE_SAMPLING(Pixel)                                                               \
    template PF_Err sampleArea<Pixel>(SamplerCache&, PF_Quality, PF_Fixed, PF_Fixed, const PF_SampPB*, Pixel*); \
    template PF_Err sampleSubpixel<Pixel>(PF_Quality, PF_Fixed, PF_Fixed, const PF_SampPB*, Pixel*);           \
    template PF_Err sampleNearest<Pixel>(PF_Fixed, PF_Fixed, const PF_SampPB*, Pixel*);

ORBIVANE_INSTANTIATE_SAMPLING(PF_Pixel)
ORBIVANE_INSTANTIATE_SAMPLING(PF_Pixel16)
ORBIVANE_INSTANTIATE_SAMPLING(PF_PixelFloat)
#undef ORBIVANE_INSTANTIATE_SAMPLING

}  // namespace host
