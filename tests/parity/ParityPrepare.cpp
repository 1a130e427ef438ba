// Prepares scenes for a build that reads no image files (the Windows build under wine):
//   parity_prepare OUT_DIR SCENE...
// Each scene is copied to OUT_DIR with every picture it uses decoded (through OpenImageIO)
// into a pixel dump beside it, so both builds texture with the same floats.

#include <cstdio>
#include <exception>
#include <filesystem>
#include <fstream>
#include <nlohmann/json.hpp>
#include <string>

#include "host/files/ImageDump.h"
#include "host/files/ImageIO.h"

namespace {

namespace fs = std::filesystem;
using Json = nlohmann::ordered_json;

// Replaces every {"file": NAME} below `node` by the dump of that picture, written to `out`.
void dumpPictures(Json& node, const fs::path& scene_dir, const fs::path& out) {
    if (node.is_object() && node.contains("file") && node["file"].is_string()) {
        const fs::path picture = scene_dir / node["file"].get<std::string>();
        const std::string dump = picture.filename().string() + ".pix";
        host::writeImageDump(host::loadImage(picture.string()), (out / dump).string());
        node["file"] = dump;
    }
    if (node.is_structured()) {
        for (Json& child : node) dumpPictures(child, scene_dir, out);
    }
}

void prepare(const fs::path& scene, const fs::path& out) {
    std::ifstream in(scene);
    if (!in) throw std::runtime_error("cannot read " + scene.string());
    Json json = Json::parse(in);
    dumpPictures(json, scene.parent_path(), out);
    std::ofstream file(out / scene.filename());
    file << json.dump(2) << "\n";
    if (!file) throw std::runtime_error("cannot write " + (out / scene.filename()).string());
}

}  // namespace

int main(int argc, char** argv) {
    if (argc < 3) {
        std::fprintf(stderr, "usage: %s OUT_DIR SCENE...\n", argv[0]);
        return 2;
    }
    try {
        fs::create_directories(argv[1]);
        for (int i = 2; i < argc; ++i) prepare(argv[i], argv[1]);
        return 0;
    } catch (const std::exception& e) {
        std::fprintf(stderr, "parity_prepare: %s\n", e.what());
        return 1;
    }
}
