#include "host/pixels/AreaSampler.h"
#include "host/pixels/PixelWorld.h"
#include "support/PixelChannels.h"

#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <type_traits>

namespace host {
namespace {

using test_support::Channels;
using test_support::channels;

constexpr PF_Fixed kOne = 65536;
constexpr PF_Fixed kHalf = 32768;

// Pixel values written in 8-bit units (alpha, red, green, blue).
struct Px {
    double a, r, g, b;
};

// The 3 x 2 test image. Pixel (2, 0) is transparent white: it must never tint a sample.
const Px kImage[2][3] = {
    {{255, 200, 0, 0}, {255, 0, 200, 0}, {0, 255, 255, 255}},
    {{255, 0, 0, 200}, {128, 100, 100, 100}, {255, 50, 50, 50}},
};

// Channel units per 8-bit unit in each depth: 16-bit values are the 8-bit ones × 128, float
// values / 255, so one set of hand-computed numbers checks all three depths.
template <class Pixel>
constexpr double unitScale() {
    return std::is_same_v<Pixel, PF_Pixel16> ? 128.0 : std::is_same_v<Pixel, PF_PixelFloat> ? 1.0 / 255.0 : 1.0;
}

template <class Pixel>
OwnedWorld makeTestWorld() {
    OwnedWorld world;
    EXPECT_EQ(world.allocate(3, 2, PixelFormatOf<Pixel>::value), PF_Err_NONE);
    using Channel = decltype(Pixel{}.red);
    const double k = unitScale<Pixel>();
    for (A_long y = 0; y < 2; ++y)
        for (A_long x = 0; x < 3; ++x) {
            const Px& p = kImage[y][x];
            worldPixel<Pixel>(world.get(), x, y) = Pixel{Channel(p.a * k), Channel(p.r * k), Channel(p.g * k), Channel(p.b * k)};
        }
    return world;
}

template <class Pixel>
class AreaSampleDepths : public ::testing::Test {
protected:
    AreaSampleDepths() : world_(makeTestWorld<Pixel>()), sampler_(world_.get(), PixelFormatOf<Pixel>::value) {}

    // Samples and checks against the expected value in 8-bit units: integer depths must hit
    // the rounded scaled value exactly, float within single precision.
    void expectSample(PF_Fixed x, PF_Fixed y, PF_Fixed rx, PF_Fixed ry, Px expected) {
        const Channels have = channels(sampler_.sample<Pixel>(x, y, rx, ry));
        const double k = unitScale<Pixel>();
        const double want[4] = {expected.a * k, expected.r * k, expected.g * k, expected.b * k};
        for (int c = 0; c < 4; ++c) {
            if (std::is_same<Pixel, PF_PixelFloat>::value)
                EXPECT_NEAR(have[c], want[c], 1e-6) << "channel " << c;
            else
                EXPECT_EQ(have[c], std::floor(want[c] + 0.5)) << "channel " << c;
        }
    }

