// Scene files run end to end: the session loads the scene and the module, applies the scene's
// parameters by display name, and renders the scene's frames; bad values are named precisely.
#include <gtest/gtest.h>

#include <cstdio>
#include <string>
#include <tuple>

#include "host/files/ImageIO.h"
#include "host/session/Session.h"
#include "support/ErrorText.h"
#include "support/TempFolder.h"

#include <algorithm>

namespace host {
namespace {

// A 4x3 blue solid carrying the effect and a 2x2 checkerboard whose top-left pixel is red
// 0.6, shown to the effect through its "Source" layer parameter.
std::string sceneText(const std::string& parameters, const std::string& render = "{}") {
    return R"({
  "composition": {"width": 8, "height": 6, "frame_rate": 10, "duration": 1},
  "layers": [
    {"name": "Tex", "type": "footage", "video": false,
     "source": {"generate": "checkerboard", "width": 2, "height": 2, "cell": 1,
                "color": [153, 0, 0], "color2": [0, 0, 0]}},
    {"name": "Base", "type": "solid", "source": {"width": 4, "height": 3, "color": [0, 0, 255]},
     "effect": {"parameters": )" +
           parameters + R"(}}
  ],
  "render": )" + render +
           "}";
}

std::unique_ptr<Session> open(const std::string& parameters, const std::string& render = "{}") {
    std::remove(HOST_TEST_MODULE_PATH ".pipl");
    return std::make_unique<Session>(parse_scene(sceneText(parameters, render), "scene.json", ""),
                                     HOST_TEST_MODULE_PATH);
}

std::string refusal(const std::string& parameters) {
    return test_support::errorOf<SceneError>([&] { open(parameters); });
}

PF_PixelFloat pixel(const RenderResult& r, A_long x, A_long y) {
    PF_PixelFloat out{};
    const double white = r.output->format() == PF_PixelFormat_ARGB32 ? 255 : r.output->format() == PF_PixelFormat_ARGB64 ? 32768 : 1;
    dispatchPixelType(r.output->format(), [&](auto tag) {
        using Pixel = typename decltype(tag)::type;
        const Pixel& p = worldPixel<Pixel>(r.output->get(), x, y);
        out = PF_PixelFloat{float(p.alpha / white), float(p.red / white), float(p.green / white), float(p.blue / white)};
    });
    return out;
}

TEST(SceneSession, AppliesParametersByNameAndRendersTheScene) {
    auto session = open(R"({"Gain": 50, "Source": "Tex"})", R"({"frames": [0, 2], "bit_depth": 16})");
    EXPECT_EQ(session->times(), (std::vector<double>{0.0, 0.1, 0.2}));
    RenderResult frame = session->render(0.1);
    ASSERT_EQ(frame.err, PF_Err_NONE) << frame.return_msg;
    ASSERT_TRUE(frame.rendered);
    EXPECT_EQ(frame.output->format(), PF_PixelFormat_ARGB64);
    EXPECT_EQ(frame.output->get().width, 4);
    const PF_PixelFloat p = pixel(frame, 3, 2);
    EXPECT_FLOAT_EQ(p.red, 0.5f);    // Gain 50 %
    EXPECT_NEAR(p.green, 0.6, 1.0 / 32768);  // the checkerboard's red, rounded to 16 bits
    EXPECT_FLOAT_EQ(p.blue, 1.0f);   // the solid under the effect
    const std::vector<std::string> log = session->host().command_log();
    EXPECT_NE(std::find(log.begin(), log.end(), "PF_Cmd_SEQUENCE_SETUP"), log.end());
}

// A layer parameter's checked-out value names its layer in the first pointer word, also while
// the layer is trimmed out and brings no pixels; with the option off the word stays empty. The
// world's own bookkeeping must survive the word: a float layer still reads as float.
TEST(SceneSession, CheckedOutLayerValueNamesItsLayerInsideAndOutsideItsTimeSpan) {
    for (bool named : {true, false}) {
        HostOptions options;
        options.layer_handle_in_params = named;
        Session session(parse_scene(sceneText(R"({"Source": "Tex"})"), "scene.json", ""), HOST_TEST_MODULE_PATH,
                        options);
        Host& host = session.host();
        Layer& tex = host.composition()->layer(0);
        tex.in_point = 0.5;
        const void* handle = named ? host.layer_handle(tex.id) : nullptr;
        ASSERT_TRUE(!named || handle);
        for (double seconds : {0.4, 0.5}) {
            auto scope = host.render_scope(32, seconds);
            PF_InData* in_data = scope->in_data();
            PF_ParamDef def{};
            ASSERT_EQ(PF_CHECKOUT_PARAM(in_data, host.param_index("Source"), in_data->current_time,
                                        in_data->time_step, in_data->time_scale, &def), PF_Err_NONE);
            EXPECT_EQ(def.u.ld.reserved0, handle) << seconds;
            EXPECT_EQ(def.u.ld.data != nullptr, seconds >= 0.5) << seconds;
            if (def.u.ld.data) {
                EXPECT_EQ(worldPixelFormat(def.u.ld), PF_PixelFormat_ARGB128);
            }
            EXPECT_EQ(PF_CHECKIN_PARAM(in_data, &def), PF_Err_NONE);
        }
    }
}

TEST(SceneSession, BadParameterValuesAreNamedWithTheirPathAndRange) {
    const std::string path = "scene.json: layers[1].effect.parameters.";
    const std::tuple<const char*, std::string, const char*> rows[] = {  // scene values, start, content
        {R"({"Gian": 5})", path + "Gian: the effect has no parameter named \"Gian\"", "\"Gain\", \"Source\""},
        {R"({"Gain": 150})", path + "Gain: ", "\"Gain\": 150 is outside the valid range 0 .. 100"},
        {R"({"Gain": {"keys": [[0, 10], [1, -1]]}})", path + "Gain.keys[1]: ", ""},
        {R"({"Source": "Nowhere"})", path, "no layer named \"Nowhere\""},
        {R"({"Gain": "loud"})", path, "\"Gain\" expects a number"},
        {R"({"Source": 2})", path, "expects a layer name or null"},
    };
    for (const auto& [parameters, starts, says] : rows) {
        const std::string message = refusal(parameters);
        EXPECT_EQ(message.rfind(starts, 0), 0u) << message;
        EXPECT_NE(message.find(says), std::string::npos) << message;
    }
}

// A scene file on disk with an image footage layer: the module reads its parameters and the
// footage through its layer parameter.
class SceneFile : public ::testing::Test {
protected:
    void SetUp() override {
        Image texture(2, 2, RGBA{0, 0, 0, 1});
        texture.at(0, 0) = RGBA{0.4f, 0, 0, 1};  // what the module shows as green
        saveImage(texture, (dir / "tex.png").string());
        dir.write("scene.json", R"({
  "composition": {"width": 8, "height": 6, "frame_rate": 25, "duration": 2},
  "layers": [
    {"type": "footage", "source": {"file": "tex.png"}, "video": false},
    {"name": "Base", "type": "solid", "source": {"width": 4, "height": 3, "color": [0, 0, 255]},
     "effect": {"parameters": {"Gain": 40, "Source": "tex.png"}}}
  ],
  "render": {"time": 0.5}
})");
        std::remove(HOST_TEST_MODULE_PATH ".pipl");
    }
    const test_support::TempFolder dir;
};

TEST_F(SceneFile, RendersInAllThreeDepthsReadingParametersAndAFootageFile) {
    Session session((dir / "scene.json").string(), HOST_TEST_MODULE_PATH);
    EXPECT_EQ(session.times(), std::vector<double>{0.5});
    for (short depth : {8, 16, 32}) {
        RenderResult frame = session.host().render({0.5, depth, 1, {}});
        ASSERT_EQ(frame.err, PF_Err_NONE) << depth << " " << frame.return_msg;
        ASSERT_TRUE(frame.rendered);
        EXPECT_EQ(frame.output->get().width, 4);
        EXPECT_EQ(frame.output->get().height, 3);
        EXPECT_TRUE(frame.output->get().world_flags & PF_WorldFlag_WRITEABLE);
        const PF_PixelFloat p = pixel(frame, 0, 0);
        const double step = depth == 8 ? 1.0 / 255 : depth == 16 ? 1.0 / 32768 : 1e-6;
        EXPECT_NEAR(p.red, 0.4, step) << depth;    // Gain 40 %, truncated
        EXPECT_NEAR(p.green, 0.4, step) << depth;  // the footage file's top-left pixel
        EXPECT_FLOAT_EQ(p.blue, 1.0f) << depth;
    }
    EXPECT_EQ(session.host().unload(), "");  // every checkout and suite given back
}

}  // namespace
}  // namespace host
