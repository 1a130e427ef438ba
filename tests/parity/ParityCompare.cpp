// Compares the frames two builds rendered (parity_render dumps) and fails when they differ by
// more than different C libraries may round: one step of an 8-bit channel, 1e-4 of a float
// channel (tan, atan2f or pow may differ in the last place).
//   parity_compare EXPECTED_DIR ACTUAL_DIR
// Prints the largest difference seen at each depth; every file of EXPECTED_DIR must have a
// counterpart of the same size.

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <exception>
#include <filesystem>
#include <string>

#include "host/files/ImageDump.h"

namespace {

namespace fs = std::filesystem;

struct Worst {
    double difference = 0;
    std::string where;
};

double largestDifference(const host::Image& a, const host::Image& b, std::string& where) {
    double worst = 0;
    for (int y = 0; y < a.height(); ++y) {
        for (int x = 0; x < a.width(); ++x) {
            const host::RGBA p = a.at(x, y), q = b.at(x, y);
            for (double d : {p.r - q.r, p.g - q.g, p.b - q.b, p.a - q.a}) {
                // A NaN on one side only is the largest difference there is.
                const double size = std::isnan(d) ? INFINITY : std::fabs(d);
                if (size > worst) {
                    worst = size;
                    where = "pixel " + std::to_string(x) + "," + std::to_string(y);
                }
            }
        }
    }
    return worst;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc != 3) {
        std::fprintf(stderr, "usage: %s EXPECTED_DIR ACTUAL_DIR\n", argv[0]);
        return 2;
    }
    try {
        Worst eight, floats;
        int frames = 0;
        for (const auto& entry : fs::directory_iterator(argv[1])) {
            const std::string name = entry.path().filename().string();
            if (entry.path().extension() != ".pix") continue;
            const host::Image expected = host::readImageDump(entry.path().string());
            const host::Image actual = host::readImageDump((fs::path(argv[2]) / name).string());
            if (actual.width() != expected.width() || actual.height() != expected.height())
                throw std::runtime_error(name + ": the frames differ in size");
            std::string where;
            const double difference = largestDifference(expected, actual, where);
            Worst& worst = name.size() > 6 && name.compare(name.size() - 6, 6, ".8.pix") == 0 ? eight : floats;
            if (difference >= worst.difference) worst = Worst{difference, name + " " + where};
            ++frames;
        }
        if (frames == 0) throw std::runtime_error(std::string("no frames in ") + argv[1]);
        std::printf("parity: %d frames; largest difference 8-bit %g (%s), float %g (%s)\n", frames,
                    eight.difference, eight.where.c_str(), floats.difference, floats.where.c_str());
        const bool within = eight.difference <= 1.0 && floats.difference <= 1e-4;
        if (!within) std::fprintf(stderr, "parity: FAILED: allowed 1 (8-bit) and 1e-4 (float)\n");
        return within ? 0 : 1;
    } catch (const std::exception& e) {
        std::fprintf(stderr, "parity_compare: %s\n", e.what());
        return 1;
    }
}
