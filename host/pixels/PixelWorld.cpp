#include "host/pixels/PixelWorld.h"

#include <atomic>
#include <cstdlib>
#include <cstring>
#include <mutex>
#include <shared_mutex>
#include <new>
#include <unordered_set>

namespace host {

namespace {

// Precedes the pixels of every world in the same allocation. reserved1 of the world points
// here, which is how copies of the struct still find their format. (reserved0 is not ours: in a
// layer parameter's value it carries the chosen layer's AEGP handle.)
struct WorldHeader {
    std::uint64_t magic;
    std::uint64_t serial;
    PF_PixelFormat format;
    std::size_t pixel_bytes;
    std::atomic<bool> layer_pixels{false};  // see markLayerPixels
};

constexpr std::uint64_t kHeaderMagic = 0x4F5242574F524C44ull;  // "ORBWORLD"
// The header block is padded to a multiple of 16 and the pixels start 4 bytes later: aligned
// enough for float channels, never 16-byte aligned.
constexpr std::size_t kHeaderBlock = (sizeof(WorldHeader) + 15) / 16 * 16;
constexpr std::size_t kPixelMisalignment = 4;

std::atomic<std::uint64_t> g_next_serial{1};
std::atomic<std::uint64_t> g_free_epoch{0};

// Headers of live worlds. Consulted before a reserved1 pointer is ever dereferenced, so a
// struct the module filled itself (or a freed world) is recognised instead of read.
// Lookups (format queries, possibly per sample) share the lock; only allocation and freeing
// take it exclusively.
struct Registry {
    std::shared_mutex mutex;
    std::unordered_set<const WorldHeader*> live;
};

Registry& registry() {
    static Registry instance;
    return instance;
}

const WorldHeader* liveHeader(const PF_EffectWorld& world) {
    const auto* header = static_cast<const WorldHeader*>(world.reserved1);
    if (!header) return nullptr;
    Registry& reg = registry();
    std::shared_lock<std::shared_mutex> lock(reg.mutex);
    if (reg.live.count(header) == 0 || header->magic != kHeaderMagic) return nullptr;
    return header;
}

WorldHeader* newHeader(void* block, PF_PixelFormat format, std::size_t pixel_bytes) {
    return new (block) WorldHeader{kHeaderMagic, g_next_serial.fetch_add(1), format, pixel_bytes};
}

void registerHeader(const WorldHeader* header) {
    Registry& reg = registry();
    std::unique_lock<std::shared_mutex> lock(reg.mutex);
    reg.live.insert(header);
}

}  // namespace

std::size_t bytesPerPixel(PF_PixelFormat format) {
    switch (format) {
        case PF_PixelFormat_ARGB32: return sizeof(PF_Pixel);
        case PF_PixelFormat_ARGB64: return sizeof(PF_Pixel16);
        case PF_PixelFormat_ARGB128: return sizeof(PF_PixelFloat);
        default: return 0;
    }
}

bool isSupportedFormat(PF_PixelFormat format) { return bytesPerPixel(format) != 0; }

A_long paddedRowBytes(A_long width, PF_PixelFormat format, A_long extra_row_bytes) {
    if (width <= 0) return 0;
    const std::size_t packed = static_cast<std::size_t>(width) * bytesPerPixel(format);
    const std::size_t rounded = (packed + 63) / 64 * 64;
    const std::size_t extra = static_cast<std::size_t>(extra_row_bytes < 0 ? 0 : extra_row_bytes);
    return static_cast<A_long>(rounded + (extra + 3) / 4 * 4);
}

PF_Err allocateWorld(A_long width, A_long height, PF_PixelFormat format, const WorldOptions& options,
                     PF_EffectWorld* world) {
    if (!world) return PF_Err_BAD_CALLBACK_PARAM;
    *world = PF_EffectWorld{};
    if (!isSupportedFormat(format) || width < 0 || height < 0) return PF_Err_BAD_CALLBACK_PARAM;
    if (width > kMaxWorldExtent || height > kMaxWorldExtent) return PF_Err_OUT_OF_MEMORY;

    // An empty world has no pixels: data NULL and rowbytes 0, but it still records its format.
    const bool empty = width == 0 || height == 0;
    const A_long rowbytes = empty ? 0 : paddedRowBytes(width, format, options.extra_row_bytes);
    const std::size_t pixel_bytes = static_cast<std::size_t>(rowbytes) * static_cast<std::size_t>(height);

    char* block = static_cast<char*>(std::malloc(kHeaderBlock + kPixelMisalignment + pixel_bytes));
    if (!block) return PF_Err_OUT_OF_MEMORY;

    WorldHeader* header = newHeader(block, format, pixel_bytes);
    char* pixels = block + kHeaderBlock + kPixelMisalignment;
    if (options.initial != WorldOptions::Initial::Unset)
        std::memset(pixels, options.initial == WorldOptions::Initial::Clear ? 0 : options.poison, pixel_bytes);

    world->reserved1 = header;
    PF_WorldFlags flags = 0;
    if (format == PF_PixelFormat_ARGB64) flags |= PF_WorldFlag_DEEP;
    if (options.writeable) flags |= PF_WorldFlag_WRITEABLE;
    world->world_flags = flags;
    world->data = empty ? nullptr : reinterpret_cast<PF_PixelPtr>(pixels);
    world->rowbytes = rowbytes;
    world->width = width;
    world->height = height;
    world->extent_hint.left = 0;
    world->extent_hint.top = 0;
    world->extent_hint.right = width;
    world->extent_hint.bottom = height;
    world->pix_aspect_ratio.num = 1;
    world->pix_aspect_ratio.den = 1;

    registerHeader(header);
    return PF_Err_NONE;
}

PF_Err viewWorld(const PF_EffectWorld& source, PF_EffectWorld* world) {
    if (!world) return PF_Err_BAD_CALLBACK_PARAM;
    *world = PF_EffectWorld{};
    const WorldHeader* shown = liveHeader(source);
    if (!shown) return PF_Err_BAD_CALLBACK_PARAM;
    void* block = std::malloc(kHeaderBlock);
    if (!block) return PF_Err_OUT_OF_MEMORY;
    WorldHeader* header = newHeader(block, shown->format, shown->pixel_bytes);
    *world = source;
    world->reserved1 = header;
    world->world_flags &= ~PF_WorldFlag_WRITEABLE;
    registerHeader(header);
    return PF_Err_NONE;
}

PF_Err freeWorld(PF_EffectWorld* world) {
    if (!world) return PF_Err_BAD_CALLBACK_PARAM;
    auto* header = static_cast<WorldHeader*>(world->reserved1);
    {
        Registry& reg = registry();
        std::unique_lock<std::shared_mutex> lock(reg.mutex);
        if (!header || reg.live.erase(header) == 0) return PF_Err_BAD_CALLBACK_PARAM;
    }
    header->magic = 0;
    std::free(header);
    g_free_epoch.fetch_add(1, std::memory_order_release);
    *world = PF_EffectWorld{};
    return PF_Err_NONE;
}

bool isLiveWorld(const PF_EffectWorld& world) { return liveHeader(world) != nullptr; }

PF_PixelFormat worldPixelFormat(const PF_EffectWorld& world) {
    if (const WorldHeader* header = liveHeader(world)) return header->format;
    return (world.world_flags & PF_WorldFlag_DEEP) ? PF_PixelFormat_ARGB64 : PF_PixelFormat_ARGB32;
}

std::size_t worldPixelBytes(const PF_EffectWorld& world) {
    const WorldHeader* header = liveHeader(world);
    return header ? header->pixel_bytes : 0;
}

std::uint64_t worldSerial(const PF_EffectWorld& world) {
    const WorldHeader* header = liveHeader(world);
    return header ? header->serial : 0;
}

void markLayerPixels(const PF_EffectWorld& world) {
    if (const WorldHeader* header = liveHeader(world))
        const_cast<WorldHeader*>(header)->layer_pixels.store(true, std::memory_order_release);
}

bool holdsLayerPixels(const PF_EffectWorld& world) {
    const WorldHeader* header = liveHeader(world);
    return header && header->layer_pixels.load(std::memory_order_acquire);
}

std::uint64_t worldFreeEpoch() { return g_free_epoch.load(std::memory_order_acquire); }

std::size_t liveWorldCount() {
    Registry& reg = registry();
    std::shared_lock<std::shared_mutex> lock(reg.mutex);
    return reg.live.size();
}

}  // namespace host
