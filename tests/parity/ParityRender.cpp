// Renders scene frames with an effect module and writes each output world's raw channel values
// as a pixel dump, so a frame rendered by Orbivane.aex under wine can be compared value by
// value with the same frame rendered by the Linux Orbivane.so.
//   parity_render MODULE OUT_DIR SCENE...
// Every time a scene asks for is rendered at 8 bits and at 32-bit float into
// OUT_DIR/<scene>.<frame>.<depth>.pix. The Windows build reads no image files: scenes with
// pictures are given to it as prepared by parity_prepare (pictures as pixel dumps).

#include <cstdio>
#include <exception>
#include <string>

#include "host/files/ImageDump.h"
#include "host/session/Session.h"
#include "support/RawPixels.h"

namespace {

std::string stem(const std::string& path) {
    const std::size_t slash = path.find_last_of("/\\");
    const std::string name = slash == std::string::npos ? path : path.substr(slash + 1);
    return name.substr(0, name.rfind('.'));
}

// Renders every frame of one scene at both depths; returns the number of frames written.
int renderScene(const std::string& module, const std::string& out_dir, const std::string& scene) {
    host::HostOptions options;
    options.poison = false;  // untouched pixels are zero in both builds
    host::Session session(scene, module, options);
    int written = 0;
    const std::vector<double> times = session.times();
    for (std::size_t frame = 0; frame < times.size(); ++frame) {
        for (short depth : {short(8), short(32)}) {
            session.host().set_time(times[frame]);
            const host::RenderResult result = session.render(times[frame], depth, 1);
            if (result.err != PF_Err_NONE || !result.output)
                throw std::runtime_error(scene + ": frame " + std::to_string(frame) + " at " + std::to_string(depth) +
                                         " bits failed with error " + std::to_string(result.err));
            const std::string path = out_dir + "/" + stem(scene) + "." + std::to_string(frame) + "." +
                                     std::to_string(depth) + ".pix";
            host::writeImageDump(test_support::rawChannels(result), path);
            ++written;
        }
    }
    return written;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc < 4) {
        std::fprintf(stderr, "usage: %s MODULE OUT_DIR SCENE...\n", argv[0]);
        return 2;
    }
    try {
        int frames = 0;
        for (int i = 3; i < argc; ++i) frames += renderScene(argv[1], argv[2], argv[i]);
        std::printf("parity_render: %d frames written to %s\n", frames, argv[2]);
        return 0;
    } catch (const std::exception& e) {
        std::fprintf(stderr, "parity_render: %s\n", e.what());
        return 1;
    }
}
