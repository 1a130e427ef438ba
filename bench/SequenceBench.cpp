// Cost of a frame of a sequence rendered through the host, as the command-line renderer does
// it: the pov-match scene (bench/pov-match, the scene matched against a classic ray tracer),
// several frames in a row through one session, on 1 and 2 threads, in each pixel depth. The
// figure is the whole smart render of a frame (layer checkouts, the record, the pixel loop and
// the sampler tables), without process start-up and image encoding. The CPU column counts
// every thread of the process, which is the steadier figure on a busy machine.
//
//   sequence_bench [--scene=FILE.json] [benchmark flags]

#include <benchmark/benchmark.h>

#include <cstring>
#include <string>

#include "host/session/Session.h"

namespace {

constexpr int kFramesPerIteration = 6;
constexpr double kFrameRate = 25.0;

std::string g_scene = ORBIVANE_BENCH_SCENE;

void BM_Sequence(benchmark::State& state)
{
    const int threads = static_cast<int>(state.range(0));
    const short bit_depth = static_cast<short>(state.range(1));
    host::HostOptions options;
    options.threads = threads;
    options.poison = false;
    host::Session session(g_scene, ORBIVANE_MODULE_PATH, options);
    // A first frame outside the timing: reading and converting the sources is start-up work.
    if (session.render(0.0, bit_depth, 1).err != PF_Err_NONE) {
        state.SkipWithError("the first frame failed to render");
        return;
    }
    int frame = 1;
    for (auto _ : state) {
        for (int n = 0; n < kFramesPerIteration; ++n, ++frame) {
            const host::RenderResult result = session.render(frame / kFrameRate, bit_depth, 1);
            if (result.err != PF_Err_NONE || !result.rendered) {
                state.SkipWithError("a frame failed to render");
                return;
            }
        }
    }
    state.counters["time_per_frame"] = benchmark::Counter(
        kFramesPerIteration,
        benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

// Arguments: threads, bit depth.
BENCHMARK(BM_Sequence)
    ->ArgNames({"threads", "bits"})
    ->Args({1, 8})
    ->Args({2, 8})
    ->Args({1, 16})
    ->Args({2, 16})
    ->Args({1, 32})
    ->Args({2, 32})
    ->Unit(benchmark::kMillisecond)
    ->MeasureProcessCPUTime()
    ->UseRealTime();

}  // namespace

int main(int argc, char** argv)
{
    // Our own flag first, so the benchmark library does not reject it.
    int kept = 1;
    for (int i = 1; i < argc; ++i) {
        if (std::strncmp(argv[i], "--scene=", 8) == 0)
            g_scene = argv[i] + 8;
        else
            argv[kept++] = argv[i];
    }
    argc = kept;
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
