#include "host/pixels/SamplerCache.h"
#include "host/pixels/PixelWorld.h"

#include <gtest/gtest.h>

#include <thread>
#include <vector>

namespace host {
namespace {

constexpr PF_Fixed kOne = 65536;

OwnedWorld solidWorld(A_long w, A_long h, A_u_char red) {
    OwnedWorld world;
    EXPECT_EQ(world.allocate(w, h, PF_PixelFormat_ARGB32), PF_Err_NONE);
    for (A_long y = 0; y < h; ++y)
        for (A_long x = 0; x < w; ++x) worldPixel<PF_Pixel>(world.get(), x, y) = PF_Pixel{255, red, 0, 0};
    return world;
}

PF_SampPB blockOver(PF_EffectWorld* src, PF_Fixed radius) {
    PF_SampPB pb{};
    pb.src = src;
    pb.x_radius = radius;
    pb.y_radius = radius;
    return pb;
}

// Layer pixels checked out again in the next frame reuse the table built from the same
// pixels; a world that is not layer pixels, or whose pixels differ, gets its own.
TEST(SamplerCache, LayerPixelsReuseTheTableOfIdenticalPixelsOnly) {
    OwnedWorld frame1 = solidWorld(16, 8, 77);
    OwnedWorld frame2 = solidWorld(16, 8, 77);
    OwnedWorld unmarked = solidWorld(16, 8, 77);
    OwnedWorld changed = solidWorld(16, 8, 77);
    worldPixel<PF_Pixel>(changed.get(), 15, 7).red = 78;
    for (OwnedWorld* w : {&frame1, &frame2, &changed}) markLayerPixels(w->get());
    SamplerCache first_call, second_call;
    const AreaSampler& built = first_call.get(frame1.get());
    EXPECT_EQ(&second_call.get(frame2.get()), &built);
    EXPECT_NE(&second_call.get(unmarked.get()), &built);
    const AreaSampler& rebuilt = second_call.get(changed.get());
    EXPECT_NE(&rebuilt, &built);
    EXPECT_EQ(rebuilt.sample<PF_Pixel>(15 * kOne, 7 * kOne, 1, 1).red, 78);
}

// Copies of the struct are the same world; threads asking at once share one build.
TEST(SamplerCache, BuildsEachWorldOnceForAllThreads) {
    SamplerCache cache;
    OwnedWorld world = solidWorld(300, 300, 42);
    OwnedWorld other = solidWorld(8, 8, 20);
    std::vector<std::thread> threads;
    std::vector<const AreaSampler*> seen(8, nullptr);
    for (int t = 0; t < 8; ++t)
        threads.emplace_back([&, t] {
            for (int n = 0; n < 100; ++n) seen[t] = &cache.get(world.get());
        });
    for (auto& t : threads) t.join();
    EXPECT_EQ(cache.buildCount(), 1u);
    for (const AreaSampler* s : seen) EXPECT_EQ(s, seen[0]);
    EXPECT_EQ(&cache.get(PF_EffectWorld(world.get())), seen[0]);
    EXPECT_NE(&cache.get(other.get()), seen[0]);
    EXPECT_EQ(cache.size(), 2u);
}

// Red of a high-quality area sample of the box [0, 2]^2.
A_u_char areaRed(SamplerCache& cache, OwnedWorld& world) {
    PF_SampPB pb = blockOver(&world.get(), kOne);
    PF_Pixel out{};
    EXPECT_EQ(sampleArea(cache, PF_Quality_HI, kOne, kOne, &pb, &out), PF_Err_NONE);
    return out.red;
}

// A table is kept until the host invalidates it; a freed world's replacement (the allocator
// may well hand out the same address) is never served the old table.
TEST(SamplerCache, TablesLastUntilInvalidatedOrFreed) {
    SamplerCache cache;
    OwnedWorld world = solidWorld(4, 4, 10);
    EXPECT_EQ(areaRed(cache, world), 10);
    worldPixel<PF_Pixel>(world.get(), 1, 1).red = 250;
    EXPECT_EQ(areaRed(cache, world), 10);
    cache.invalidate(world->data);
    EXPECT_EQ(cache.size(), 0u);
    EXPECT_EQ(areaRed(cache, world), 70);  // pixel (1,1) covers a quarter: (3 · 10 + 250) / 4
    world.reset();
    {
        OwnedWorld old = solidWorld(16, 16, 10);
        EXPECT_EQ(areaRed(cache, old), 10);
    }
    OwnedWorld fresh = solidWorld(16, 16, 99);
    EXPECT_EQ(areaRed(cache, fresh), 99);
}

// Bad arguments are refused; a layer without pixels samples transparent.
TEST(SamplingCalls, CheckTheirArguments) {
    SamplerCache cache;
    OwnedWorld world = solidWorld(4, 4, 10);
    PF_SampPB pb = blockOver(&world.get(), kOne);
    PF_Pixel out8{};
    PF_PixelFloat outf{};
    EXPECT_EQ(sampleArea<PF_Pixel>(cache, PF_Quality_HI, 0, 0, nullptr, &out8), PF_Err_BAD_CALLBACK_PARAM);
    EXPECT_EQ(sampleArea<PF_Pixel>(cache, PF_Quality_HI, 0, 0, &pb, nullptr), PF_Err_BAD_CALLBACK_PARAM);
    EXPECT_EQ(sampleArea(cache, PF_Quality_HI, 0, 0, &pb, &outf), PF_Err_BAD_CALLBACK_PARAM)
        << "a float sample of an 8-bit world";
    EXPECT_EQ(sampleSubpixel(PF_Quality_HI, 0, 0, &pb, &outf), PF_Err_BAD_CALLBACK_PARAM);
    EXPECT_EQ(sampleNearest(0, 0, &pb, &outf), PF_Err_BAD_CALLBACK_PARAM);
    PF_EffectWorld none{};
    pb.src = &none;
    PF_Pixel16 out16{1, 2, 3, 4};
    EXPECT_EQ(sampleArea(cache, PF_Quality_HI, 0, 0, &pb, &out16), PF_Err_NONE);
    EXPECT_EQ(out16.alpha, 0);
    EXPECT_EQ(out16.red, 0);
    pb.src = nullptr;
    EXPECT_EQ(sampleArea(cache, PF_Quality_HI, 0, 0, &pb, &out8), PF_Err_BAD_CALLBACK_PARAM);
}

TEST(SamplingCalls, LowQualityFallsBackToTheNearestPixel) {
    SamplerCache cache;
    OwnedWorld world = solidWorld(4, 4, 10);
    worldPixel<PF_Pixel>(world.get(), 1, 1).red = 250;
    PF_SampPB pb = blockOver(&world.get(), 2 * kOne);
    PF_Pixel area{}, nearest{}, bilinear{};
    ASSERT_EQ(sampleArea(cache, PF_Quality_LO, kOne, kOne, &pb, &area), PF_Err_NONE);
    ASSERT_EQ(sampleSubpixel(PF_Quality_LO, kOne / 2 + 1, kOne, &pb, &bilinear), PF_Err_NONE);
    ASSERT_EQ(sampleNearest(kOne, kOne, &pb, &nearest), PF_Err_NONE);
    EXPECT_EQ(area.red, 250);
    EXPECT_EQ(bilinear.red, 250);
    EXPECT_EQ(nearest.red, 250);
    EXPECT_EQ(cache.buildCount(), 0u) << "no table is needed at low quality";
    ASSERT_EQ(sampleArea(cache, PF_Quality_HI, kOne, kOne, &pb, &area), PF_Err_NONE);
    EXPECT_LT(area.red, 250);
}

}  // namespace
}  // namespace host
