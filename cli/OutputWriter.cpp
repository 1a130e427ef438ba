#include "cli/OutputWriter.h"

#include "cli/CliError.h"
#include "host/files/ImageIO.h"
#include "host/checks/SystemFaults.h"

#include <filesystem>
#include <system_error>

namespace cli {

void flattenOver(host::Image& frame, const host::RGBA& background) {
    for (host::RGBA& p : frame.pixels()) {
        const float a = p.a, rest = 1.0f - p.a;
        p.r = p.r * a + background.r * rest;
        p.g = p.g * a + background.g * rest;
        p.b = p.b * a + background.b * rest;
        p.a = 1.0f;
    }
}

void writeFrame(const host::Image& frame, const std::string& path, int bit_depth, host::SaveOptions encoding) {
    const std::filesystem::path folder = std::filesystem::path(path).parent_path();
    if (!folder.empty()) {
        std::error_code ec;
        if (const int fault = host::systemFault(host::SystemCall::MakeFolder))
            ec = std::error_code(fault, std::generic_category());
        else
            std::filesystem::create_directories(folder, ec);
        if (ec) throw CliError(kExitWriteFailed, "cannot create the folder " + folder.string() + ": " + ec.message());
    }
    encoding.png_bits = bit_depth == 16 ? 16 : 8;
    try {
        host::saveImage(frame, path, encoding);
    } catch (const host::ImageIOError& e) {
        throw CliError(kExitWriteFailed, e.what());
    }
}

}  // namespace cli
