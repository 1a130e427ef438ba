#include "host/files/ImageDump.h"

#include <cstdint>
#include <cstring>
#include <fstream>

#include "host/files/ImageIO.h"

namespace host {

namespace {

constexpr char kMagic[8] = {'O', 'R', 'B', 'V', 'P', 'I', 'X', '1'};
constexpr int kMaxExtent = 1 << 15;  // larger than any layer the host accepts

std::uint32_t le32(const unsigned char* b) {
    return std::uint32_t(b[0]) | std::uint32_t(b[1]) << 8 | std::uint32_t(b[2]) << 16 | std::uint32_t(b[3]) << 24;
}

void putLe32(std::string& out, std::uint32_t v) {
    for (int shift = 0; shift < 32; shift += 8) out.push_back(char(v >> shift));
}

// Opens `path` and reads its header; the stream is left at the first pixel.
std::ifstream openDump(const std::string& path, int& width, int& height) {
    std::ifstream file(path, std::ios::binary);
    unsigned char header[16];
    if (!file || !file.read(reinterpret_cast<char*>(header), sizeof header))
        throw ImageIOError("cannot read image '" + path + "': no pixel dump there");
    if (std::memcmp(header, kMagic, sizeof kMagic) != 0)
        throw ImageIOError("cannot read image '" + path + "': not a pixel dump (this build reads no image files)");
    const std::uint32_t w = le32(header + 8), h = le32(header + 12);
    if (w == 0 || h == 0 || w > kMaxExtent || h > kMaxExtent)
        throw ImageIOError("cannot read image '" + path + "': it has no pixels");
    width = int(w);
    height = int(h);
    return file;
}

}  // namespace

bool isImageDump(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    char magic[sizeof kMagic];
    return file.read(magic, sizeof magic) && std::memcmp(magic, kMagic, sizeof kMagic) == 0;
}

void writeImageDump(const Image& image, const std::string& path) {
    std::string bytes(kMagic, sizeof kMagic);
    putLe32(bytes, std::uint32_t(image.width()));
    putLe32(bytes, std::uint32_t(image.height()));
    for (const RGBA& p : image.pixels()) {
        for (float channel : {p.r, p.g, p.b, p.a}) {
            std::uint32_t bits;
            std::memcpy(&bits, &channel, sizeof bits);
            putLe32(bytes, bits);
        }
    }
    std::ofstream file(path, std::ios::binary | std::ios::trunc);
    file.write(bytes.data(), std::streamsize(bytes.size()));
    file.close();
    if (!file) throw ImageIOError("cannot write image '" + path + "'");
}

void readImageDumpSize(const std::string& path, int& width, int& height) { openDump(path, width, height); }

Image readImageDump(const std::string& path) {
    int width = 0, height = 0;
    std::ifstream file = openDump(path, width, height);
    Image image(width, height);
    std::vector<unsigned char> bytes(image.pixels().size() * 16);
    if (!file.read(reinterpret_cast<char*>(bytes.data()), std::streamsize(bytes.size())))
        throw ImageIOError("cannot read image '" + path + "': the pixel dump is truncated");
    for (std::size_t i = 0; i < image.pixels().size(); ++i) {
        float channels[4];
        for (int c = 0; c < 4; ++c) {
            const std::uint32_t bits = le32(&bytes[i * 16 + c * 4]);
            std::memcpy(&channels[c], &bits, sizeof bits);
        }
        image.pixels()[i] = RGBA{channels[0], channels[1], channels[2], channels[3]};
    }
    return image;
}

}  // namespace host
