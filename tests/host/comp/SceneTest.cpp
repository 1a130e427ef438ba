// Scene files: a complete scene and the messages for bad ones.
#include "host/comp/Scene.h"

#include <gtest/gtest.h>

#include <string>

#include "support/ErrorText.h"
#include "support/TempFolder.h"

namespace host {
namespace {

const char* kScene = R"({
  "composition": {"name": "Main", "width": 640, "height": 360, "frame_rate": 25,
                  "duration": 4, "background": [0, 0, 51]},
  "layers": [
    {"name": "Camera 1", "type": "camera",
     "transform": {"position": [320, 180, -800], "point_of_interest": [320, 180, 0]},
     "camera": {"zoom": 800, "depth_of_field": true, "focus_distance": 750,
                "aperture": {"keys": [[0, 10], [2, 30]]}, "projection": "orthographic"}},
    {"name": "Key", "type": "light", "in_point": 1, "duration": 2,
     "light": {"type": "spot", "intensity": 150, "color": [255, 128, 0], "cone_angle": 60,
               "casts_shadows": true}},
    {"name": "Fill", "type": "light", "video": false, "light": {"type": "ambient"}},
    {"type": "footage", "3d": true, "parent": "Key",
     "source": {"generate": "checkerboard", "width": 256, "height": 128, "cell": 16},
     "transform": {"rotation_y": {"keys": [[0, 0], [4, 360]]}}},
    {"name": "Surface", "type": "solid", "source": {"width": 640, "height": 360, "color": [10, 20, 30]},
     "effect": {"parameters": {
        "Open Parameter": 0.5, "Texture": "Checkerboard 256x128", "Render Side": "Outside",
        "Fog Color": [255, 0, 0], "Position XY": [320, 180], "Show Pivot": true,
        "Control Layer": null, "Rotation X": {"keys": [[0, 0], [1, 90]]}}}}
  ],
  "render": {"frames": [0, 2], "bit_depth": 16, "downsample": 2}
})";

TEST(Scene, LoadsCompositionLayersEffectAndRenderSettings) {
    Scene s = parse_scene(kScene, "scene.json", "");
    const Composition& c = *s.composition;
    EXPECT_EQ(c.name(), "Main");
    EXPECT_EQ(c.width(), 640);
    EXPECT_DOUBLE_EQ(c.background().blue, 0.2);
    ASSERT_EQ(c.num_layers(), 5u);

    const Layer& cam = c.layer(0);
    EXPECT_EQ(cam.kind, LayerKind::Camera);
    EXPECT_EQ(cam.camera.projection, CameraProjection::Orthographic);
    EXPECT_DOUBLE_EQ(cam.camera.zoom.at(0), 800);
    EXPECT_DOUBLE_EQ(cam.camera.depth_of_field.at(0), 1);
    EXPECT_DOUBLE_EQ(cam.camera.aperture.at(1), 20);
    EXPECT_EQ(c.active_camera(0), &cam);

    const Layer& key = c.layer(1);
    EXPECT_EQ(key.light.type, LightType::Spot);
    EXPECT_DOUBLE_EQ(key.light.color.at(0).green, 128.0 / 255.0);
    EXPECT_DOUBLE_EQ(key.light.casts_shadows.at(0), 1);
    EXPECT_TRUE(key.spans(2.5));
    EXPECT_FALSE(key.spans(3.0));
    // Lights default to aiming at the composition centre from the default camera's place.
    EXPECT_DOUBLE_EQ(key.transform.point_of_interest.at(0).x, 320);
    EXPECT_NEAR(key.transform.position.at(0).z, -888.888888889, 1e-6);
    EXPECT_FALSE(c.layer(2).video_active);
    EXPECT_EQ(c.layer(2).light.type, LightType::Ambient);

    const Layer& footage = c.layer(3);
    EXPECT_EQ(footage.name, "");  // unnamed: shows its source's name
    EXPECT_EQ(footage.display_name(), "Checkerboard 256x128");
    EXPECT_EQ(footage.source.pattern, GeneratedPattern::Checkerboard);
    EXPECT_EQ(footage.source.cell, 16);
    EXPECT_EQ(footage.parent_id, key.id);
    EXPECT_DOUBLE_EQ(footage.transform.anchor.at(0).x, 128);  // centred anchor by default
    EXPECT_DOUBLE_EQ(footage.transform.rotation_y.at(1), 90);

    EXPECT_EQ(s.effect_layer_id, c.layer(4).id);
    ASSERT_EQ(s.parameters.size(), 8u);
    EXPECT_EQ(s.parameters[0].name, "Open Parameter");
    EXPECT_DOUBLE_EQ(s.parameters[0].value.number, 0.5);
    EXPECT_EQ(s.parameters[2].value.kind, SceneValue::Kind::Text);
    EXPECT_EQ(s.parameters[2].value.text, "Outside");
    EXPECT_EQ(s.parameters[3].value.numbers, (std::vector<double>{255, 0, 0}));
    EXPECT_DOUBLE_EQ(s.parameters[5].value.number, 1);
    EXPECT_EQ(s.parameters[6].value.kind, SceneValue::Kind::None);
    ASSERT_TRUE(s.parameters[7].animated());
    EXPECT_DOUBLE_EQ(s.parameters[7].keys[1].first, 1);
    EXPECT_DOUBLE_EQ(s.parameters[7].keys[1].second.number, 90);
    EXPECT_EQ(s.parameters[7].path, "layers[4].effect.parameters.Rotation X");

    EXPECT_EQ(s.render.bit_depth, 16);
    EXPECT_EQ(s.render.downsample, 2);
    EXPECT_EQ(s.render.times(c.frame_rate()), (std::vector<double>{0, 0.04, 0.08}));
}

