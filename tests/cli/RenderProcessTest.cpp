// orbivane-render run as a process: the demo, frame ranges, settings and overrides.

#include <gtest/gtest.h>

#include <cmath>

#include "host/files/ImageIO.h"
#include "support/CliProcess.h"

namespace {

using namespace test_support;

// Each row: `text` has a line holding `start`, and from there to its end `part` too.
void expectLines(const std::string& text, const std::vector<std::pair<std::string, std::string>>& rows) {
    for (const auto& [start, part] : rows) {
        const std::size_t at = text.find(start);
        const std::string rest = at == std::string::npos ? "" : text.substr(at, text.find('\n', at) - at);
        EXPECT_TRUE(at != std::string::npos && contains(rest, part)) << start << ": " << part << "\n" << text;
    }
}

bool samePicture(const TempFolder& dir, const std::string& a, const std::string& b) {
    return host::loadImage((dir / a).string()).pixels() == host::loadImage((dir / b).string()).pixels();
}

TEST(DemoProcess, RendersTheBuiltInCompositionAndSaysWhere) {
    TempFolder dir;
    CliRun run = runCli(dir, {});
    ASSERT_EQ(run.exit_code, 0) << run.err;
    EXPECT_TRUE(contains(run.out, "wrote orbivane-demo.png")) << run.out;
    EXPECT_TRUE(contains(run.out, "1 frame in")) << run.out;
    EXPECT_EQ(run.err, "");  // not a terminal: no progress line
    EXPECT_EQ(dir.files(), (std::set<std::string>{"orbivane-demo.png"}));
    host::Image picture = host::loadImage((dir / "orbivane-demo.png").string());
    ASSERT_EQ(picture.width(), 960);
    ASSERT_EQ(picture.height(), 540);
    // Flattened over the composition's dark background, and the surface covers part of it.
    const host::RGBA corner = picture.at(0, 0);
    EXPECT_EQ(corner.a, 1.0f);
    int surface = 0;
    for (const host::RGBA& p : picture.pixels())
        if (std::fabs(p.r - corner.r) + std::fabs(p.g - corner.g) + std::fabs(p.b - corner.b) > 0.1) ++surface;
    EXPECT_GT(surface, 960 * 540 / 10);
    EXPECT_LT(surface, 960 * 540);
}

TEST(SceneProcess, FrameRangeFillsThePatternAndReportsTimes) {
    TempFolder dir;
    dir.write("small.json", smallScene(R"(, "Slide Texture": {"keys": [[0, 0], [1, 90]]})"));
    CliRun run = runCli(dir, {"small.json", "--frames", "2-4", "-o", "out/f.####.png"});
    ASSERT_EQ(run.exit_code, 0) << run.err;
    EXPECT_EQ(dir.files(), (std::set<std::string>{"small.json", "out/f.0002.png", "out/f.0003.png", "out/f.0004.png"}));
    EXPECT_TRUE(contains(run.out, "wrote 3 frames, out/f.0002.png .. out/f.0004.png")) << run.out;
    EXPECT_TRUE(contains(run.out, "3 frames in")) << run.out;
    EXPECT_TRUE(contains(run.out, "per frame (min")) << run.out;
    // The texture slides between frames, so the frames differ.
    EXPECT_FALSE(samePicture(dir, "out/f.0002.png", "out/f.0004.png"));
}

// --host-calls adds up the calls of every frame: one layer checkout per frame before the
// render, one pixel pass and one output checkout per frame in it. The surface is placed by a
// control layer, whose handle comes with its checked-out value: nothing After Effects refuses
// on render threads is called.
TEST(SceneProcess, HostCallsAreListedPerSmartCommandOverAllFrames) {
    TempFolder dir;
    dir.write("small.json", smallScene(R"(, "Control Layer": "Checker")"));
    CliRun run = runCli(dir, {"small.json", "--frames", "0-1", "-o", "f.####.png", "--quiet", "--host-calls"});
    ASSERT_EQ(run.exit_code, 0) << run.err;
    expectLines(run.out, {{"host calls over 2 frames", ""},
                          {"  checkout_layer ", " 2             0"},
                          {"  checkout_output ", " 0             2"},
                          {"  iterate_generic ", " 0             2"},
                          {"  AEGP_GetLayerToWorldXform ", " 0             2"},
                          {"no call that After Effects refuses on render threads\n", ""}});
}

TEST(SceneProcess, OverridesChangeThePictureAndTheListedValues) {
    TempFolder dir;
    dir.write("small.json", smallScene(R"(, "Open Parameter": 0)"));
    ASSERT_EQ(runCli(dir, {"small.json", "-o", "closed.png"}).exit_code, 0);
    CliRun run = runCli(dir, {"small.json", "--set", "Open Parameter=1.5", "-o", "open.png"});
    ASSERT_EQ(run.exit_code, 0) << run.err;
    EXPECT_FALSE(samePicture(dir, "closed.png", "open.png"));

    run = runCli(dir, {"small.json", "--list-params", "--set", "Open Parameter=1.5", "--set", "Render Side=Outside",
                       "--set", "Extension Side=1", "--set", "Fog Color=10,20,30", "--set", "Texture=none"});
    ASSERT_EQ(run.exit_code, 0) << run.err;
    EXPECT_TRUE(contains(run.out, "1.5")) << run.out;
    EXPECT_TRUE(contains(run.out, "\"Outside\"")) << run.out;
    EXPECT_TRUE(contains(run.out, "\"Head Side\"")) << run.out;
    EXPECT_TRUE(contains(run.out, "10,20,30")) << run.out;
    EXPECT_EQ(dir.files(), (std::set<std::string>{"small.json", "closed.png", "open.png"}));
}

TEST(Introspection, ListsParametersWithTheirState) {
    TempFolder dir;
    CliRun run = runCli(dir, {"--list-params"});
    ASSERT_EQ(run.exit_code, 0) << run.err;
    // Every parameter is listed, the input layer and the ends of the topics (sharing their
    // start's id) included; Falloff is None, so its radius is disabled.
    expectLines(run.out, {{"Open Parameter", "0 .. 2"},       {"Falloff Radius", "disabled"},
                          {"dammy", "hidden"},                {"Render Side", "Full|Inside|Outside"},
                          {"Extensions", "integer slider"},   {"Radius Scale", "0 .. 255"},
                          {"Control Layer", "supervise"},     {"(input layer)", ""},
                          {"(end of \"Open Cylinder\")", "13"}});
    EXPECT_EQ(std::count(run.out.begin(), run.out.end(), '\n'), 1 + 57) << run.out;
    EXPECT_TRUE(dir.files().empty());
}

// Runs in a folder holding small.json and orbit.json (the small scene asking for frames 8-9):
// the status, the files added (with the size of the first, when given) and parts of the output.
TEST(Runs, OptionsSettingsAndModuleChoice) {
    struct Run {
        std::vector<std::string> args;
        std::string env;
        int exit_code;
        std::set<std::string> files_added;
        std::vector<std::string> out, err;
        int width = 0, height = 0;
    };
    const std::string module = ORBIVANE_MODULE_PATH;
    const Run runs[] = {
        {{"orbit.json", "--progress"}, "", 0, {"orbit.0008.png", "orbit.0009.png"}, {}, {"[0/2]", "frame 9"}},
        {{"small.json", "--frame", "3", "-b", "32", "-d", "2", "-j", "2", "-o", "f.##.exr"}, "", 0, {"f.03.exr"},
         {}, {}, 32, 24},
        {{"small.json", "-b", "16", "-o", "deep.png"}, "", 0, {"deep.png"}, {}, {}, 64, 48},
        {{"--about"}, "", 0, {}, {"Orbivane, v1.1.6"}, {}},
        {{"--version"}, "", 0, {}, {"orbivane-render 1.1.6", "effect Orbivane 1.1.6 (release, build 1)"}, {}},
        {{"--help"}, "", 0, {}, {"Examples:", "--frames"}, {}},
        {{"--version"}, "ORBIVANE_MODULE=" + module, 0, {}, {module}, {}},
        {{"--version"}, "ORBIVANE_MODULE=/nowhere/Orbivane.so", 3, {}, {}, {"/nowhere/Orbivane.so"}},
    };
    for (const Run& r : runs) {
        TempFolder dir;
        dir.write("small.json", smallScene());
        dir.write("orbit.json", smallScene("", R"({"frames": [8, 9]})"));
        const CliRun run = runCli(dir, r.args, r.env);
        const std::string what = r.env + " " + r.args[0] + " ...\n" + run.out + run.err;
        EXPECT_EQ(run.exit_code, r.exit_code) << what;
        std::set<std::string> added = dir.files();
        for (const char* scene : {"small.json", "orbit.json"}) added.erase(scene);
        EXPECT_EQ(added, r.files_added) << what;
        for (const std::string& part : r.out) EXPECT_TRUE(contains(run.out, part)) << part << " in " << what;
        for (const std::string& part : r.err) EXPECT_TRUE(contains(run.err, part)) << part << " in " << what;
        if (r.width == 0 || added.empty()) continue;
        const host::Image picture = host::loadImage((dir / *added.begin()).string());
        EXPECT_EQ(picture.width(), r.width) << what;
        EXPECT_EQ(picture.height(), r.height) << what;
    }
}

}  // namespace
