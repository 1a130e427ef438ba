// Bad input to orbivane-render: one clear message naming the problem, a non-zero status, and
// nothing left in the output folder.

#include <gtest/gtest.h>

#include "CliRunner.h"
#include "SmallScene.h"

namespace {

using clitest::CliRun;
using clitest::runCli;
using clitest::TempFolder;

struct BadCase {
    const char* what;
    std::vector<std::string> args;
    int exit_code;
    std::vector<std::string> message_parts;
};

// Runs `c` in a folder holding the small scene (plus `files`) and checks status, message and
// that no file was added.
void expectRefused(const BadCase& c, const std::vector<std::pair<std::string, std::string>>& files = {}) {
    TempFolder dir;
    dir.write("small.json", clitest::smallScene());
    for (const auto& f : files) dir.write(f.first, f.second);
    const std::set<std::string> before = dir.files();
    CliRun run = runCli(dir, c.args);
    EXPECT_EQ(run.exit_code, c.exit_code) << c.what << "\n" << run.err;
    EXPECT_EQ(run.out, "") << c.what;
    for (const std::string& part : c.message_parts)
        EXPECT_NE(run.err.find(part), std::string::npos) << c.what << ": no \"" << part << "\" in\n" << run.err;
    EXPECT_EQ(run.err.rfind("orbivane-render: ", 0), 0u) << c.what << "\n" << run.err;
    EXPECT_EQ(dir.files(), before) << c.what;
}

TEST(BadFiles, MissingOrUnreadableScene) {
    expectRefused({"missing", {"nothere.json", "-o", "x.png"}, 2, {"nothere.json", "cannot open"}});
    expectRefused({"folder", {"sub", "-o", "x.png"}, 2, {"sub"}}, {{"sub/keep.txt", "x"}});
}

TEST(BadFiles, MalformedSceneNamesTheFileAndField) {
    expectRefused({"not json", {"broken.json"}, 2, {"broken.json", "not valid JSON"}},
                  {{"broken.json", "{\"composition\": {\"width\": 64,"}});
    expectRefused({"bad field", {"typo.json"}, 2, {"typo.json", "composition"}},
                  {{"typo.json", R"({"composition": {"width": 64, "height": 48, "frame_rate": 10,
                                     "duration": 1, "widht": 3}, "layers": [], "render": {}})"}});
}

TEST(BadFiles, MissingTextureImageIsNamed) {
    const std::string scene = R"({
      "composition": {"width": 64, "height": 48, "frame_rate": 10, "duration": 1},
      "layers": [
        {"name": "Photo", "type": "footage", "video": false, "source": {"file": "photo.png"}},
        {"name": "Surface", "type": "solid", "source": {"width": 64, "height": 48},
         "effect": {"parameters": {"Texture": "Photo"}}}],
      "render": {}})";
    expectRefused({"missing image", {"photo.json", "-o", "x.png"}, 2, {"photo.png"}}, {{"photo.json", scene}});
    expectRefused({"corrupt image", {"photo.json", "-o", "x.png"}, 2, {"photo.png"}},
                  {{"photo.json", scene}, {"photo.png", "not a png at all"}});
}

TEST(BadParameters, UnknownNamesSuggestTheClosestOne) {
    expectRefused({"scene name", {"typo.json", "-o", "x.png"}, 2,
                   {"typo.json", "layers[1].effect.parameters.Open Paramter", "no parameter named \"Open Paramter\"",
                    "\"Open Parameter\""}},
                  {{"typo.json", clitest::smallScene(R"(, "Open Paramter": 0.5)")}});
    expectRefused({"override name", {"small.json", "--set", "Screww=30", "-o", "x.png"}, 2,
                   {"--set Screww", "\"Screw\""}});
    expectRefused({"nothing close", {"small.json", "--set", "Zebra Stripes=1", "-o", "x.png"}, 2,
                   {"no parameter named \"Zebra Stripes\""}});
    expectRefused({"no equals", {"small.json", "--set", "Screw", "-o", "x.png"}, 2, {"Name=value"}});
}

TEST(BadParameters, ValuesOutsideTheirRangeOrKind) {
    expectRefused({"slider range", {"small.json", "--set", "Open Parameter=5", "-o", "x.png"}, 2,
                   {"--set Open Parameter", "outside the valid range"}});
    expectRefused({"popup text", {"small.json", "--set", "Render Side=Sideways", "-o", "x.png"}, 2,
                   {"no item \"Sideways\"", "\"Full\", \"Inside\", \"Outside\""}});
    expectRefused({"popup number", {"small.json", "--set", "Render Side=4", "-o", "x.png"}, 2, {"Render Side"}});
    expectRefused({"layer name", {"small.json", "--set", "Texture=Nobody", "-o", "x.png"}, 2,
                   {"no layer named \"Nobody\""}});
    expectRefused({"colour", {"small.json", "--set", "Fog Color=300,0,0", "-o", "x.png"}, 2, {"Fog Color"}});
    expectRefused({"kind", {"small.json", "--set", "Position XY=12", "-o", "x.png"}, 2,
                   {"Position XY", "expects a point"}});
    expectRefused({"group", {"small.json", "--set", "Shading=1", "-o", "x.png"}, 2, {"Shading"}});
    expectRefused({"keyed value", {"keys.json", "-o", "x.png"}, 2,
                   {"layers[1].effect.parameters.Open Parameter.keys[1]", "outside the valid range"}},
                  {{"keys.json", clitest::smallScene(R"(, "Open Parameter": {"keys": [[0, 0], [1, 9]]})")}});
}

TEST(BadRequests, FramesAndOutputNames) {
    expectRefused({"past the end", {"small.json", "--frames", "8-10", "-o", "f.####.png"}, 2, {"frame 10", "0-9"}});
    expectRefused({"no pattern", {"small.json", "--frames", "0-3", "-o", "f.png"}, 2, {"4 frames", "####"}});
    expectRefused({"exr at 8 bits", {"small.json", "-o", "f.exr"}, 2, {"PNG"}});
    expectRefused({"bad depth", {"small.json", "-b", "10"}, 2, {"bit-depth"}});
    expectRefused({"bad range text", {"small.json", "--frames", "x"}, 2, {"\"x\""}});
}

TEST(BadModules, MissingOrBrokenModule) {
    expectRefused({"missing", {"small.json", "--module", "/nowhere/Orbivane.so", "-o", "x.png"}, 3,
                   {"/nowhere/Orbivane.so", "not found"}});
    expectRefused({"not a module", {"small.json", "--module", "fake.so", "-o", "x.png"}, 3,
                   {"cannot load the effect module fake.so"}},
                  {{"fake.so", "this is text, not a shared object"}});
}

TEST(BadModules, ModuleErrorWhileRenderingLeavesNoFile) {
    const std::string scene = R"({
      "composition": {"width": 16, "height": 16, "frame_rate": 10, "duration": 1},
      "layers": [{"name": "Surface", "type": "solid", "source": {"width": 16, "height": 16},
                  "effect": {"parameters": {"Amount": 20}}}],
      "render": {}})";
    expectRefused({"render error", {"fail.json", "--module", CLI_FAILING_MODULE_PATH, "-o", "x.png"}, 4,
                   {"frame 0", "error", "PF_Err_INTERNAL_STRUCT_DAMAGED", "the failing module fails"}},
                  {{"fail.json", scene}});
}

TEST(BadOutput, UnwritableFolderIsReported) {
    expectRefused({"unwritable", {"small.json", "-o", "/proc/orbivane/x.png"}, 5, {"/proc/orbivane"}});
}

}  // namespace
