// Bad or hostile input to orbivane-render: files that are broken, not files or not images,
// images and compositions beyond the size limits, scene values that overflow or mean something
// else, unknown or out-of-range parameters and bad requests. Each is refused with its exit
// status and one line naming the file and the field, and nothing is left in the folder.

#include <gtest/gtest.h>

#include <cstdint>
#include <regex>
#include <sys/stat.h>
#include <unistd.h>

#include "host/files/ImageIO.h"
#include "host/pixels/Image.h"
#include "support/CliProcess.h"

namespace {

using namespace test_support;

// `text` with the first `from` replaced by `to` (the case's scene must contain `from`).
std::string edited(std::string text, const std::string& from, const std::string& to) {
    const std::size_t at = text.find(from);
    EXPECT_NE(at, std::string::npos) << from;
    return at == std::string::npos ? text : text.replace(at, from.size(), to);
}

// The small scene with its checkerboard texture replaced by the image file `file`.
std::string sceneWithTexture(const std::string& file) {
    return edited(smallScene(), R"("generate": "checkerboard", "width": 64, "height": 32,)",
                  R"("file": ")" + file + R"(",)");
}

std::string bigEndian(std::uint32_t v) { return {char(v >> 24), char(v >> 16), char(v >> 8), char(v)}; }

std::string pngChunk(const std::string& type, const std::string& data) {
    std::uint32_t crc = 0xFFFFFFFFu;
    for (unsigned char b : type + data) {
        crc ^= b;
        for (int k = 0; k < 8; ++k) crc = (crc >> 1) ^ (0xEDB88320u & (0u - (crc & 1u)));
    }
    return bigEndian(std::uint32_t(data.size())) + type + data + bigEndian(~crc);
}

// A PNG whose header claims `width` x `height` RGBA pixels; its pixel data is a stub, so only
// a reader that trusts the header before allocating would notice.
std::string pngClaiming(std::uint32_t width, std::uint32_t height) {
    const std::string ihdr = bigEndian(width) + bigEndian(height) + std::string("\x08\x06\x00\x00\x00", 5);
    const std::string idat("\x78\x9c\x63\x00\x00\x00\x01\x00\x01", 9);  // zlib stream of one zero byte
    return std::string("\x89PNG\r\n\x1a\n", 8) + pngChunk("IHDR", ihdr) + pngChunk("IDAT", idat) +
           pngChunk("IEND", "");
}

// The first half of a real 64 x 32 PNG: its header reads, its pixel data ends early.
std::string truncatedPng() {
    TempFolder dir;
    host::saveImage(host::Image(64, 32, host::RGBA{0.3f, 0.6f, 0.9f, 1.0f}), (dir / "whole.png").string());
    const std::string whole = slurp(dir / "whole.png");
    return whole.substr(0, whole.size() / 2);
}

const std::vector<std::string> kTexture = {"t.json", "-o", "x.png"};
const std::vector<std::string> kValues = {"v.json", "-o", "x.png"};

std::vector<std::string> setting(const std::string& assignment) {
    return {"small.json", "--set", assignment, "-o", "x.png"};
}

TEST(Refusals, FilesThatAreBrokenNotFilesOrNotImages) {
    const Refusal cases[] = {
        {"not json", {"broken.json"}, 2, {"broken.json", "not valid JSON"}, {{"broken.json", "{\"composition\": {"}}},
        {"bad field", {"typo.json"}, 2, {"typo.json", "composition"},
         {{"typo.json", R"({"composition": {"width": 64, "height": 48, "frame_rate": 10, "duration": 1,
                                            "widht": 3}, "layers": [], "render": {}})"}}},
        {"missing scene", {"nothere.json", "-o", "x.png"}, 2, {"nothere.json", "No such file or directory"}},
        {"folder as scene", {"sub", "-o", "x.png"}, 2, {"sub: ", "is a directory"}, {{"sub/keep.txt", "x"}}},
        {"device as scene", {"/dev/zero", "-o", "x.png"}, 2, {"/dev/zero", "is a device"}},
        {"device as texture", kTexture, 2, {"t.json: layers[0].source.file", "/dev/zero", "is a device"},
         {{"t.json", sceneWithTexture("/dev/zero")}}},
        {"folder as texture", kTexture, 2, {"layers[0].source.file", "is a directory"},
         {{"t.json", sceneWithTexture("sub")}, {"sub/keep.txt", "x"}}},
        {"missing texture", kTexture, 2, {"layers[0].source.file", "photo.png", "No such file"},
         {{"t.json", sceneWithTexture("photo.png")}}},
        {"not an image", kTexture, 2, {"layers[0].source.file", "photo.png"},
         {{"t.json", sceneWithTexture("photo.png")}, {"photo.png", "not a png at all"}}},
        // libpng's own complaints stay off the terminal: the one line gives the reason.
        {"truncated PNG", kTexture, 2, {"t.json: layers[0].source.file", "cut.png", "end of file"},
         {{"t.json", sceneWithTexture("cut.png")}, {"cut.png", truncatedPng()}}},
        {"PNG header past the world limit", kTexture, 2, {"layers[0].source.file", "100000 x 100000"},
         {{"t.json", sceneWithTexture("huge.png")}, {"huge.png", pngClaiming(100000, 100000)}}},
        {"texture past the memory budget", kTexture, 2, {"20000 x 20000", "GiB", "4 GiB"},
         {{"t.json", sceneWithTexture("big.png")}, {"big.png", pngClaiming(20000, 20000)}}},
        {"memory budget lowered", {"t.json", "--max-image-memory", "0.001", "-o", "x.png"}, 2, {"1000 x 1000", "MiB"},
         {{"t.json", sceneWithTexture("small.png")}, {"small.png", pngClaiming(1000, 1000)}}},
        {"solid past the world limit", kValues, 2, {"layers[1].source.width", "100000", "30000"},
         {{"v.json", edited(smallScene(), R"("source": {"width": 64, "height": 48})",
                            R"("source": {"width": 100000, "height": 2})")}}},
        {"size limit lowered", {"small.json", "--max-image-size", "32", "-o", "x.png"}, 2, {"composition.width", "32"}},
        {"composition past the memory budget", kValues, 2, {"v.json: composition:", "29000 x 29000"},
         {{"v.json", edited(smallScene(), R"("width": 64, "height": 48, "frame_rate")",
                            R"("width": 29000, "height": 29000, "frame_rate")")}}},
    };
    for (const Refusal& c : cases) expectRefused(c);
}

TEST(Refusals, SceneValuesThatOverflowOrMeanSomethingElse) {
    const std::string comp = R"("width": 64, "height": 48, "frame_rate": 10, "duration": 1)";
    auto scene = [&](const std::string& from, const std::string& to) {
        return Files{{"v.json", edited(smallScene(), from, to)}};
    };
    auto render = [](const std::string& r) { return Files{{"v.json", smallScene("", r)}}; };
    const Refusal cases[] = {
        {"number beyond a double", kValues, 2, {"v.json: composition.width", "too large"},
         scene(comp, R"("width": 1e400, "height": 48, "frame_rate": 10, "duration": 1)")},
        {"duplicate key", kValues, 2, {"v.json: composition.height", "twice"},
         scene(comp, R"("width": 64, "height": 48, "height": 480, "frame_rate": 10, "duration": 1)")},
        {"boolean for a slider", kValues, 2, {"layers[1].effect.parameters.Emit", "not true/false"},
         Files{{"v.json", smallScene(R"(, "Emit": true)")}}},
        {"frame rate too fast", kValues, 2, {"composition.frame_rate", "50000000"},
         scene(comp, R"("width": 64, "height": 48, "frame_rate": 5e7, "duration": 1)")},
        {"rate x duration beyond the tick count", kValues, 2, {"composition.duration", "time range"},
         scene(comp, R"("width": 64, "height": 48, "frame_rate": 30000, "duration": 1000)")},
        {"layer time beyond the tick count", kValues, 2, {"layers[0].start_time", "time range"},
         scene(R"("type": "footage")", R"("start_time": -1e12, "type": "footage")")},
        {"render time past the end", kValues, 2, {"render.time", "outside the composition"}, render(R"({"time": 5})")},
        {"render time negative", kValues, 2, {"render.time", "outside the composition"}, render(R"({"time": -1})")},
        {"render frames past the end", kValues, 2, {"render.frames", "frame 10", "0-9"},
         render(R"({"frames": [0, 10]})")},
        {"render downsample", kValues, 2, {"render.downsample", "1 to 64"}, render(R"({"downsample": 100000})")},
        {"pixel aspect beyond an int", kValues, 2, {"composition.pixel_aspect"},
         scene(comp, R"("width": 64, "height": 48, "frame_rate": 10, "duration": 1, "pixel_aspect": [1e300, 1])")},
        {"parent cycle", kValues, 2, {"layers[0].parent", "cycle", "\"Checker\" -> \"Surface\" -> \"Checker\""},
         Files{{"v.json", edited(edited(smallScene(), R"("name": "Checker",)", R"("name": "Checker", "parent": "Surface",)"),
                                 R"("name": "Surface",)", R"("name": "Surface", "parent": "Checker",)")}}},
        {"unknown name in the scene", kValues, 2,
         {"v.json", "layers[1].effect.parameters.Open Paramter", "no parameter named \"Open Paramter\"",
          "\"Open Parameter\""},
         Files{{"v.json", smallScene(R"(, "Open Paramter": 0.5)")}}},
        {"keyed value", kValues, 2, {"layers[1].effect.parameters.Open Parameter.keys[1]", "outside the valid range"},
         Files{{"v.json", smallScene(R"(, "Open Parameter": {"keys": [[0, 0], [1, 9]]})")}}},
    };
    for (const Refusal& c : cases) expectRefused(c);
}

TEST(Refusals, ParametersRequestsModulesAndOutput) {
    const Refusal cases[] = {
        {"override name", setting("Screww=30"), 2, {"--set Screww", "\"Screw\""}},
        {"nothing close", setting("Zebra Stripes=1"), 2, {"no parameter named \"Zebra Stripes\""}},
        {"no equals", setting("Screw"), 2, {"Name=value"}},
        {"slider range", setting("Open Parameter=5"), 2, {"--set Open Parameter", "outside the valid range"}},
        {"popup text", setting("Render Side=Sideways"), 2,
         {"no item \"Sideways\"", "\"Full\", \"Inside\", \"Outside\""}},
        {"popup number", setting("Render Side=4"), 2, {"Render Side"}},
        {"layer name", setting("Texture=Nobody"), 2, {"no layer named \"Nobody\""}},
        {"colour", setting("Fog Color=300,0,0"), 2, {"Fog Color"}},
        {"kind", setting("Position XY=12"), 2, {"Position XY", "expects a point"}},
        {"group", setting("Shading=1"), 2, {"Shading"}},
        {"past the end", {"small.json", "--frames", "8-10", "-o", "f.####.png"}, 2, {"frame 10", "0-9"}},
        {"no pattern", {"small.json", "--frames", "0-3", "-o", "f.png"}, 2, {"4 frames", "####"}},
        {"exr at 8 bits", {"small.json", "-o", "f.exr"}, 2, {"PNG"}},
        {"bad depth", {"small.json", "-b", "10"}, 2, {"bit-depth"}},
        {"bad range text", {"small.json", "--frames", "x"}, 2, {"\"x\""}},
        {"empty output name", {"small.json", "-o", ""}, 2, {"-o", "empty"}},
        {"missing module", {"small.json", "--module", "/nowhere/Orbivane.so", "-o", "x.png"}, 3,
         {"/nowhere/Orbivane.so", "not found"}},
        {"not a module", {"small.json", "--module", "fake.so", "-o", "x.png"}, 3,
         {"cannot load the effect module fake.so"}, {{"fake.so", "this is text, not a shared object"}}},
        {"render error", {"fail.json", "--module", CLI_FAILING_MODULE_PATH, "-o", "x.png"}, 4,
         {"frame 0", "error", "PF_Err_INTERNAL_STRUCT_DAMAGED", "the failing module fails"},
         {{"fail.json", R"({"composition": {"width": 16, "height": 16, "frame_rate": 10, "duration": 1},
                            "layers": [{"name": "Surface", "type": "solid", "source": {"width": 16, "height": 16},
                                        "effect": {"parameters": {"Amount": 20}}}], "render": {}})"}}},
        {"unwritable folder", {"small.json", "-o", "/proc/orbivane/x.png"}, 5, {"/proc/orbivane"}},
    };
    for (const Refusal& c : cases) expectRefused(c);
}

// Files made here rather than written: a FIFO (opening it would wait for a writer forever) and,
// where the tests do not run as root, a texture nobody may read.
TEST(Refusals, FifosAndUnreadableFilesAreNamed) {
    TempFolder dir;
    ASSERT_EQ(::mkfifo((dir / "pipe.json").c_str(), 0600), 0);
    CliRun run = runCli(dir, {"pipe.json", "-o", "x.png"});
    EXPECT_EQ(run.exit_code, 2);
    EXPECT_TRUE(contains(run.err, "pipe.json: cannot open the scene: is a FIFO")) << run.err;
    if (::geteuid() == 0) return;  // root reads every file
    dir.write("t.json", sceneWithTexture("locked.png"));
    dir.write("locked.png", "x");
    ::chmod((dir / "locked.png").c_str(), 0);
    run = runCli(dir, kTexture);
    EXPECT_EQ(run.exit_code, 2);
    EXPECT_TRUE(contains(run.err, "layers[0].source.file: cannot read image 'locked.png': Permission denied"))
        << run.err;
}

// The limits a refusal prints are accepted when typed back, and the documented limits of the
// sliders whose ends are not exact in 16.16 (0.999, 0.99) are accepted as written.
TEST(Refusals, SliderValuesAtTheirDocumentedLimitsAreAccepted) {
    const std::pair<std::string, std::vector<std::string>> sliders[] = {
        {"Ellipse X/Y", {"0.999", "-0.999"}}, {"Hyperboloid", {"0.99", "0"}}, {"Roughness", {"0.999", "0"}}};
    for (const auto& [slider, documented] : sliders) {
        TempFolder dir;
        dir.write("small.json", smallScene());
        const CliRun refused = runCli(dir, setting(slider + "=5"));
        std::smatch range;
        ASSERT_TRUE(std::regex_search(refused.err, range, std::regex("valid range (\\S+) \\.\\. (\\S+)\n")))
            << refused.err;
        std::vector<std::string> values = documented;
        values.insert(values.end(), {range[1].str(), range[2].str()});
        for (const std::string& value : values) {
            const CliRun run = runCli(dir, {"small.json", "--set", slider + "=" + value, "-q", "-o", "x.png"});
            EXPECT_EQ(run.exit_code, 0) << slider << "=" << value << "\n" << run.err;
        }
    }
}

}  // namespace
