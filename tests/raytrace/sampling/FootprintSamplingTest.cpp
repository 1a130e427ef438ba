#include <functional>
#include <memory>
#include <type_traits>

#include <gtest/gtest.h>

#include "raytrace/FootprintSampling.h"
#include "support/ColourWorld.h"
#include "support/RecordScene.h"
#include "support/ShapeSize.h"

using Vectormath::Aos::Vector3;

namespace {


using namespace test_support;

struct SampleCase {
    const char* name;
    double open_scale;
    int head, tail;
    bool flip;
    double u, v, xr, yr;
    PF_PixelFloat expected;
};

// Footprint sampling of a texture through the emulated host's real sampling suites, in the
// texture depth Pixel. The record is a closed circular cylinder without extensions.
template <class Pixel>
class FootprintSamplingTest : public ::testing::Test {
protected:
    FootprintSamplingTest() : scene(test_support::BitsOf<Pixel>::value)
    {
        setShapeSize(info(), 100.0f, 100.0f, 0.0f);
        info().open_scale = 1.0;
    }

    RenderInfo& info() { return scene.info(); }

    // A width x height texture whose pixel (x, y) is colour(x, y); it becomes the record's
    // texture layer.
    void makeTexture(A_long width, A_long height,
                     const std::function<PF_PixelFloat(A_long, A_long)>& colour)
    {
        fillWorld<Pixel>(texture, width, height, colour);
        info().texture_layer = texture.get();
        info().texture_height = height;
    }

    // 1000 x 10: two opaque red columns at the left end, two opaque blue at the right end.
    void makeSeamTexture()
    {
        makeTexture(1000, 10, [](A_long x, A_long) {
            return x <= 1 ? kRed : (x >= 998 ? kBlue : kClear);
        });
    }

    // 10 x 10: opaque green bottom row (row 0), opaque red top row (row 9).
    void makeRowTexture()
    {
        makeTexture(10, 10, [](A_long, A_long y) {
            return y == 0 ? kGreen : (y == 9 ? kRed : kClear);
        });
    }

    PF_PixelFloat sample(double u, double v, double xr, double yr)
    {
        PF_PixelFloat out = {-1.0f, -1.0f, -1.0f, -1.0f};
        TopologycalSampling<Pixel>(info(), Vector3(0.0f, 0.0f, 0.0f), u, v, xr, yr,
                                   &info().texture_layer, out);
        return out;
    }

    void expectPixel(const PF_PixelFloat& actual, const PF_PixelFloat& expected)
    {
        // How close a sample must come in each texture depth (the host rounds an 8-bit result).
        const bool bytes = std::is_same_v<Pixel, PF_Pixel>, shorts = std::is_same_v<Pixel, PF_Pixel16>;
        expectColour(actual, expected, bytes ? 0.01f : (shorts ? 1e-3f : 1e-5f));
    }

    template <std::size_t N>
    void expectCases(const SampleCase (&cases)[N])
    {
        for (const SampleCase& c : cases) {
            SCOPED_TRACE(c.name);
            info().open_scale = c.open_scale;
            info().extension.head_extensions = c.head;
            info().extension.tail_extensions = c.tail;
            info().extension.flip_vertical = c.flip;
            expectPixel(sample(c.u, c.v, c.xr, c.yr), c.expected);
        }
    }

