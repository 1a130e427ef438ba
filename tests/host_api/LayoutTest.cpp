// The records the host and the module share must have the host's exact byte layout: sizes,
// alignments, field offsets and the position of every function in every callback table and
// suite. Each check prints what it found, so a failing build shows the whole picture.

#include <gtest/gtest.h>

#include <cstdio>

#include "LayoutExpectations.h"
#include "StaticLayoutChecks.h"

namespace hostapi_test {
namespace {

TEST(HostApiLayout, EveryRecordHasTheHostsSizeAndAlignment) {
    for (std::size_t i = 0; i < kTypeLayoutCount; ++i) {
        const TypeLayout& t = kTypeLayouts[i];
        std::printf("  %-28s size %4zu (host %4zu)  align %zu (host %zu)\n", t.type, t.size,
                    t.expected_size, t.align, t.expected_align);
        EXPECT_EQ(t.size, t.expected_size) << t.type;
        EXPECT_EQ(t.align, t.expected_align) << t.type;
    }
}

TEST(HostApiLayout, FieldsSitAtTheHostsOffsets) {
    for (std::size_t i = 0; i < kFieldOffsetCount; ++i) {
        const FieldOffset& f = kFieldOffsets[i];
        std::printf("  %-48s @%4zu (host %4zu)\n", f.field, f.offset, f.expected_offset);
        EXPECT_EQ(f.offset, f.expected_offset) << f.field;
    }
}

TEST(HostApiLayout, SuiteFunctionsAreInTheHostsOrder) {
    for (std::size_t i = 0; i < kSuiteSlotCount; ++i) {
        const FieldOffset& f = kSuiteSlots[i];
        EXPECT_EQ(f.offset, f.expected_offset)
            << f.field << " is in slot " << f.offset / 8 + 1 << ", the host calls slot "
            << f.expected_offset / 8 + 1;
    }
    std::printf("  %zu suite and callback slots checked\n", kSuiteSlotCount);
}

// The same bytes are read through differently named members; both names must alias.
TEST(HostApiLayout, AliasedMembersShareStorage) {
    PF_Point p{};
    p.h = 11;
    p.v = -7;
    EXPECT_EQ(p.x, 11);
    EXPECT_EQ(p.y, -7);

    PF_ParamDef def{};
    def.uu.id = 0x1234;
    EXPECT_EQ(def.uu.change_flags, 0x1234);

    PF_PixelFloat f{};
    PF_Pixel32& alias = f;  // one struct under two names
    alias.alpha = 0.5f;
    EXPECT_EQ(f.alpha, 0.5f);
}

// A world is the same type as a layer definition, and channel order in memory is ARGB at
// every depth, so pixel addressing by offset matches the host's buffers.
TEST(HostApiLayout, PixelsAreStoredAlphaFirst) {
    EXPECT_EQ(offsetof(PF_Pixel, alpha), 0u);
    EXPECT_EQ(offsetof(PF_Pixel, red), 1u);
    EXPECT_EQ(offsetof(PF_Pixel, green), 2u);
    EXPECT_EQ(offsetof(PF_Pixel, blue), 3u);
    EXPECT_EQ(offsetof(PF_Pixel16, alpha), 0u);
    EXPECT_EQ(offsetof(PF_Pixel16, blue), 6u);
    EXPECT_EQ(offsetof(PF_PixelFloat, alpha), 0u);
    EXPECT_EQ(offsetof(PF_PixelFloat, red), 4u);
    EXPECT_EQ(offsetof(PF_PixelFloat, blue), 12u);

    PF_EffectWorld world{};
    PF_LayerDef* as_layer = &world;
    EXPECT_EQ(static_cast<void*>(as_layer), static_cast<void*>(&world));
}

}  // namespace
}  // namespace hostapi_test
