#include "host/pixels/PixelWorld.h"

#include <gtest/gtest.h>

#include <cstdint>

namespace host {
namespace {

TEST(PixelWorld, BytesPerPixelOfEachFormat) {
    EXPECT_EQ(bytesPerPixel(PF_PixelFormat_ARGB32), 4u);
    EXPECT_EQ(bytesPerPixel(PF_PixelFormat_ARGB64), 8u);
    EXPECT_EQ(bytesPerPixel(PF_PixelFormat_ARGB128), 16u);
    EXPECT_EQ(bytesPerPixel(0), 0u);
}

TEST(PixelWorld, RowsArePaddedPastThe64ByteRounding) {
    // 10 pixels: 40, 80 and 160 bytes, rounded up to 64, 128, 192, then 16 more.
    EXPECT_EQ(paddedRowBytes(10, PF_PixelFormat_ARGB32, 16), 80);
    EXPECT_EQ(paddedRowBytes(10, PF_PixelFormat_ARGB64, 16), 144);
    EXPECT_EQ(paddedRowBytes(10, PF_PixelFormat_ARGB128, 16), 208);
    // A row that is already a multiple of 64 is still padded.
    EXPECT_EQ(paddedRowBytes(16, PF_PixelFormat_ARGB32, 16), 80);
    // Another padding for another world; odd paddings keep float channels aligned.
    EXPECT_EQ(paddedRowBytes(16, PF_PixelFormat_ARGB32, 48), 112);
    EXPECT_EQ(paddedRowBytes(16, PF_PixelFormat_ARGB32, 5), 72);
    EXPECT_EQ(paddedRowBytes(0, PF_PixelFormat_ARGB32, 16), 0);
}

TEST(PixelWorld, AllocatedWorldDescribesItself) {
    OwnedWorld w;
    WorldOptions options;
    options.writeable = true;
    ASSERT_EQ(w.allocate(10, 3, PF_PixelFormat_ARGB64, options), PF_Err_NONE);
    EXPECT_EQ(w->width, 10);
    EXPECT_EQ(w->height, 3);
    EXPECT_EQ(w->rowbytes, 144);
    EXPECT_EQ(w->world_flags, PF_WorldFlag_DEEP | PF_WorldFlag_WRITEABLE);
    EXPECT_EQ(w->extent_hint.right, 10);
    EXPECT_EQ(w->extent_hint.bottom, 3);
    EXPECT_EQ(w->pix_aspect_ratio.num, 1);
    EXPECT_EQ(w->pix_aspect_ratio.den, 1u);
    EXPECT_EQ(w.format(), PF_PixelFormat_ARGB64);
    EXPECT_EQ(worldPixelBytes(w.get()), 144u * 3u);
    // Only 16-bit worlds are deep.
    for (PF_PixelFormat format : {PF_PixelFormat_ARGB32, PF_PixelFormat_ARGB128}) {
        OwnedWorld other;
        ASSERT_EQ(other.allocate(4, 4, format), PF_Err_NONE);
        EXPECT_EQ(other->world_flags, 0) << format;
        EXPECT_EQ(other.format(), format);
    }
}

TEST(PixelWorld, PixelsAreAlignedForFloatsButNeverTo16Bytes) {
    for (PF_PixelFormat format : {PF_PixelFormat_ARGB32, PF_PixelFormat_ARGB64, PF_PixelFormat_ARGB128}) {
        OwnedWorld w;
        ASSERT_EQ(w.allocate(7, 5, format), PF_Err_NONE);
        for (A_long y = 0; y < 5; ++y) {
            const auto address = reinterpret_cast<std::uintptr_t>(worldRow<char>(w.get(), y));
            EXPECT_EQ(address % 16, 4u) << "format " << format << " row " << y;
        }
    }
}

TEST(PixelWorld, ClearOrPoisonFillCoversPaddingToo) {
    OwnedWorld cleared;
    ASSERT_EQ(cleared.allocate(5, 2, PF_PixelFormat_ARGB32), PF_Err_NONE);
    const auto* bytes = reinterpret_cast<const unsigned char*>(cleared->data);
    for (A_long i = 0; i < cleared->rowbytes * 2; ++i) ASSERT_EQ(bytes[i], 0) << i;

    OwnedWorld poisoned;
    WorldOptions options;
    options.clear = false;
    options.poison = 0x5A;
    ASSERT_EQ(poisoned.allocate(5, 2, PF_PixelFormat_ARGB128, options), PF_Err_NONE);
    bytes = reinterpret_cast<const unsigned char*>(poisoned->data);
    for (A_long i = 0; i < poisoned->rowbytes * 2; ++i) ASSERT_EQ(bytes[i], 0x5A) << i;
}

TEST(PixelWorld, EmptyWorldHasNoPixelsButKeepsItsFormat) {
    OwnedWorld w;
    ASSERT_EQ(w.allocate(0, 0, PF_PixelFormat_ARGB128), PF_Err_NONE);
    EXPECT_EQ(w->data, nullptr);
    EXPECT_EQ(w->rowbytes, 0);
    EXPECT_EQ(w.format(), PF_PixelFormat_ARGB128);
}

TEST(PixelWorld, BadRequestsAndSizesBeyondTheLimitAreRefused) {
    PF_EffectWorld w{};
    EXPECT_EQ(allocateWorld(-1, 4, PF_PixelFormat_ARGB32, {}, &w), PF_Err_BAD_CALLBACK_PARAM);
    EXPECT_EQ(allocateWorld(4, 4, 0x12345678, {}, &w), PF_Err_BAD_CALLBACK_PARAM);
    EXPECT_EQ(allocateWorld(4, 4, PF_PixelFormat_ARGB32, {}, nullptr), PF_Err_BAD_CALLBACK_PARAM);
    w.width = 99;
    EXPECT_EQ(allocateWorld(30001, 1, PF_PixelFormat_ARGB32, {}, &w), PF_Err_OUT_OF_MEMORY);
    EXPECT_EQ(w.width, 0) << "a failed allocation leaves a cleared struct";
    EXPECT_EQ(allocateWorld(1, 30001, PF_PixelFormat_ARGB32, {}, &w), PF_Err_OUT_OF_MEMORY);
    ASSERT_EQ(allocateWorld(30000, 1, PF_PixelFormat_ARGB32, {}, &w), PF_Err_NONE);
    EXPECT_EQ(freeWorld(&w), PF_Err_NONE);
}

TEST(PixelWorld, FreeingTracksLiveWorldsAndRefusesStrangers) {
    const std::size_t before = liveWorldCount();
    PF_EffectWorld w{};
    ASSERT_EQ(allocateWorld(8, 8, PF_PixelFormat_ARGB32, {}, &w), PF_Err_NONE);
    const PF_EffectWorld copy = w;
    EXPECT_EQ(liveWorldCount(), before + 1);
    EXPECT_TRUE(isLiveWorld(copy));
    EXPECT_EQ(freeWorld(&w), PF_Err_NONE);
    EXPECT_EQ(liveWorldCount(), before);
    EXPECT_FALSE(isLiveWorld(copy));
    PF_EffectWorld stale = copy;
    EXPECT_EQ(freeWorld(&stale), PF_Err_BAD_CALLBACK_PARAM) << "double free";

    PF_EffectWorld foreign{};
    foreign.world_flags = PF_WorldFlag_DEEP;
    EXPECT_EQ(freeWorld(&foreign), PF_Err_BAD_CALLBACK_PARAM);
    EXPECT_EQ(worldPixelFormat(foreign), PF_PixelFormat_ARGB64);
    foreign.world_flags = 0;
    EXPECT_EQ(worldPixelFormat(foreign), PF_PixelFormat_ARGB32);
}

TEST(PixelWorld, SerialsAreNeverReused) {
    OwnedWorld a, b;
    ASSERT_EQ(a.allocate(2, 2, PF_PixelFormat_ARGB32), PF_Err_NONE);
    const std::uint64_t first = worldSerial(a.get());
    const std::uint64_t epoch = worldFreeEpoch();
    a.reset();
    EXPECT_NE(worldFreeEpoch(), epoch);
    ASSERT_EQ(b.allocate(2, 2, PF_PixelFormat_ARGB32), PF_Err_NONE);
    EXPECT_NE(first, 0u);
    EXPECT_NE(worldSerial(b.get()), first);
}

TEST(PixelWorld, DispatchPicksThePixelTypeOfTheFormat) {
    std::size_t size = 0;
    EXPECT_TRUE(dispatchPixelType(PF_PixelFormat_ARGB64, [&](auto tag) { size = sizeof(typename decltype(tag)::type); }));
    EXPECT_EQ(size, sizeof(PF_Pixel16));
    EXPECT_FALSE(dispatchPixelType(0, [&](auto) { size = 0; }));
    EXPECT_EQ(size, sizeof(PF_Pixel16));
}

}  // namespace
}  // namespace host
