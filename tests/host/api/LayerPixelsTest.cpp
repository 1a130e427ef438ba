// Layer pixels as the host renders them for the effect: generated and file sources at every
// depth, downsampled with ceil-sized extents, sub-rects with their origin, loaded once.
#include <gtest/gtest.h>

#include <string>

#include "host/comp/Composition.h"
#include "host/session/Host.h"
#include "host/files/ImageIO.h"
#include "host/api/LayerPixels.h"
#include "support/TempFolder.h"

namespace host {
namespace {

Layer checkerLayer() {
    Layer layer;
    layer.kind = LayerKind::Footage;
    layer.source.pattern = GeneratedPattern::Checkerboard;
    layer.source.width = 4;
    layer.source.height = 4;
    layer.source.cell = 2;
    layer.source.color = Color{1, 1, 1, 1};   // opaque white
    layer.source.color2 = Color{1, 0, 0, 1};  // opaque blue
    return layer;
}

struct Filled {
    OwnedWorld world;
    PF_PixelFormat format;
    Filled(LayerPixels& pixels, const Layer& layer, PF_PixelFormat f, A_long w, A_long h, double scale,
           A_long origin_x = 0, A_long origin_y = 0)
        : format(f) {
        WorldOptions options;
        options.initial = WorldOptions::Initial::Poison;  // every byte must be written
        EXPECT_EQ(world.allocate(w, h, f, options), PF_Err_NONE);
        world->origin_x = origin_x;
        world->origin_y = origin_y;
        pixels.fill(layer, 64, 48, f, scale, scale, world.get());
    }
    PF_Pixel at8(A_long x, A_long y) const { return worldPixel<PF_Pixel>(world.get(), x, y); }
};

bool same(const PF_Pixel& a, const PF_Pixel& b) {
    return a.alpha == b.alpha && a.red == b.red && a.green == b.green && a.blue == b.blue;
}

constexpr PF_Pixel kWhite{255, 255, 255, 255};
constexpr PF_Pixel kBlue{255, 0, 0, 255};
constexpr PF_Pixel kClear{0, 0, 0, 0};

// An 8-bit world row by row: W white, B blue, . clear, ? anything else.
std::string picture(const Filled& f) {
    std::string text;
    for (A_long y = 0; y < f.world->height; ++y) {
        if (y) text += '|';
        for (A_long x = 0; x < f.world->width; ++x) {
            const PF_Pixel p = f.at8(x, y);
            text += same(p, kWhite) ? 'W' : same(p, kBlue) ? 'B' : same(p, kClear) ? '.' : '?';
        }
    }
    return text;
}

// Half resolution averages whole 2x2 cells, so they stay pure; a third gives ceil(4/3) = 2
// pixels, the second covering one source column and row only. One source, three conversions.
TEST(LayerPixels, GeneratedSourceAtFullAndReducedResolution) {
    LayerPixels pixels;
    const Layer layer = checkerLayer();
    EXPECT_EQ(picture(Filled(pixels, layer, PF_PixelFormat_ARGB32, 4, 4, 1.0)), "WWBB|WWBB|BBWW|BBWW");
    EXPECT_EQ(picture(Filled(pixels, layer, PF_PixelFormat_ARGB32, 2, 2, 0.5)), "WB|BW");
    EXPECT_EQ(picture(Filled(pixels, layer, PF_PixelFormat_ARGB32, 2, 2, 1.0 / 3.0)), "??|?W");
    EXPECT_EQ(pixels.images_loaded(), 1u);
}

// A sub-rect at (2, 3) starts in cell (1, 1) and runs off the source; one at (-1, 2) starts
// before it.
TEST(LayerPixels, SubRectStartsAtItsOriginAndIsTransparentBeyondTheSource) {
    LayerPixels pixels;
    EXPECT_EQ(picture(Filled(pixels, checkerLayer(), PF_PixelFormat_ARGB32, 3, 2, 1.0, 2, 3)), "WW.|...");
    EXPECT_EQ(picture(Filled(pixels, checkerLayer(), PF_PixelFormat_ARGB32, 2, 1, 1.0, -1, 2)), ".B");
}

TEST(LayerPixels, SolidWithoutASizeCoversItsComposition) {
    LayerPixels pixels;
    Layer solid;
    solid.kind = LayerKind::Solid;
    solid.source.color = Color{1, 1, 0, 0};
    Filled f(pixels, solid, PF_PixelFormat_ARGB32, 64, 48, 1.0);
    EXPECT_TRUE(same(f.at8(63, 47), PF_Pixel{255, 255, 0, 0}));
    Layer camera;
    camera.kind = LayerKind::Camera;
    EXPECT_EQ(picture(Filled(pixels, camera, PF_PixelFormat_ARGB32, 2, 2, 1.0)), "..|..");  // no pixels of its own
}

class FileSource : public ::testing::Test {
protected:
    void SetUp() override {
        Image image(3, 1, RGBA{0, 0, 0, 1});
        image.at(0, 0) = RGBA{1, 0, 0, 1};
        image.at(2, 0) = RGBA{0, 0, 1, 1};
        saveImage(image, path);
    }
    const test_support::TempFolder dir;
    const std::string path = (dir / "source.png").string();
};

TEST_F(FileSource, ReadOnceAndSharedByEveryLayerUsingIt) {
    LayerPixels pixels;
    Layer a;
    a.kind = LayerKind::Footage;
    a.source.path = path;
    a.source.width = 3;
    a.source.height = 1;
    Layer b = a;
    b.id = 7;
    Filled fa(pixels, a, PF_PixelFormat_ARGB64, 3, 1, 1.0);
    Filled fb(pixels, b, PF_PixelFormat_ARGB32, 3, 1, 1.0);
    EXPECT_EQ(worldPixel<PF_Pixel16>(fa.world.get(), 0, 0).red, 32768);
    EXPECT_EQ(worldPixel<PF_Pixel16>(fa.world.get(), 1, 0).red, 0);
    EXPECT_EQ(picture(fb), "??B");
    EXPECT_EQ(pixels.images_loaded(), 1u);
}

TEST_F(FileSource, HostRendersLayersFromTheirSourcesByDefault) {
    auto comp = std::make_shared<Composition>("Main", 64, 48, 25, 1);
    Layer footage;
    footage.kind = LayerKind::Footage;
    footage.source.path = path;
    footage.source.width = 3;
    footage.source.height = 1;
    const int footage_id = comp->add_layer(footage).id;
    Layer missing = footage;
    missing.source.path = path + ".gone.png";
    const int missing_id = comp->add_layer(missing).id;

    Host session;
    session.set_composition(comp, footage_id);
    auto half = session.layer_world(footage_id, 0, 32, {1, 2}, {1, 2}, nullptr, false);
    ASSERT_TRUE(half);
    EXPECT_EQ(half->get().width, 2);  // ceil(3 / 2)
    EXPECT_EQ(half->get().height, 1);
    EXPECT_FLOAT_EQ(worldPixel<PF_PixelFloat>(half->get(), 1, 0).blue, 1.0f);  // source column 2 alone

    auto gone = session.layer_world(missing_id, 0, 8, {1, 1}, {1, 1}, nullptr, false);
    ASSERT_TRUE(gone);
    EXPECT_TRUE(same(worldPixel<PF_Pixel>(gone->get(), 0, 0), kClear));
    ASSERT_FALSE(session.messages().empty());
    EXPECT_NE(session.messages().back().find(".gone.png"), std::string::npos) << session.messages().back();
}

}  // namespace
}  // namespace host
