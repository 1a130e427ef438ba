// Bad input to orbivane-render: one clear message naming the problem, a non-zero status, and
// nothing left in the output folder.

#include <gtest/gtest.h>

#include "Refusal.h"

namespace {

using clitest::expectRefused;

TEST(BadFiles, MalformedSceneNamesTheFileAndField) {
    expectRefused({"not json", {"broken.json"}, 2, {"broken.json", "not valid JSON"}},
                  {{"broken.json", "{\"composition\": {\"width\": 64,"}});
    expectRefused({"bad field", {"typo.json"}, 2, {"typo.json", "composition"}},
                  {{"typo.json", R"({"composition": {"width": 64, "height": 48, "frame_rate": 10,
                                     "duration": 1, "widht": 3}, "layers": [], "render": {}})"}});
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
