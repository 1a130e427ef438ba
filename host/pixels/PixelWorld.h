#pragma once
// Effect worlds (pixel buffers) as the emulated host hands them out.
//
// Rows are deliberately padded and the first pixel deliberately sits 4 bytes past a 16-byte
// boundary, so module code that ignores rowbytes or assumes SIMD alignment misbehaves here
// instead of only on a customer's machine. Every world made here records its pixel format,
// which the world struct itself cannot carry (only the DEEP flag), so the format can be asked
// for later from any copy of the struct.

#include "AE_Effect.h"
#include "AE_EffectPixelFormat.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <utility>

namespace host {

// Largest width or height of a world, in pixels.
constexpr A_long kMaxWorldExtent = 30000;

// Bytes of one pixel of `format`; 0 when the format is not one of ARGB32 / ARGB64 / ARGB128.
std::size_t bytesPerPixel(PF_PixelFormat format);
bool isSupportedFormat(PF_PixelFormat format);

struct WorldOptions {
    // What the new world's bytes, padding included, hold.
    enum class Initial {
        Clear,   // transparent black
        Poison,  // every byte `poison`, as undefined memory would be
        Unset,   // whatever the allocator left: for a caller that writes every pixel itself
    };
    Initial initial = Initial::Clear;
    std::uint8_t poison = 0xA7;
    // Added after rounding a row up to 64 bytes. Give input and output different values so that
    // code mixing up their rowbytes is caught. Rounded up to a multiple of 4 bytes.
    A_long extra_row_bytes = 16;
    // Sets PF_WorldFlag_WRITEABLE (the output and the effect's own worlds).
    bool writeable = false;
};

// Row stride for a world of `width` pixels: width × bytes per pixel, rounded up to 64, plus
// the extra padding. 0 for a zero width.
A_long paddedRowBytes(A_long width, PF_PixelFormat format, A_long extra_row_bytes);

// Fills `*world` with a new world. Errors: PF_Err_BAD_CALLBACK_PARAM for a null world, an
// unknown format or a negative size; PF_Err_OUT_OF_MEMORY above kMaxWorldExtent or when memory
// runs out (the struct is then cleared). A 0 × 0 world succeeds with data NULL and rowbytes 0.
PF_Err allocateWorld(A_long width, A_long height, PF_PixelFormat format, const WorldOptions& options,
                     PF_EffectWorld* world);

// Fills `*world` with a world that shows the pixels of `source` (a live world made here)
// without copying them: a registration and serial of its own, the source's format, size,
// rowbytes and pixels, never WRITEABLE. The source must outlive it; freeWorld releases the
// view alone. PF_Err_BAD_CALLBACK_PARAM for a source this file did not make.
PF_Err viewWorld(const PF_EffectWorld& source, PF_EffectWorld* world);

// Releases a world made by allocateWorld or viewWorld and clears the struct. Returns
// PF_Err_BAD_CALLBACK_PARAM (and touches nothing) for a world this file did not make or one
// already freed.
PF_Err freeWorld(PF_EffectWorld* world);

// True when `world` (or a copy of it) was made by allocateWorld and is still alive.
bool isLiveWorld(const PF_EffectWorld& world);

// The pixel format recorded at allocation. For a world made elsewhere: ARGB64 when it has the
// DEEP flag, else ARGB32 (a float world cannot be recognised from the struct alone).
PF_PixelFormat worldPixelFormat(const PF_EffectWorld& world);

// Bytes of pixel memory held by a live world (rowbytes × height), 0 otherwise.
std::size_t worldPixelBytes(const PF_EffectWorld& world);

// A number unique to each allocation in this process (never reused, unlike addresses);
// 0 for a world not made by allocateWorld or already freed.
std::uint64_t worldSerial(const PF_EffectWorld& world);

// Marks a world the host filled with a layer's source pixels. Such pixels usually come back
// unchanged in the next frame's checkout, so samplers may keep what they derive from them
// (after checking that the pixels are indeed the same). No effect on other worlds.
void markLayerPixels(const PF_EffectWorld& world);
bool holdsLayerPixels(const PF_EffectWorld& world);

// Number of worlds currently allocated in this process (for leak checks).
std::size_t liveWorldCount();

// Changes every time any world is freed: lock-free caches of per-world data compare it to
// notice that an address they remember may since have been reused.
std::uint64_t worldFreeEpoch();

// The pixel type of each format.
template <class Pixel>
struct PixelFormatOf;
template <>
struct PixelFormatOf<PF_Pixel> {
    static constexpr PF_PixelFormat value = PF_PixelFormat_ARGB32;
};
template <>
struct PixelFormatOf<PF_Pixel16> {
    static constexpr PF_PixelFormat value = PF_PixelFormat_ARGB64;
};
template <>
struct PixelFormatOf<PF_PixelFloat> {
    static constexpr PF_PixelFormat value = PF_PixelFormat_ARGB128;
};

// Empty value standing for a pixel type in dispatchPixelType.
template <class Pixel>
struct PixelTag {
    using type = Pixel;
};

// Calls fn(PixelTag<Pixel>{}) with the pixel type of `format`. Returns false (without calling)
// for an unsupported format.
template <class Fn>
bool dispatchPixelType(PF_PixelFormat format, Fn&& fn) {
    switch (format) {
        case PF_PixelFormat_ARGB32: fn(PixelTag<PF_Pixel>{}); return true;
        case PF_PixelFormat_ARGB64: fn(PixelTag<PF_Pixel16>{}); return true;
        case PF_PixelFormat_ARGB128: fn(PixelTag<PF_PixelFloat>{}); return true;
        default: return false;
    }
}

// Typed access; the caller ensures the pixel type matches the world's format and the
// coordinates lie inside it.
template <class Pixel>
Pixel* worldRow(const PF_EffectWorld& world, A_long y) {
    return reinterpret_cast<Pixel*>(reinterpret_cast<char*>(world.data) +
                                    static_cast<std::ptrdiff_t>(y) * world.rowbytes);
}

template <class Pixel>
Pixel& worldPixel(const PF_EffectWorld& world, A_long x, A_long y) {
    return worldRow<Pixel>(world, y)[x];
}

// Owns one world and frees it on destruction. Movable, not copyable.
class OwnedWorld {
public:
    OwnedWorld() : world_{} {}
    ~OwnedWorld() { reset(); }
    OwnedWorld(const OwnedWorld&) = delete;
    OwnedWorld& operator=(const OwnedWorld&) = delete;
    OwnedWorld(OwnedWorld&& other) noexcept : world_(other.world_), source_(std::move(other.source_)) {
        other.world_ = PF_EffectWorld{};
    }
    OwnedWorld& operator=(OwnedWorld&& other) noexcept {
        if (this != &other) {
            reset();
            world_ = other.world_;
            source_ = std::move(other.source_);
            other.world_ = PF_EffectWorld{};
        }
        return *this;
    }

    // Replaces the held world with a new one; on error the holder is left empty.
    PF_Err allocate(A_long width, A_long height, PF_PixelFormat format, const WorldOptions& options = {}) {
        reset();
        return allocateWorld(width, height, format, options, &world_);
    }
    // Replaces the held world with a view of `source`'s pixels (viewWorld), keeping the source
    // alive as long as the view.
    PF_Err view(std::shared_ptr<const OwnedWorld> source) {
        reset();
        const PF_Err err = viewWorld(source->get(), &world_);
        if (err == PF_Err_NONE) source_ = std::move(source);
        return err;
    }
    void reset() {
        if (isLiveWorld(world_)) freeWorld(&world_);
        world_ = PF_EffectWorld{};
        source_.reset();
    }

    PF_EffectWorld& get() { return world_; }
    const PF_EffectWorld& get() const { return world_; }
    PF_EffectWorld* operator->() { return &world_; }
    const PF_EffectWorld* operator->() const { return &world_; }
    PF_PixelFormat format() const { return worldPixelFormat(world_); }

private:
    PF_EffectWorld world_;
    std::shared_ptr<const OwnedWorld> source_;  // the pixels a view shows
};

}  // namespace host
