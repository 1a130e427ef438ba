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

namespace {

void makeFolderFor(const std::string& path) {
    const std::filesystem::path folder = std::filesystem::path(path).parent_path();
    if (folder.empty()) return;
    std::error_code ec;
    if (const int fault = host::systemFault(host::SystemCall::MakeFolder))
        ec = std::error_code(fault, std::generic_category());
    else
        std::filesystem::create_directories(folder, ec);
    if (ec) throw CliError(kExitWriteFailed, "cannot create the folder " + folder.string() + ": " + ec.message());
}

template <class Frame>
void save(const Frame& frame, const std::string& path, const host::SaveOptions& encoding) {
    makeFolderFor(path);
    try {
        host::saveImage(frame, path, encoding);
    } catch (const host::ImageIOError& e) {
        throw CliError(kExitWriteFailed, e.what());
    }
}

}  // namespace

void writeFrame(const host::Image& frame, const std::string& path, int bit_depth, host::SaveOptions encoding) {
    encoding.png_bits = bit_depth == 16 ? 16 : 8;
    save(frame, path, encoding);
}

void writeFrame(const host::QuantisedImage& frame, const std::string& path, host::SaveOptions encoding) {
    encoding.png_bits = frame.bits();
    save(frame, path, encoding);
}

void writeFrame(const host::FloatWorldFrame& frame, const std::string& path, const host::SaveOptions& encoding) {
    save(frame, path, encoding);
}

}  // namespace cli