    OwnedWorld world_;
    AreaSampler sampler_;
};

using PixelTypes = ::testing::Types<PF_Pixel, PF_Pixel16, PF_PixelFloat>;
TYPED_TEST_SUITE(AreaSampleDepths, PixelTypes);

// Box centre and radii in pixels' 16.16 units, expected value in 8-bit units.
TYPED_TEST(AreaSampleDepths, BoxAveragesInsideAcrossTheEdgeAndOutside) {
    const struct {
        const char* what;
        PF_Fixed x, y, rx, ry;
        Px want;
    } rows[] = {
        {"half-pixel radius is exactly that pixel", 1 * kOne, 0, kHalf, kHalf, {255, 0, 200, 0}},
        {"box ending exactly on the right and bottom edges", 2 * kOne, 1 * kOne, kHalf, kHalf, {255, 50, 50, 50}},
        // Radius 0 is raised to 1/65536 pixel: a point sample of the pixel under the centre.
        {"radius 0 is the pixel under the centre", 1 * kOne, 1 * kOne, 0, 0, {128, 100, 100, 100}},
        {"just right of the boundary at x = 0.5 is pixel 1", kHalf + 2, 0, 1, 1, {255, 0, 200, 0}},
        // Box [1, 2] x [-0.5, 0.5]: half opaque green, half transparent white. Alpha halves, the
        // colour stays pure green (a plain average would give (127.5, 227.5, 127.5)).
        {"a transparent pixel does not tint", 3 * kHalf, 0, kHalf, kHalf, {127.5, 0, 200, 0}},
        {"far outside", 10 * kOne, 10 * kOne, kOne, kOne, {0, 0, 0, 0}},
        {"box ending exactly on the left edge touches nothing", -kOne, 0, kHalf, kHalf, {0, 0, 0, 0}},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        this->expectSample(row.x, row.y, row.rx, row.ry, row.want);
    }
}

// Float source: alpha is 1 from column 200 on, 0 before, in a 300 x 1 world.
TEST(AreaSampleRadiusLimit, RadiiAreClampedTo128Pixels) {
    OwnedWorld world;
    ASSERT_EQ(world.allocate(300, 1, PF_PixelFormat_ARGB128), PF_Err_NONE);
    for (A_long x = 200; x < 300; ++x) worldPixel<PF_PixelFloat>(world.get(), x, 0) = PF_PixelFloat{1, 1, 0, 0};
    const AreaSampler sampler(world.get(), PF_PixelFormat_ARGB128);
    auto alphaAt = [&](PF_Fixed rx) { return sampler.sample<PF_PixelFloat>(72 * kOne, 0, rx, kHalf).alpha; };
    // Box [-56, 200] x [-0.5, 0.5] reaches half of pixel 200: alpha = 0.5 / (4 · 128 · 0.5).
    EXPECT_FLOAT_EQ(alphaAt(128 * kOne), 0.5f / 256.0f);
    // One unit less reaches 1/65536 less far.
    EXPECT_FLOAT_EQ(alphaAt(128 * kOne - 1), float((0.5 - 1.0 / 65536) / (256.0 - 2.0 / 65536)));
    EXPECT_FLOAT_EQ(alphaAt(129 * kOne), 0.5f / 256.0f);
    EXPECT_FLOAT_EQ(alphaAt(0x7fffffff), 0.5f / 256.0f);
}

// Integer depths round to nearest and clamp (a NaN gives 0); float is neither rounded nor
// clamped.
TEST(AreaSampleRounding, IntegerDepthsRoundToNearestAndClamp) {
    const ChannelSample s{127.5, 300.0, -4.0, std::nan("")};
    EXPECT_EQ(channels(roundToPixel<PF_Pixel>(s)), (Channels{128, 255, 0, 0}));
    const ChannelSample deep{16383.49, 40000.0, -4.0, 1.0};
    EXPECT_EQ(channels(roundToPixel<PF_Pixel16>(deep)), (Channels{16383, 32768, 0, 1}));
    EXPECT_EQ(channels(roundToPixel<PF_PixelFloat>(deep)), (Channels{float(16383.49), 40000, -4, 1}));
}

// Straightforward reference: every pixel weighted by its overlap with the box, in channel units.
template <class Pixel>
ChannelSample bruteForceBox(const PF_EffectWorld& w, double cx, double cy, double rx, double ry) {
    double sa = 0, sr = 0, sg = 0, sb = 0;
    for (A_long j = 0; j < w.height; ++j) {
        const double oy = std::min(cy + ry, j + 0.5) - std::max(cy - ry, j - 0.5);
        if (oy <= 0) continue;
        for (A_long i = 0; i < w.width; ++i) {
            const double ox = std::min(cx + rx, i + 0.5) - std::max(cx - rx, i - 0.5);
            if (ox <= 0) continue;
            const Pixel& p = worldPixel<Pixel>(w, i, j);
            const double wa = ox * oy * p.alpha;
            sa += wa, sr += wa * p.red, sg += wa * p.green, sb += wa * p.blue;
        }
    }
    ChannelSample s;
    s.alpha = sa / (4 * rx * ry);
    if (sa != 0) s.red = sr / sa, s.green = sg / sa, s.blue = sb / sa;
    return s;
}

// The summed tables of every depth against the reference, boxes inside, across the edges and
// outside, with exact edge arithmetic, alpha weighting and transparent pixels included.
template <class Pixel>
class AreaSampleTable : public ::testing::Test {};
TYPED_TEST_SUITE(AreaSampleTable, PixelTypes);

TYPED_TEST(AreaSampleTable, MatchesBruteForceOnRandomImagesAndBoxes) {
    using Pixel = TypeParam;
    using Channel = decltype(Pixel{}.red);
    const double white = 255 * unitScale<Pixel>();
    std::mt19937 rng(1234);
    std::uniform_real_distribution<double> unit(0.0, 1.0);
    auto channel = [&] { return Channel(unit(rng) * white); };
    OwnedWorld world;
    ASSERT_EQ(world.allocate(37, 23, PixelFormatOf<Pixel>::value), PF_Err_NONE);
    for (A_long y = 0; y < 23; ++y)
        for (A_long x = 0; x < 37; ++x) {
            // A quarter of the pixels fully transparent, as around a cut-out layer.
            const Channel a = unit(rng) < 0.25 ? Channel(0) : channel();
            worldPixel<Pixel>(world.get(), x, y) = Pixel{a, channel(), channel(), channel()};
        }
    const AreaSampler sampler(world.get(), PixelFormatOf<Pixel>::value);

    std::uniform_real_distribution<double> centre(-10.0, 47.0);
    const double radii[] = {1.0 / 65536, 0.01, 0.5, 0.73, 1.0, 2.5, 7.3, 30.0, 128.0};
    for (int n = 0; n < 400; ++n) {
        // Every fourth box centred on a pixel corner, so its edges fall on pixel boundaries.
        double cx = centre(rng), cy = centre(rng);
        if (n % 4 == 0) cx = std::floor(cx) + 0.5, cy = std::floor(cy) + 0.5;
        const double rx = radii[n % 9], ry = radii[(n / 9) % 9];
        const ChannelSample want = bruteForceBox<Pixel>(world.get(), cx, cy, rx, ry);
        const ChannelSample got = sampler.boxAverage(cx, cy, rx, ry);
        SCOPED_TRACE(::testing::Message() << "box " << cx << "," << cy << " r " << rx << "," << ry);
        EXPECT_NEAR(got.alpha, want.alpha, 1e-9 * (1 + std::fabs(want.alpha)));
        // Colours divide by the covered alpha, which may be tiny: a looser bound.
        EXPECT_NEAR(got.red, want.red, 1e-7 * white);
        EXPECT_NEAR(got.green, want.green, 1e-7 * white);
        EXPECT_NEAR(got.blue, want.blue, 1e-7 * white);
    }
}

TEST(AreaSampleTable, TinyBoxInAnOpaqueLargeImageKeepsFullPrecision) {
    // Table entries grow to about 255 x 255 x area; a 1/65536 box must still read the
    // single pixel exactly rather than a difference of huge numbers.
    OwnedWorld world;
    ASSERT_EQ(world.allocate(600, 400, PF_PixelFormat_ARGB32), PF_Err_NONE);
    for (A_long y = 0; y < 400; ++y)
        for (A_long x = 0; x < 600; ++x)
            worldPixel<PF_Pixel>(world.get(), x, y) = PF_Pixel{255, A_u_char(x % 256), A_u_char(y % 256), 77};
    const AreaSampler sampler(world.get(), PF_PixelFormat_ARGB32);
    const ChannelSample s = sampler.boxAverage(598.2, 397.9, 1.0 / 65536, 1.0 / 65536);
    EXPECT_EQ(channels(s), (Channels{255, 598 % 256, 398 % 256, 77}));
}

TEST(PointSamplers, NearestPixelRoundsHalfUpAndIsTransparentOutside) {
    OwnedWorld world = makeTestWorld<PF_Pixel>();
    auto nn = [&](PF_Fixed x, PF_Fixed y) { return nearestSample<PF_Pixel>(world.get(), x, y); };
    EXPECT_EQ(nn(kHalf - 1, 0).red, 200) << "x just below 0.5 is pixel 0";
    EXPECT_EQ(nn(kHalf, 0).green, 200) << "x = 0.5 is pixel 1";
    EXPECT_EQ(nn(-kHalf, 0).red, 200) << "x = -0.5 is still pixel 0";
    EXPECT_EQ(nn(-kHalf - 1, 0).alpha, 0) << "left of the world";
    EXPECT_EQ(nn(0, 2 * kOne - kHalf).alpha, 0) << "y = 1.5 is row 2: outside";
    EXPECT_EQ(nn(0, 2 * kOne - kHalf - 1).blue, 200) << "just above y = 1.5 is row 1";
    EXPECT_EQ(channels(nn(kOne, kOne)), (Channels{128, 100, 100, 100}));
}

TEST(PointSamplers, BilinearIsAlphaWeighted) {
    OwnedWorld world = makeTestWorld<PF_Pixel>();
    // Half way between opaque green (1,0) and transparent white (2,0).
    EXPECT_EQ(channels(bilinearSample<PF_Pixel>(world.get(), 3 * kHalf, 0)), (Channels{128, 0, 200, 0}));
    // Half way past the left edge: half of red (0,0), alpha halves, colour stays.
    EXPECT_EQ(channels(bilinearSample<PF_Pixel>(world.get(), -kHalf, 0)), (Channels{128, 200, 0, 0}));
    // A quarter of the way right and down from (0,0): weights .5625 .1875 .1875 .0625.
    const PF_Pixel q = bilinearSample<PF_Pixel>(world.get(), kOne / 4, kOne / 4);
    const double wa = 0.5625 * 255 + 0.1875 * 255 + 0.1875 * 255 + 0.0625 * 128;
    EXPECT_EQ(q.alpha, A_u_char(std::floor(wa + 0.5)));
    EXPECT_EQ(q.red, A_u_char(std::floor((0.5625 * 255 * 200 + 0.0625 * 128 * 100) / wa + 0.5)));
}

}  // namespace
}  // namespace host
