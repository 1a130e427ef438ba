#include "host/pixels/GeneratedImages.h"
#include "host/pixels/Image.h"
#include "host/pixels/Quantise.h"
#include "support/PixelChannels.h"

#include <gtest/gtest.h>

#include <string>
#include <type_traits>
#include <vector>

namespace host {
namespace {

using test_support::Channels;
using test_support::channels;

const RGBA kRed{1, 0, 0, 1};
const RGBA kBlue{0, 0, 1, 1};

TEST(ImageToWorld, FullResolutionQuantisesEachDepth) {
    Image image(2, 1);
    image.at(0, 0) = RGBA{0.2f, 0.5f, 1.0f, 1.0f};
    image.at(1, 0) = RGBA{0.25f, 1.5f, -0.5f, 0.5f};

    OwnedWorld w8, w16, wf;
    ASSERT_EQ(imageToWorld(image, PF_PixelFormat_ARGB32, {}, {}, w8), PF_Err_NONE);
    ASSERT_EQ(imageToWorld(image, PF_PixelFormat_ARGB64, {}, {}, w16), PF_Err_NONE);
    ASSERT_EQ(imageToWorld(image, PF_PixelFormat_ARGB128, {}, {}, wf), PF_Err_NONE);

    // 127.5 rounds up; 16 bits clamp to white and black, with alpha kept apart from the straight
    // colour; float is not clamped.
    EXPECT_EQ(channels(worldPixel<PF_Pixel>(w8.get(), 0, 0)), (Channels{255, 51, 128, 255}));
    EXPECT_EQ(channels(worldPixel<PF_Pixel16>(w16.get(), 0, 0)), (Channels{32768, 6554, 16384, 32768}));
    EXPECT_EQ(channels(worldPixel<PF_Pixel16>(w16.get(), 1, 0)), (Channels{16384, 8192, 32768, 0}));
    EXPECT_EQ(channels(worldPixel<PF_PixelFloat>(wf.get(), 1, 0)), (Channels{0.5, 0.25, 1.5, -0.5}));
}

// Reduced worlds are ceil-sized, alpha-weighted box averages of what each pixel covers.
TEST(ImageToWorld, ReducedResolutionAveragesTheCoveredImage) {
    const RGBA black{0, 0, 0, 1}, white{1, 1, 1, 1};
    const struct {
        const char* what;
        int width, height;
        std::vector<RGBA> pixels;
        Downsample downsample;
        A_long out_width, x;
        RGBA want;
    } rows[] = {
        // Alpha (1 + 0 + 1 + 0.5) / 4; colours weighted by alpha over 2.5.
        {"half: transparent green must not tint", 2, 2, {kRed, RGBA{0, 1, 0, 0}, kBlue, RGBA{1, 1, 1, 0.5f}},
         Downsample{1, 2, 1, 2}, 1, 0, RGBA{0.6f, 0.2f, 0.6f, 0.625f}},
        {"a partial edge pixel is not darkened by the area beyond the image", 3, 1,
         {kRed, kRed, RGBA{0, 0, 1, 0.5f}}, Downsample{1, 2, 1, 1}, 2, 1, RGBA{0, 0, 1, 0.5f}},
        // Factor 2/3: world pixel 0 covers image [0, 1.5), pixel 1 covers [1.5, 3).
        {"non-integral factors split pixels, left", 3, 1, {black, white, black}, Downsample{2, 3, 1, 1}, 2, 0,
         RGBA{1 / 3.0f, 1 / 3.0f, 1 / 3.0f, 1}},
        {"non-integral factors split pixels, right", 3, 1, {black, white, black}, Downsample{2, 3, 1, 1}, 2, 1,
         RGBA{1 / 3.0f, 1 / 3.0f, 1 / 3.0f, 1}},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.what);
        Image image(row.width, row.height);
        for (int i = 0; i < row.width * row.height; ++i) image.at(i % row.width, i / row.width) = row.pixels[i];
        OwnedWorld world;
        ASSERT_EQ(imageToWorld(image, PF_PixelFormat_ARGB128, row.downsample, {}, world), PF_Err_NONE);
        ASSERT_EQ(world->width, row.out_width);
        ASSERT_EQ(world->height, 1);
        const Channels got = channels(worldPixel<PF_PixelFloat>(world.get(), row.x, 0));
        const Channels want{row.want.a, row.want.r, row.want.g, row.want.b};
        for (int c = 0; c < 4; ++c) EXPECT_FLOAT_EQ(float(got[c]), float(want[c])) << "channel " << c;
    }
    EXPECT_EQ(downsampledExtent(7, 2, 3), 5);  // 14 / 3 = 4.67
    EXPECT_EQ(downsampledExtent(0, 1, 2), 0);
}

TEST(ImageToWorld, RejectsBadFactorsAndOversizedImages) {
    OwnedWorld world;
    EXPECT_EQ(imageToWorld(Image(4, 4), PF_PixelFormat_ARGB32, Downsample{0, 1, 1, 1}, {}, world),
              PF_Err_BAD_CALLBACK_PARAM);
    EXPECT_EQ(imageToWorld(Image(30001, 1), PF_PixelFormat_ARGB32, {}, {}, world), PF_Err_OUT_OF_MEMORY);
}

TEST(WorldToImage, RoundTripsEachDepth) {
    Image image(3, 2);
    for (int y = 0; y < 2; ++y)
        for (int x = 0; x < 3; ++x) image.at(x, y) = RGBA{x / 2.0f, y * 0.25f, 0.75f, (x + y) / 3.0f};
    for (PF_PixelFormat format : {PF_PixelFormat_ARGB32, PF_PixelFormat_ARGB64, PF_PixelFormat_ARGB128}) {
        OwnedWorld world;
        ASSERT_EQ(imageToWorld(image, format, {}, {}, world), PF_Err_NONE);
        const Image back = worldToImage(world.get(), format);
        ASSERT_EQ(back.width(), 3);
        ASSERT_EQ(back.height(), 2);
        // Half a quantisation step, plus float rounding.
        const float step = (format == PF_PixelFormat_ARGB32 ? 0.5f / 255 : (format == PF_PixelFormat_ARGB64 ? 0.5f / 32768 : 0.0f)) + 1e-7f;
        for (int y = 0; y < 2; ++y)
            for (int x = 0; x < 3; ++x) {
                EXPECT_NEAR(back.at(x, y).r, image.at(x, y).r, step);
                EXPECT_NEAR(back.at(x, y).a, image.at(x, y).a, step);
            }
    }
}

// The direct path from an integer world to PNG channels must write the bytes the float frame
// would, for every channel value: each channel of pixel x holds another value of the 8-bit or
// 16-bit range.
TEST(WorldToQuantised, MatchesQuantisingTheFloatFrameForEveryChannelValue) {
    for (PF_PixelFormat format : {PF_PixelFormat_ARGB32, PF_PixelFormat_ARGB64}) {
        const int range = format == PF_PixelFormat_ARGB32 ? 256 : 65536;
        OwnedWorld world;
        ASSERT_EQ(world.allocate(256, range / 256, format, {}), PF_Err_NONE);
        const PF_EffectWorld& w = world.get();
        for (int v = 0; v < range; ++v) {
            auto set = [&](auto* row) {
                auto& p = row[v % 256];
                using Channel = std::remove_reference_t<decltype(p.red)>;
                p.alpha = Channel(v), p.red = Channel(range - 1 - v), p.green = Channel(v / 3), p.blue = Channel(v ^ 0x55);
            };
            if (format == PF_PixelFormat_ARGB32)
                set(worldRow<PF_Pixel>(w, v / 256));
            else
                set(worldRow<PF_Pixel16>(w, v / 256));
        }
        const Image floats = worldToImage(w, format);
        for (int bits : {8, 16}) {
            SCOPED_TRACE("format " + std::to_string(format) + ", " + std::to_string(bits) + "-bit PNG");
            const QuantisedImage direct = worldToQuantised(w, format, bits, 2);
            ASSERT_EQ(direct.bits(), bits);
            for (std::size_t i = 0; i < floats.pixels().size(); ++i) {
                const RGBA& p = floats.pixels()[i];
                const float channels[4] = {p.r, p.g, p.b, p.a};
                for (std::size_t c = 0; c < 4; ++c) {
                    const int expected = bits == 8 ? quantiseChannel<std::uint8_t>(channels[c], 255.0)
                                                   : quantiseChannel<std::uint16_t>(channels[c], 65535.0);
                    const int got = bits == 8 ? direct.rgba8[i * 4 + c] : direct.rgba16[i * 4 + c];
                    ASSERT_EQ(got, expected) << "pixel " << i << ", channel " << c;
                }
            }
        }
    }
}

TEST(GeneratedImages, GradientHitsBothEndsExactly) {
    const RGBA from{0.3f, 0.1f, 0.0f, 1.0f};
    const RGBA to{0.7f, 0.9f, 1.0f, 0.0f};
    const Image h = gradientImage(5, 2, from, to, GradientDirection::Horizontal);
    EXPECT_EQ(h.at(0, 1), from);
    EXPECT_EQ(h.at(4, 0), to);
    EXPECT_FLOAT_EQ(h.at(2, 0).r, 0.5f);
    const Image v = gradientImage(2, 3, from, to, GradientDirection::Vertical);
    EXPECT_EQ(v.at(1, 0), from);
    EXPECT_EQ(v.at(0, 2), to);
}

TEST(GeneratedImages, UVGridEncodesPositionAndCell) {
    UVGridOptions options;
    options.cells = 4;
    const Image img = uvGridImage(40, 20, options);
    // (13, 7) is inside cell (1, 1), off the lines.
    const RGBA p = img.at(13, 7);
    EXPECT_EQ(p, (RGBA{13.5f / 40, 7.5f / 20, 5.0f / 15, 1.0f}));  // cell 1 + 1 · 4 of 0..15
    EXPECT_EQ(img.at(10, 7), options.line) << "first column of cell 1";
    EXPECT_EQ(img.at(13, 5), options.line) << "first row of cell 1";
    EXPECT_EQ(img.at(39, 7), options.line) << "closing right border";
    options.cells = 0;
    EXPECT_FLOAT_EQ(uvGridImage(40, 20, options).at(10, 0).r, 10.5f / 40) << "no grid";
}

}  // namespace
}  // namespace host
