// Record construction at the edges the everyday scenes do not reach: a camera focused closer than
// one pixel, a control layer scaled unevenly and no texture layer at all. Each scene is written
// next to the build so it can vary one setting.

#include <gtest/gtest.h>

#include <cmath>
#include <fstream>
#include <memory>
#include <string>

#include "host/session/Session.h"
#include "render/ConstructRenderInfo.h"
#include "support/BuiltRecord.h"

namespace {

constexpr double kTwoPi = 6.283185307179586;

// A 200 x 100 composition holding `layers` (JSON, each followed by a comma) and then the
// effect's solid (width x height) with `params`; written next to the build.
std::unique_ptr<host::Session> openEdgeScene(const std::string& file_name, const std::string& layers,
                                             const std::string& params, int width = 200, int height = 100)
{
    const std::string path = std::string(ORBIVANE_BINARY_DIR) + "/" + file_name;
    std::ofstream(path) << R"({"composition": {"name": "Edge", "width": 200, "height": 100, "frame_rate": 25,
                                               "duration": 2},
      "layers": [)" << layers << R"({"name": "Surface", "type": "solid", "source": {"width": )" << width
                        << R"(, "height": )" << height
                        << R"(, "color": [0, 255, 0]}, "effect": {"parameters": {)" << params << R"(}}}],
      "render": {"time": 0}})";
    return std::make_unique<host::Session>(path, ORBIVANE_MODULE_PATH);
}

using Built = test_support::BuiltRecord;

const std::string kTexture =
    R"({"name": "Halves", "type": "footage", "video": false,
        "source": {"generate": "checkerboard", "width": 100, "height": 50, "cell": 50,
                   "color": [255, 0, 0], "color2": [0, 0, 255]}},)";

TEST(ConstructEdgeCases, FocusCloserThanOnePixelCountsAsOne)
{
    const auto session = openEdgeScene("construct_close_focus.json", R"(
        {"name": "Camera 1", "type": "camera",
         "transform": {"position": [100, 50, -277.7777778], "auto_orient": false},
         "camera": {"zoom": 277.7777778, "focus_distance": 0.5, "aperture": 25.3, "blur_level": 100}},)" +
        kTexture, R"("Texture": "Halves", "Depth Of Field": 3)");
    Built built(*session);
    EXPECT_EQ(built.info.focus_distance, 1.0);
    // (zoom / 1) (25.3 / 10) (100 / 100) (100 / 100)
    EXPECT_NEAR(built.info.dof_blur, 277.7777778 * 2.53, 1e-4);
    EXPECT_TRUE(built.info.depth_pass);
}

// A control layer scaled (200 %, 50 %, 150 %) stretches the section along its X and Y and the
// height along its Z; the axes stay unit length.
TEST(ConstructEdgeCases, UnevenControlLayerScaleBecomesRadiiAndHeight)
{
    const auto session = openEdgeScene("construct_scaled_control.json", R"(
        {"name": "Handle", "type": "null", "3d": true,
         "transform": {"position": [100, 50, 0], "scale": [200, 50, 150], "rotation_x": -90, "rotation_z": -90}},)" +
        kTexture, R"("Texture": "Halves", "Control Layer": "Handle")");
    Built built(*session);
    const RenderInfo& info = built.info;
    EXPECT_NEAR(info.size.getX(), 2.0 * 100.0 / kTwoPi, 1e-4);
    EXPECT_NEAR(info.size.getY(), 0.5 * 100.0 / kTwoPi, 1e-4);
    EXPECT_NEAR(info.texture_height, 75.0, 1e-4);
    for (int c = 0; c < 3; ++c)
        EXPECT_NEAR(Vectormath::Aos::length(info.object_to_world.getCol(c)), 1.0f, 1e-6) << c;
    EXPECT_NEAR(info.object_to_world.getElem(3, 0), 100.0f, 1e-3);
    EXPECT_NEAR(info.object_to_world.getElem(3, 1), 50.0f, 1e-3);
}

// Without a texture layer the effect layer's own size is taken, not the composition's.
TEST(ConstructEdgeCases, NoTextureTakesTheEffectLayerSize)
{
    const auto session = openEdgeScene("construct_no_texture.json", "", "", 300, 120);
    Built built(*session);
    EXPECT_DOUBLE_EQ(built.info.texture_width, 300.0);
    EXPECT_DOUBLE_EQ(built.info.texture_height, 120.0);
    EXPECT_NEAR(built.info.size.getX(), 300.0 / kTwoPi, 1e-4);
}

}  // namespace