    host::OwnedWorld texture;  // outlives the record that points at it
    test_support::RecordScene scene;
};

using PixelTypes = ::testing::Types<PF_Pixel, PF_Pixel16, PF_PixelFloat>;
TYPED_TEST_SUITE(FootprintSamplingTest, PixelTypes);

TYPED_TEST(FootprintSamplingTest, SeamSamplesBothEndsOfTheTexture)
{
    // A 6 x 1 pixel box (xr 3, yr 0.5) on row 5 of two red columns at the left end and two
    // blue at the right. Each part's alpha adds.
    const SampleCase cases[] = {
        // [996, 1002] holds the two blue columns, its copy at [-4, 2] the two red ones.
        {"right end", 1, 0, 0, false, 0.999, 0.5, 3, 0.5, {2.0f / 3.0f, 0.5f, 0.0f, 0.5f}},
        // [-2, 4] holds the two red columns, its copy at [998, 1004] one and a half blue.
        {"left end", 1, 0, 0, false, 0.001, 0.5, 3, 0.5, {3.5f / 6.0f, 2.0f / 3.5f, 0.0f, 1.5f / 3.5f}},
        // [994, 1000] holds 2 blue pixels, the second sample at [-6, 0] half a red one.
        {"right end reaches further", 1, 0, 0, false, 0.997, 0.5, 3, 0.5, {2.5f / 6.0f, 0.2f, 0.0f, 0.8f}},
        {"middle", 1, 0, 0, false, 0.5, 0.5, 3, 0.5, kClear},
        // [992, 998] holds half a blue pixel; not close enough to the end for a second sample.
        {"near the end", 1, 0, 0, false, 0.995, 0.5, 3, 0.5, {0.5f / 6.0f, 0.0f, 0.0f, 1.0f}},
        // Opened: u = 1.999 is in the opening, only the wrap to u - 2 reaches the red columns;
        // u = 0.999 is no longer at a seam.
        {"open seam", 2, 0, 0, false, 1.999, 0.5, 3, 0.5, {1.0f / 3.0f, 1.0f, 0.0f, 0.0f}},
        {"open no seam", 2, 0, 0, false, 0.999, 0.5, 3, 0.5, {1.0f / 3.0f, 0.0f, 0.0f, 1.0f}},
    };
    this->makeSeamTexture();
    this->expectCases(cases);
}

TYPED_TEST(FootprintSamplingTest, CopyBordersJoinTheNeighbouringCopy)
{
    // A 1 x 2 pixel box (xr 0.5, yr 1) in column 5 of a green bottom row and a red top row.
    const SampleCase cases[] = {
        // [8.8, 10.8] covers 0.7 of the red top row; the copy above, [-1.2, 0.8], all of its
        // green bottom row.
        {"copy above", 1, 0, 1, false, 0.5, 0.98, 0.5, 1, {0.85f, 0.35f / 0.85f, 0.5f / 0.85f, 0.0f}},
        {"no copy above the last", 1, 0, 0, false, 0.5, 0.98, 0.5, 1, {0.35f, 1.0f, 0.0f, 0.0f}},
        // Copy 1 is mirrored about 1 - 1/10: local v -0.02 reads row 9.2.
        {"flipped copy above", 1, 0, 1, true, 0.5, 0.98, 0.5, 1, {0.85f, 1.0f, 0.0f, 0.0f}},
        // v = 1.3 itself is transparent, but a footprint reaching down past the top row takes
        // half of it: 0.5 of a 1 x 8 box.
        {"top edge softens", 1, 0, 0, false, 0.5, 1.3, 0.5, 4, {0.0625f, 1.0f, 0.0f, 0.0f}},
        {"top edge out of reach", 1, 0, 0, false, 0.5, 1.3, 0.5, 2.9, kClear},
        // Copy -1 at local v 0.98 (red top row) under the texture's own green bottom row.
        {"head copy below", 1, 1, 0, false, 0.5, -0.02, 0.5, 1, {0.85f, 0.35f / 0.85f, 0.5f / 0.85f, 0.0f}},
        // Copy -1 is odd: flipped, its bottom row meets ours.
        {"flipped head copy below", 1, 1, 0, true, 0.5, -0.02, 0.5, 1, {0.85f, 0.0f, 1.0f, 0.0f}},
    };
    this->makeRowTexture();
    this->expectCases(cases);
}

// Without copies nothing lies above or below the texture; copy 1 turned by half a turn shows
// column 6 where the texture shows column 1.
TYPED_TEST(FootprintSamplingTest, MissingCopiesAreTransparentAndScrewTurnsTheCopy)
{
    this->makeTexture(10, 10, [](A_long x, A_long) {
        return x == 6 ? kBlue : (x == 1 ? kGreen : kClear);
    });
    this->expectPixel(this->sample(0.6, 0.5, 0.5, 0.5), kBlue);
    this->expectPixel(this->sample(0.6, 2.5, 0.5, 0.5), kClear);
    this->expectPixel(this->sample(0.6, -1.5, 0.5, 0.5), kClear);
    this->info().extension.tail_extensions = 1;
    this->info().extension.screw = 0.5;
    this->expectPixel(this->sample(0.1, 1.5, 0.5, 0.5), kBlue);
    this->expectPixel(this->sample(0.1, 0.5, 0.5, 0.5), kGreen);
}

}  // namespace
