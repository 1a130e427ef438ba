// Hostile but fair input to orbivane-render: files that are not files, images and compositions
// beyond the size limits, scene values that overflow or mean something else, and slider values
// right at their limits. Refusals are exit 2 with one line naming the file and JSON path.

#include <gtest/gtest.h>

#include <array>
#include <cstdint>
#include <regex>
#include <sys/stat.h>
#include <unistd.h>

#include "Refusal.h"
#include "host/pixels/Image.h"
#include "host/files/ImageIO.h"

namespace {

using clitest::BadCase;
using clitest::CliRun;
using clitest::expectRefused;
using clitest::smallScene;
using Files = std::vector<std::pair<std::string, std::string>>;

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

std::uint32_t crc32(const std::string& bytes) {
    std::uint32_t crc = 0xFFFFFFFFu;
    for (unsigned char b : bytes) {
        crc ^= b;
        for (int k = 0; k < 8; ++k) crc = (crc >> 1) ^ (0xEDB88320u & (0u - (crc & 1u)));
    }
    return ~crc;
}

std::string bigEndian(std::uint32_t v) {
    return {char(v >> 24), char(v >> 16), char(v >> 8), char(v)};
}

std::string pngChunk(const std::string& type, const std::string& data) {
    return bigEndian(std::uint32_t(data.size())) + type + data + bigEndian(crc32(type + data));
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
    clitest::TempFolder dir;
    const std::string path = (dir / "whole.png").string();
    host::saveImage(host::Image(64, 32, host::RGBA{0.3f, 0.6f, 0.9f, 1.0f}), path);
    const std::string whole = clitest::slurp(path);
    return whole.substr(0, whole.size() / 2);
}

struct InputCase {
    BadCase run;  // exit status 2 in every row
    Files files;
};

// Refused with exit 2 and exactly one line of message.
void expectOneLineRefusal(const InputCase& c) {
    const CliRun run = expectRefused(c.run, c.files);
    EXPECT_EQ(std::count(run.err.begin(), run.err.end(), '\n'), 1) << c.run.what << "\n" << run.err;
}

TEST(HostileInput, FilesThatAreNotRegularFilesOrNotImages) {
    const std::vector<InputCase> cases = {
        {{"missing scene", {"nothere.json", "-o", "x.png"}, 2, {"nothere.json", "No such file or directory"}}, {}},
        {{"folder as scene", {"sub", "-o", "x.png"}, 2, {"sub: ", "is a directory"}}, {{"sub/keep.txt", "x"}}},
        {{"device as scene", {"/dev/zero", "-o", "x.png"}, 2, {"/dev/zero", "is a device"}}, {}},
        {{"device as texture", {"t.json", "-o", "x.png"}, 2, {"t.json: layers[0].source.file", "/dev/zero", "is a device"}},
         {{"t.json", sceneWithTexture("/dev/zero")}}},
        {{"folder as texture", {"t.json", "-o", "x.png"}, 2, {"layers[0].source.file", "is a directory"}},
         {{"t.json", sceneWithTexture("sub")}, {"sub/keep.txt", "x"}}},
        {{"missing texture", {"t.json", "-o", "x.png"}, 2, {"layers[0].source.file", "photo.png", "No such file"}},
         {{"t.json", sceneWithTexture("photo.png")}}},
        {{"not an image", {"t.json", "-o", "x.png"}, 2, {"layers[0].source.file", "photo.png"}},
         {{"t.json", sceneWithTexture("photo.png")}, {"photo.png", "not a png at all"}}},
        // libpng's own complaints stay off the terminal: the one line gives the reason.
        {{"truncated PNG", {"t.json", "-o", "x.png"}, 2, {"t.json: layers[0].source.file", "cut.png", "end of file"}},
         {{"t.json", sceneWithTexture("cut.png")}, {"cut.png", truncatedPng()}}},
    };
    for (const InputCase& c : cases) expectOneLineRefusal(c);
}

// Files made here rather than written: a FIFO (opening it would wait for a writer forever) and,
// where the tests do not run as root, a texture nobody may read.
TEST(HostileInput, FifosAndUnreadableFilesAreNamed) {
    clitest::TempFolder dir;
    ASSERT_EQ(::mkfifo((dir / "pipe.json").c_str(), 0600), 0);
    CliRun run = clitest::runCli(dir, {"pipe.json", "-o", "x.png"});
    EXPECT_EQ(run.exit_code, 2);
    EXPECT_NE(run.err.find("pipe.json: cannot open the scene: is a FIFO"), std::string::npos) << run.err;
    if (::geteuid() == 0) return;  // root reads every file
    dir.write("t.json", sceneWithTexture("locked.png"));
    dir.write("locked.png", "x");
    ::chmod((dir / "locked.png").c_str(), 0);
    run = clitest::runCli(dir, {"t.json", "-o", "x.png"});
    EXPECT_EQ(run.exit_code, 2);
    EXPECT_NE(run.err.find("layers[0].source.file: cannot read image 'locked.png': Permission denied"),
              std::string::npos) << run.err;
}

TEST(HostileInput, ImagesAndCompositionsBeyondTheSizeLimits) {
    const std::string solid = R"("source": {"width": 64, "height": 48})";
    const std::vector<InputCase> cases = {
        {{"PNG header past the world limit", {"t.json", "-o", "x.png"}, 2, {"layers[0].source.file", "100000 x 100000"}},
         {{"t.json", sceneWithTexture("huge.png")}, {"huge.png", pngClaiming(100000, 100000)}}},
        {{"texture past the memory budget", {"t.json", "-o", "x.png"}, 2, {"20000 x 20000", "GiB", "4 GiB"}},
         {{"t.json", sceneWithTexture("big.png")}, {"big.png", pngClaiming(20000, 20000)}}},
        {{"memory budget lowered", {"t.json", "--max-image-memory", "0.001", "-o", "x.png"}, 2, {"1000 x 1000", "MiB"}},
         {{"t.json", sceneWithTexture("small.png")}, {"small.png", pngClaiming(1000, 1000)}}},
        {{"solid past the world limit", {"s.json", "-o", "x.png"}, 2, {"layers[1].source.width", "100000", "30000"}},
         {{"s.json", edited(smallScene(), solid, R"("source": {"width": 100000, "height": 2})")}}},
        {{"size limit lowered", {"small.json", "--max-image-size", "32", "-o", "x.png"}, 2, {"composition.width", "32"}},
         {}},
        {{"composition past the memory budget", {"c.json", "-o", "x.png"}, 2, {"c.json: composition:", "29000 x 29000"}},
         {{"c.json", edited(smallScene(), R"("width": 64, "height": 48, "frame_rate")",
                            R"("width": 29000, "height": 29000, "frame_rate")")}}},
    };
    for (const InputCase& c : cases) expectOneLineRefusal(c);
}

TEST(HostileInput, SceneValuesThatOverflowOrMeanSomethingElse) {
    const std::string comp = R"("width": 64, "height": 48, "frame_rate": 10, "duration": 1)";
    auto scene = [&](const std::string& from, const std::string& to) { return Files{{"v.json", edited(smallScene(), from, to)}}; };
    const std::vector<std::string> args = {"v.json", "-o", "x.png"};
    const std::vector<InputCase> cases = {
        {{"number beyond a double", args, 2, {"v.json: composition.width", "too large"}},
         scene(comp, R"("width": 1e400, "height": 48, "frame_rate": 10, "duration": 1)")},
        {{"duplicate key", args, 2, {"v.json: composition.height", "twice"}},
         scene(comp, R"("width": 64, "height": 48, "height": 480, "frame_rate": 10, "duration": 1)")},
        {{"boolean for a slider", args, 2, {"layers[1].effect.parameters.Emit", "not true/false"}},
         Files{{"v.json", smallScene(R"(, "Emit": true)")}}},
        {{"frame rate too fast", args, 2, {"composition.frame_rate", "50000000"}},
         scene(comp, R"("width": 64, "height": 48, "frame_rate": 5e7, "duration": 1)")},
        {{"rate x duration beyond the tick count", args, 2, {"composition.duration", "time range"}},
         scene(comp, R"("width": 64, "height": 48, "frame_rate": 30000, "duration": 1000)")},
        {{"layer time beyond the tick count", args, 2, {"layers[0].start_time", "time range"}},
         scene(R"("name": "Checker", "type": "footage")", R"("name": "Checker", "start_time": -1e12, "type": "footage")")},
        {{"render time past the end", args, 2, {"render.time", "outside the composition"}},
         Files{{"v.json", smallScene("", R"({"time": 5})")}}},
        {{"render time negative", args, 2, {"render.time", "outside the composition"}},
         Files{{"v.json", smallScene("", R"({"time": -1})")}}},
        {{"render frames past the end", args, 2, {"render.frames", "frame 10", "0-9"}},
         Files{{"v.json", smallScene("", R"({"frames": [0, 10]})")}}},
        {{"render downsample", args, 2, {"render.downsample", "1 to 64"}},
         Files{{"v.json", smallScene("", R"({"downsample": 100000})")}}},
        {{"pixel aspect beyond an int", args, 2, {"composition.pixel_aspect"}},
         scene(comp, R"("width": 64, "height": 48, "frame_rate": 10, "duration": 1, "pixel_aspect": [1e300, 1])")},
        {{"parent cycle", args, 2, {"layers[0].parent", "cycle", "\"Checker\" -> \"Surface\" -> \"Checker\""}},
         Files{{"v.json", edited(edited(smallScene(), R"("name": "Checker",)", R"("name": "Checker", "parent": "Surface",)"),
                                 R"("name": "Surface",)", R"("name": "Surface", "parent": "Checker",)")}}},
        {{"empty output name", {"small.json", "-o", ""}, 2, {"-o", "empty"}}, {}},
    };
    for (const InputCase& c : cases) expectOneLineRefusal(c);
}

// The limits a refusal prints are accepted when typed back, and the documented limits of the
// sliders whose ends are not exact in 16.16 (0.999, 0.99) are accepted as written.
TEST(HostileInput, SliderValuesAtTheirDocumentedLimitsAreAccepted) {
    const std::vector<std::pair<std::string, std::vector<std::string>>> sliders = {
        {"Ellipse X/Y", {"0.999", "-0.999"}}, {"Hyperboloid", {"0.99", "0"}}, {"Roughness", {"0.999", "0"}}};
    for (const auto& slider : sliders) {
        clitest::TempFolder dir;
        dir.write("small.json", smallScene());
        const CliRun refused = clitest::runCli(dir, {"small.json", "--set", slider.first + "=5", "-o", "x.png"});
        std::smatch range;
        ASSERT_TRUE(std::regex_search(refused.err, range, std::regex("valid range (\\S+) \\.\\. (\\S+)\n")))
            << refused.err;
        std::vector<std::string> values = slider.second;
        values.insert(values.end(), {range[1].str(), range[2].str()});
        for (const std::string& value : values) {
            const CliRun run = clitest::runCli(dir, {"small.json", "--set", slider.first + "=" + value, "-q", "-o", "x.png"});
            EXPECT_EQ(run.exit_code, 0) << slider.first << "=" << value << "\n" << run.err;
        }
    }
}

}  // namespace
