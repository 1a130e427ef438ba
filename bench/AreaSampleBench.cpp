// Area sampling cost per call for radii of 1, 16 and 128 pixels. The summed-area table makes
// every call constant time, so the three figures should be about equal.

#include "host/pixels/AreaSampler.h"
#include "host/pixels/PixelWorld.h"
#include "host/pixels/SamplerCache.h"

#include <benchmark/benchmark.h>

#include <random>

namespace {

using host::OwnedWorld;

constexpr A_long kSize = 1024;

const OwnedWorld& noiseWorld() {
    static const OwnedWorld world = [] {
        OwnedWorld w;
        w.allocate(kSize, kSize, PF_PixelFormat_ARGB128);
        std::mt19937 rng(7);
        std::uniform_real_distribution<float> unit(0.0f, 1.0f);
        for (A_long y = 0; y < kSize; ++y)
            for (A_long x = 0; x < kSize; ++x)
                host::worldPixel<PF_PixelFloat>(w.get(), x, y) = PF_PixelFloat{unit(rng), unit(rng), unit(rng), unit(rng)};
        return w;
    }();
    return world;
}

// Centres spread over the world (and a little beyond), in 16.16.
std::vector<PF_Fixed> centres() {
    std::mt19937 rng(11);
    std::uniform_int_distribution<PF_Fixed> pos(-16 * 65536, (kSize + 16) * 65536);
    std::vector<PF_Fixed> c(4096);
    for (PF_Fixed& v : c) v = pos(rng);
    return c;
}

void BM_AreaSample(benchmark::State& state) {
    const host::AreaSampler sampler(noiseWorld().get(), PF_PixelFormat_ARGB128);
    const PF_Fixed radius = static_cast<PF_Fixed>(state.range(0)) * 65536;
    const std::vector<PF_Fixed> c = centres();
    std::size_t n = 0;
    for (auto _ : state) {
        const PF_PixelFloat p = sampler.sample<PF_PixelFloat>(c[n % c.size()], c[(n + 1) % c.size()], radius, radius);
        benchmark::DoNotOptimize(p);
        ++n;
    }
    state.SetItemsProcessed(static_cast<int64_t>(state.iterations()));
}
BENCHMARK(BM_AreaSample)->Arg(1)->Arg(16)->Arg(128);

// The whole host call, through the shared cache (a per-thread hit after the first call).
void BM_AreaSampleCall(benchmark::State& state) {
    static host::SamplerCache cache;
    OwnedWorld& world = const_cast<OwnedWorld&>(noiseWorld());
    PF_SampPB pb{};
    pb.src = &world.get();
    pb.x_radius = pb.y_radius = static_cast<PF_Fixed>(state.range(0)) * 65536;
    const std::vector<PF_Fixed> c = centres();
    std::size_t n = 0;
    PF_PixelFloat p{};
    for (auto _ : state) {
        benchmark::DoNotOptimize(host::sampleArea(cache, PF_Quality_HI, c[n % c.size()], c[(n + 1) % c.size()], &pb, &p));
        ++n;
    }
}
BENCHMARK(BM_AreaSampleCall)->Arg(1)->Arg(16)->Arg(128);

}  // namespace

BENCHMARK_MAIN();
