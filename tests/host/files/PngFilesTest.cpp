// PNG through libpng must give exactly the pixels OpenImageIO gives for every kind of PNG a
// texture can be, and what it writes must read back as written.
#include "host/files/PngFiles.h"
#include "host/session/ModuleLibrary.h"

#include <gtest/gtest.h>
#include <png.h>

#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include <unistd.h>

namespace host {
namespace {

namespace fs = std::filesystem;

const ImageIOModule& openImageIO() {
    static const ModuleLibrary library(std::string(ORBIVANE_BINARY_DIR) + "/orbivane_imageio.so");
    using Entry = const ImageIOModule* (*)();
    static const ImageIOModule* module = reinterpret_cast<Entry>(library.symbol("orbivane_image_io_module"))();
    return *module;
}

struct PngKind {
    const char* name;
    int colour;  // PNG_COLOR_TYPE_*
    int bits;
    bool transparency_chunk;
    bool interlaced;
};

// A 7 x 5 image of `kind` whose samples run through the whole range of its depth.
void writeTestPng(const std::string& path, const PngKind& kind) {
    constexpr int kWidth = 7, kHeight = 5;
    std::FILE* file = std::fopen(path.c_str(), "wb");
    ASSERT_NE(file, nullptr);
    png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
    png_infop info = png_create_info_struct(png);
    png_init_io(png, file);
    png_set_IHDR(png, info, kWidth, kHeight, kind.bits, kind.colour,
                 kind.interlaced ? PNG_INTERLACE_ADAM7 : PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_DEFAULT,
                 PNG_FILTER_TYPE_DEFAULT);
    if (kind.colour == PNG_COLOR_TYPE_PALETTE) {
        png_color palette[16];
        png_byte alphas[16];
        for (int i = 0; i < 16; ++i) {
            palette[i] = png_color{png_byte(i * 17), png_byte(255 - i * 13), png_byte(i * 5)};
            alphas[i] = png_byte(i * 16);
        }
        png_set_PLTE(png, info, palette, 1 << kind.bits);
        if (kind.transparency_chunk) png_set_tRNS(png, info, alphas, 1 << kind.bits, nullptr);
    } else if (kind.transparency_chunk) {
        png_color_16 key{};
        key.gray = 3;
        key.red = 3, key.green = 250, key.blue = 7;
        png_set_tRNS(png, info, nullptr, 0, &key);
    }
    png_write_info(png, info);
    const std::size_t row_bytes = png_get_rowbytes(png, info);
    std::vector<png_byte> rows(row_bytes * kHeight);
    for (std::size_t i = 0; i < rows.size(); ++i) rows[i] = png_byte(i * 37 + i / 7);
    std::vector<png_bytep> pointers(kHeight);
    for (int y = 0; y < kHeight; ++y) pointers[y] = &rows[y * row_bytes];
    png_write_image(png, pointers.data());
    png_write_end(png, nullptr);
    png_destroy_write_struct(&png, &info);
    std::fclose(file);
}

class PngFiles : public ::testing::Test {
protected:
    PngFiles() : dir_(fs::temp_directory_path() / ("orbivane-png-" + std::to_string(::getpid()))) {
        fs::create_directories(dir_);
    }
    ~PngFiles() override { fs::remove_all(dir_); }
    std::string path(const std::string& name) const { return (dir_ / name).string(); }

