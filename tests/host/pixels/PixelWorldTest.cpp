#include "host/pixels/PixelWorld.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <memory>
#include <tuple>

namespace host {
namespace {

TEST(PixelWorld, RowsArePaddedPastThe64ByteRounding) {
    // 10 pixels: 40, 80 and 160 bytes, rounded up to 64, 128, 192, then 16 more.
    EXPECT_EQ(paddedRowBytes(10, PF_PixelFormat_ARGB32, 16), 80);
    EXPECT_EQ(paddedRowBytes(10, PF_PixelFormat_ARGB64, 16), 144);
    EXPECT_EQ(paddedRowBytes(10, PF_PixelFormat_ARGB128, 16), 208);
    EXPECT_EQ(paddedRowBytes(16, PF_PixelFormat_ARGB32, 16), 80);  // a multiple of 64 is still padded
    EXPECT_EQ(paddedRowBytes(16, PF_PixelFormat_ARGB32, 5), 72);   // odd paddings keep floats aligned
    EXPECT_EQ(paddedRowBytes(0, PF_PixelFormat_ARGB32, 16), 0);
}

TEST(PixelWorld, AllocatedWorldDescribesItselfAndOnlySixteenBitsAreDeep) {
    for (PF_PixelFormat format : {PF_PixelFormat_ARGB32, PF_PixelFormat_ARGB64, PF_PixelFormat_ARGB128}) {
        OwnedWorld w;
        WorldOptions options;
        options.writeable = true;
        ASSERT_EQ(w.allocate(10, 3, format, options), PF_Err_NONE);
        const PF_WorldFlags deep = format == PF_PixelFormat_ARGB64 ? PF_WorldFlags(PF_WorldFlag_DEEP) : 0;
        EXPECT_EQ(w->world_flags, deep | PF_WorldFlag_WRITEABLE) << format;
        EXPECT_EQ(w->extent_hint.right, 10);
        EXPECT_EQ(w->extent_hint.bottom, 3);
        EXPECT_EQ(w->pix_aspect_ratio.num, 1);  // square pixels
        EXPECT_EQ(w->pix_aspect_ratio.den, 1u);
        EXPECT_EQ(w.format(), format);
        EXPECT_EQ(worldPixelBytes(w.get()), std::size_t(w->rowbytes) * 3u);
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
    for (bool clear : {true, false}) {
        OwnedWorld w;
        WorldOptions options;
        options.initial = clear ? WorldOptions::Initial::Clear : WorldOptions::Initial::Poison;
        options.poison = 0x5A;
        ASSERT_EQ(w.allocate(5, 2, PF_PixelFormat_ARGB128, options), PF_Err_NONE);
        const auto* bytes = reinterpret_cast<const unsigned char*>(w->data);
        for (A_long i = 0; i < w->rowbytes * 2; ++i) ASSERT_EQ(bytes[i], clear ? 0 : 0x5A) << i;
    }
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

// A view shares the pixels and nothing else: freeing it leaves them to their owner, and it is
// counted, read-only and refused for a world the host did not make.
TEST(PixelWorld, ViewShowsTheSourcePixelsAndIsAWorldOfItsOwn) {
    auto source = std::make_shared<OwnedWorld>();
    WorldOptions writeable;
    writeable.writeable = true;
    ASSERT_EQ(source->allocate(6, 4, PF_PixelFormat_ARGB64, writeable), PF_Err_NONE);
    worldPixel<PF_Pixel16>(source->get(), 5, 3).red = 1234;
    const std::size_t before = liveWorldCount();
    {
        OwnedWorld view;
        ASSERT_EQ(view.view(source), PF_Err_NONE);
        EXPECT_EQ(liveWorldCount(), before + 1);
        EXPECT_EQ(view->data, source->get().data);
        EXPECT_EQ(std::tie(view->width, view->height, view->rowbytes),
                  std::tie(source->get().width, source->get().height, source->get().rowbytes));
        EXPECT_EQ(view.format(), PF_PixelFormat_ARGB64);
        EXPECT_EQ(view->world_flags, PF_WorldFlags(PF_WorldFlag_DEEP)) << "not writeable";
        EXPECT_NE(worldSerial(view.get()), worldSerial(source->get()));
        std::weak_ptr<OwnedWorld> owner = source;
        source.reset();
        ASSERT_FALSE(owner.expired()) << "the view keeps its pixels alive";
        EXPECT_EQ(worldPixel<PF_Pixel16>(view.get(), 5, 3).red, 1234);
    }
    EXPECT_EQ(liveWorldCount(), before - 1) << "the view and then its source are freed";
    PF_EffectWorld stranger{}, view{};
    EXPECT_EQ(viewWorld(stranger, &view), PF_Err_BAD_CALLBACK_PARAM);
}

}  // namespace
}  // namespace host