TEST(Scene, ReadsTheSizeOfAnImageFileRelativeToTheScene) {
    const test_support::TempFolder dir;
    dir.write("tiny.ppm", "P6\n3 2\n255\n" + std::string(3 * 2 * 3, '\x7f'));
    Scene s = parse_scene(R"({"composition": {"width": 10, "height": 10, "frame_rate": 24, "duration": 1},
        "layers": [{"type": "footage", "source": {"file": "tiny.ppm"}, "effect": {}}]})",
                          "s.json", dir.path().string());
    const FootageSource& src = s.composition->layer(0).source;
    EXPECT_EQ(src.path, (dir / "tiny.ppm").string());
    EXPECT_EQ(src.width, 3);
    EXPECT_EQ(src.height, 2);
    EXPECT_EQ(src.name, "tiny.ppm");
    EXPECT_EQ(s.render.times(24), std::vector<double>{0});
}

std::string error_of(const std::string& layers, const std::string& extra = "") {
    std::string text = R"({"composition": {"width": 64, "height": 64, "frame_rate": 24, "duration": 1},
        "layers": )" + layers + extra + "}";
    return test_support::errorOf<SceneError>([&] { parse_scene(text, "scene.json", ""); });
}

const std::string kSolid = R"({"type": "solid", "source": {"width": 4, "height": 4}, "effect": {}})";

TEST(BadScene, MessagesNameTheFileTheFieldAndTheProblem) {
    EXPECT_EQ(error_of("[" + kSolid + R"(, {"type": "null"},
                 {"type": "null", "transform": {"scale": [100, 100]}}])"),
              "scene.json: layers[2].transform.scale: expected 3 numbers");
    EXPECT_EQ(error_of(R"([{"type": "blob"}])"),
              "scene.json: layers[0].type: expected one of \"footage\", \"solid\", \"null\", "
              "\"camera\", \"light\"");
    EXPECT_EQ(error_of("[" + kSolid + R"(, {"type": "light", "light": {"intensty": 5}}])"),
              "scene.json: layers[1].light.intensty: unknown field");
    EXPECT_EQ(error_of("[" + kSolid + R"(, {"type": "null", "parent": "Nobody"}])"),
              "scene.json: layers[1].parent: no layer named \"Nobody\"");
    EXPECT_EQ(error_of("[" + kSolid + "]", R"(, "render": {"bit_depth": 12})"),
              "scene.json: render.bit_depth: expected 8, 16 or 32");
    EXPECT_EQ(error_of(R"([{"type": "null"}])"), "scene.json: layers: no layer carries an \"effect\"");
    EXPECT_EQ(error_of("[" + kSolid + R"(, {"type": "camera", "transform": {"position": {"keys": [[0]]}}}])"),
              "scene.json: layers[1].transform.position.keys[0]: expected [seconds, value]");
    EXPECT_EQ(error_of("[" + kSolid + R"(, {"type": "light", "light": {"color": [300, 0, 0]}}])"),
              "scene.json: layers[1].light.color: colour channels must lie in 0..255");
    EXPECT_EQ(error_of(R"([{"type": "footage", "source": {"file": "missing.png"}}])"),
              "scene.json: layers[0].source.file: cannot read image 'missing.png': No such file or directory");
    EXPECT_EQ(error_of(R"([{"type": "null", "source": {"width": 1, "height": 1}}])"),
              "scene.json: layers[0].source: not allowed on this type of layer");
}

TEST(BadScene, InvalidJsonAndMissingFilesNameTheFile) {
    const std::string broken = test_support::errorOf<SceneError>([] { parse_scene("{\"composition\": ", "broken.json", ""); });
    EXPECT_EQ(broken.rfind("broken.json: composition: not valid JSON", 0), 0u) << broken;
    EXPECT_EQ(test_support::errorOf<SceneError>([] { load_scene("/nonexistent/dir/scene.json"); }),
              "/nonexistent/dir/scene.json: cannot open the scene: No such file or directory");
}

}  // namespace
}  // namespace host