    fs::path dir_;
};

TEST_F(PngFiles, EveryKindReadsAsOpenImageIOReadsIt) {
    const PngKind kinds[] = {
        {"rgba8", PNG_COLOR_TYPE_RGB_ALPHA, 8, false, false},
        {"rgba16", PNG_COLOR_TYPE_RGB_ALPHA, 16, false, false},
        {"rgb8 interlaced", PNG_COLOR_TYPE_RGB, 8, false, true},
        {"rgb16 with a transparent colour", PNG_COLOR_TYPE_RGB, 16, true, false},
        {"grey1", PNG_COLOR_TYPE_GRAY, 1, false, false},
        {"grey4 with a transparent grey", PNG_COLOR_TYPE_GRAY, 4, true, false},
        {"grey16", PNG_COLOR_TYPE_GRAY, 16, false, false},
        {"grey+alpha8", PNG_COLOR_TYPE_GRAY_ALPHA, 8, false, false},
        {"grey+alpha16", PNG_COLOR_TYPE_GRAY_ALPHA, 16, false, false},
        {"palette4", PNG_COLOR_TYPE_PALETTE, 4, false, false},
        {"palette2 with alphas", PNG_COLOR_TYPE_PALETTE, 2, true, true},
    };
    for (const PngKind& kind : kinds) {
        SCOPED_TRACE(kind.name);
        const std::string file = path("kind.png");
        writeTestPng(file, kind);
        ASSERT_TRUE(isPngFile(file));
        const Image ours = readPngPixels(file);
        const Image theirs = openImageIO().load(file);
        ASSERT_EQ(ours.width(), theirs.width());
        ASSERT_EQ(ours.height(), theirs.height());
        EXPECT_EQ(std::memcmp(ours.pixels().data(), theirs.pixels().data(), ours.pixels().size() * sizeof(RGBA)), 0);
        const ImageHeader header = readPngHeader(file), their_header = openImageIO().header(file);
        EXPECT_EQ(header.channels, their_header.channels);
    }
}

TEST_F(PngFiles, WrittenChannelsReadBackAtEachDepth) {
    for (int bits : {8, 16}) {
        SCOPED_TRACE(std::to_string(bits) + " bits");
        QuantisedImage image;
        image.width = 9, image.height = 4;
        const std::size_t count = std::size_t(image.width) * image.height * 4;
        for (std::size_t i = 0; i < count; ++i) {
            if (bits == 8) image.rgba8.push_back(std::uint8_t(i * 7));
            else image.rgba16.push_back(std::uint16_t(i * 1999));
        }
        SaveOptions options;
        options.png_bits = bits;
        const std::vector<unsigned char> bytes = encodePng(image, path("out.png"), options);
        std::ofstream(path("out.png"), std::ios::binary).write(reinterpret_cast<const char*>(bytes.data()), bytes.size());
        const Image back = openImageIO().load(path("out.png"));
        ASSERT_EQ(back.width(), image.width);
        for (std::size_t i = 0; i < count; ++i) {
            const RGBA& p = back.pixels()[i / 4];
            const float channel[4] = {p.r, p.g, p.b, p.a};
            const double written = bits == 8 ? image.rgba8[i] / 255.0 : image.rgba16[i] / 65535.0;
            ASSERT_NEAR(channel[i % 4], written, 1e-6) << "channel " << i;
        }
    }
}

TEST_F(PngFiles, DamageAndMismatchesAreNamed) {
    writeTestPng(path("whole.png"), {"rgb8", PNG_COLOR_TYPE_RGB, 8, false, false});
    const auto size = fs::file_size(path("whole.png"));
    fs::copy_file(path("whole.png"), path("cut.png"));
    fs::resize_file(path("cut.png"), size - 20);
    try {
        readPngPixels(path("cut.png"));
        FAIL() << "a truncated file was read";
    } catch (const ImageIOError& e) {
        EXPECT_NE(std::string(e.what()).find("cut.png"), std::string::npos) << e.what();
        EXPECT_NE(std::string(e.what()).find("end of file"), std::string::npos) << e.what();
    }
    std::ofstream(path("fake.png")) << "not a png at all";
    EXPECT_FALSE(isPngFile(path("fake.png")));
    EXPECT_FALSE(isPngFile(path("missing.png")));

    QuantisedImage image;
    image.width = image.height = 1;
    image.rgba8 = {1, 2, 3, 4};
    SaveOptions sixteen;
    sixteen.png_bits = 16;
    EXPECT_THROW(encodePng(image, path("x.png"), sixteen), ImageIOError);
    EXPECT_THROW(encodePng(image, path("x.exr"), {}), ImageIOError);
    EXPECT_THROW(encodePng(image, path("x.tif"), {}), ImageIOError);
}

}  // namespace
}  // namespace host
