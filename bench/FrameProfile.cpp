// Renders the benchmark frame once, for instruction-level profiling (callgrind) where a timed
// benchmark's repetitions would only add noise, and prints a checksum of the output so two
// builds can be compared for identical pixels.
//
//   frame_profile [width height [depth [passes]]]   depth 8, 16 or 32; passes 1 (single) or 2 (DOF)

#include <cstdint>
#include <cstdio>
#include <cstdlib>

#include "bench/BenchFrame.h"
#include "raytrace/DepthOfField.h"
#include "raytrace/PrimaryRays.h"

namespace {

// FNV-1a over the output rows, padding excluded.
std::uint64_t checksum(const PF_LayerDef& world, std::size_t pixel_bytes)
{
    std::uint64_t hash = 14695981039346656037ull;
    for (A_long y = 0; y < world.height; ++y) {
        const auto* row = reinterpret_cast<const unsigned char*>(world.data) + y * world.rowbytes;
        for (std::size_t b = 0; b < std::size_t(world.width) * pixel_bytes; ++b) {
            hash ^= row[b];
            hash *= 1099511628211ull;
        }
    }
    return hash;
}

template <class Pixel>
int render(A_long width, A_long height, int passes)
{
    bench::Frame<Pixel> frame(width, height);
    PF_Err err = PF_Err_NONE;
    if (passes == 2) {
        frame.makeDofWorlds();
        err = frame.run(RayTrace_PixelDepthCallback<Pixel>);
        if (err == PF_Err_NONE)
            err = frame.run(DofCompositeCallback<Pixel>);
    } else {
        err = frame.run(RayTrace_PixelCallback<Pixel>);
    }
    std::printf("%ldx%ld depth %d passes %d: err %d checksum %016llx\n", long(width), long(height),
                int(bench::BitsOf<Pixel>::value), passes, int(err),
                static_cast<unsigned long long>(checksum(frame.output(), sizeof(Pixel))));
    return err == PF_Err_NONE ? 0 : 1;
}

}  // namespace

int main(int argc, char** argv)
{
    const A_long width = argc > 2 ? std::atol(argv[1]) : 480;
    const A_long height = argc > 2 ? std::atol(argv[2]) : 270;
    const int depth = argc > 3 ? std::atoi(argv[3]) : 8;
    const int passes = argc > 4 ? std::atoi(argv[4]) : 1;
    if (depth == 16)
        return render<PF_Pixel16>(width, height, passes);
    if (depth == 32)
        return render<PF_PixelFloat>(width, height, passes);
    return render<PF_Pixel>(width, height, passes);
}
