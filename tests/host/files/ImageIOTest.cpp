#include "host/files/ImageIO.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <utility>

#include "support/ErrorText.h"
#include "support/TempFolder.h"

namespace host {
namespace {

namespace fs = std::filesystem;

class ImageFiles : public ::testing::Test {
protected:
    std::string path(const std::string& name) const { return (dir_ / name).string(); }
    std::size_t filesInDir() const { return dir_.files().size(); }

    // Straight colours under partial alpha: a premultiply or divide anywhere shows up.
    static Image sample(float unit) {
        Image img(3, 2);
        img.at(0, 0) = RGBA{204 * unit, 51 * unit, 0, 1};
        img.at(1, 0) = RGBA{255 * unit, 102 * unit, 153 * unit, 128 * unit};
        img.at(2, 0) = RGBA{0, 0, 0, 0};
        img.at(0, 1) = RGBA{17 * unit, 34 * unit, 68 * unit, 64 * unit};
        img.at(1, 1) = RGBA{1, 1, 1, 1};
        img.at(2, 1) = RGBA{0, 255 * unit, 0, 255 * unit};
        return img;
    }

    static void expectSame(const Image& got, const Image& want, float tolerance) {
        ASSERT_EQ(got.width(), want.width());
        ASSERT_EQ(got.height(), want.height());
        for (int y = 0; y < want.height(); ++y)
            for (int x = 0; x < want.width(); ++x) {
                SCOPED_TRACE(::testing::Message() << "pixel " << x << "," << y);
                if (want.at(x, y).a == 0) {
                    EXPECT_EQ(got.at(x, y).a, 0.0f);
                    continue;
                }
                EXPECT_NEAR(got.at(x, y).r, want.at(x, y).r, tolerance);
                EXPECT_NEAR(got.at(x, y).g, want.at(x, y).g, tolerance);
                EXPECT_NEAR(got.at(x, y).b, want.at(x, y).b, tolerance);
                EXPECT_NEAR(got.at(x, y).a, want.at(x, y).a, tolerance);
            }
    }

    const test_support::TempFolder dir_;
};

// Every encoder setting is lossless: fast and small PNG, any zlib level, each EXR compression,
// on both sides of the row bands the conversions are split into.
TEST_F(ImageFiles, PngRoundTripsKeepStraightColourIn8And16BitsWithEveryCompression) {
    const Image img = sample(1.0f / 255);
    for (int bits : {8, 16})
        for (const auto& [level, up_filter] : {std::pair{kPngFastLevel, true}, std::pair{kPngSmallLevel, false},
                                              std::pair{0, false}, std::pair{6, true}}) {
            SaveOptions options;
            options.png_bits = bits;
            options.png_level = level;
            options.png_up_filter = up_filter;
            options.threads = 2;
            const std::string file = path(std::to_string(bits) + "-" + std::to_string(level) + ".png");
            SCOPED_TRACE(file);
            saveImage(img, file, options);
            expectSame(loadImage(file), img, bits == 8 ? 1e-6f : 0.5f / 65535);
        }
}

// Saved from an image and from a float world holding the same straight pixels.
TEST_F(ImageFiles, ExrRoundTripIsFloatExactForDyadicValuesWithEveryCompression) {
    Image img(2, 2);
    img.at(0, 0) = RGBA{0.75f, 2.5f, -0.25f, 1.0f};
    img.at(1, 0) = RGBA{0.5f, 0.25f, 1.0f, 0.5f};
    img.at(0, 1) = RGBA{1.0f, 0.125f, 0.0f, 0.25f};
    img.at(1, 1) = RGBA{0, 0, 0, 0};
    OwnedWorld world;
    ASSERT_EQ(imageToWorld(img, PF_PixelFormat_ARGB128, Downsample{}, {}, world), PF_Err_NONE);
    for (const char* compression : kExrCompressions) {
        SaveOptions options;
        options.exr_compression = compression;
        options.threads = 2;
        const std::string file = path(std::string(compression) + ".exr");
        SCOPED_TRACE(file);
        saveImage(img, file, options);
        expectSame(loadImage(file), img, 0.0f);
        saveImage(FloatWorldFrame{&world.get()}, file, options);
        expectSame(loadImage(file), img, 0.0f);
    }
    EXPECT_THROW(saveImage(FloatWorldFrame{&world.get()}, path("float.png")), ImageIOError);
}

TEST_F(ImageFiles, SavingLeavesOnlyTheFinalFile) {
    saveImage(sample(1.0f / 255), path("only.png"));
    saveImage(sample(1.0f / 255), path("only.png"));  // replaces it
    EXPECT_EQ(filesInDir(), 1u);
    EXPECT_TRUE(fs::exists(path("only.png")));
}

// Each refusal names the file and leaves nothing behind.
TEST_F(ImageFiles, ErrorsNameTheFile) {
    SaveOptions twelve_bits, bad_level, lossy;
    twelve_bits.png_bits = 12;
    bad_level.png_level = 10;
    lossy.exr_compression = "dwaa";  // lossy: not offered
    const std::pair<std::string, SaveOptions> saves[] = {{"picture.bmp", {}},      {"x.png", twelve_bits},
                                                         {"y.png", bad_level},     {"z.exr", lossy},
                                                         {"no-such-dir/x.png", {}}};
    using test_support::errorOf;
    for (const auto& [name, options] : saves)
        EXPECT_NE(errorOf<ImageIOError>([&] { saveImage(sample(1.0f / 255), path(name), options); }).find(name), std::string::npos)
            << name;
    EXPECT_NE(errorOf<ImageIOError>([&] { loadImage(path("missing.png")); }).find("missing.png"), std::string::npos);
    EXPECT_EQ(filesInDir(), 0u);
}

}  // namespace
}  // namespace host
