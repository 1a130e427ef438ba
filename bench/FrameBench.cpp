// Cost of ray tracing one 1920 x 1080 frame, reported per frame and per output pixel, in each
// pixel depth: a textured cylinder filling most of the frame, head-on under the default
// camera, lit by one point light with self shadow. The single pass and the two depth-of-field
// passes are timed separately. Run a Release build; the host's iteration spreads the pixels
// over all cores.

#include <benchmark/benchmark.h>

#include "bench/BenchFrame.h"
#include "raytrace/DepthOfField.h"
#include "raytrace/PrimaryRays.h"

namespace {

constexpr A_long kWidth = 1920;
constexpr A_long kHeight = 1080;

// The iteration time is the frame's; the counters spell out both figures.
void reportFrameAndPixelCosts(benchmark::State& state)
{
    const auto seconds_per =
        benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert;
    state.counters["time_per_frame"] = benchmark::Counter(1.0, seconds_per);
    state.counters["time_per_pixel"] = benchmark::Counter(double(kWidth) * kHeight, seconds_per);
}

template <class Pixel>
void BM_SinglePassFrame(benchmark::State& state)
{
    bench::Frame<Pixel> frame(kWidth, kHeight);
    for (auto _ : state) {
        const PF_Err err = frame.run(RayTrace_PixelCallback<Pixel>);
        if (err != PF_Err_NONE)
            state.SkipWithError("the pixel callback failed");
    }
    reportFrameAndPixelCosts(state);
}

template <class Pixel>
void BM_DepthOfFieldFrame(benchmark::State& state)
{
    bench::Frame<Pixel> frame(kWidth, kHeight);
    frame.makeDofWorlds();
    for (auto _ : state) {
        PF_Err err = frame.run(RayTrace_PixelDepthCallback<Pixel>);
        if (err == PF_Err_NONE)
            err = frame.run(DofCompositeCallback<Pixel>);
        if (err != PF_Err_NONE)
            state.SkipWithError("a depth-of-field pass failed");
    }
    reportFrameAndPixelCosts(state);
}

// Wall time per frame, and the CPU time of every thread (steadier on a busy machine).
void timedPerFrame(benchmark::internal::Benchmark* b)
{
    b->Unit(benchmark::kMillisecond)->MeasureProcessCPUTime()->UseRealTime();
}

BENCHMARK_TEMPLATE(BM_SinglePassFrame, PF_Pixel)->Apply(timedPerFrame);
BENCHMARK_TEMPLATE(BM_SinglePassFrame, PF_Pixel16)->Apply(timedPerFrame);
BENCHMARK_TEMPLATE(BM_SinglePassFrame, PF_PixelFloat)->Apply(timedPerFrame);
BENCHMARK_TEMPLATE(BM_DepthOfFieldFrame, PF_Pixel)->Apply(timedPerFrame);
BENCHMARK_TEMPLATE(BM_DepthOfFieldFrame, PF_Pixel16)->Apply(timedPerFrame);
BENCHMARK_TEMPLATE(BM_DepthOfFieldFrame, PF_PixelFloat)->Apply(timedPerFrame);

}  // namespace

BENCHMARK_MAIN();
