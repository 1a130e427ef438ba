#include "host/files/InputFiles.h"

#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <system_error>

namespace host {

namespace {

InputLimits g_limits;

std::string kindOtherThanFile(std::filesystem::file_type type) {
    using std::filesystem::file_type;
    switch (type) {
    case file_type::directory: return "is a directory";
    case file_type::character:
    case file_type::block: return "is a device, not a file";
    case file_type::fifo: return "is a FIFO, not a file";
    case file_type::socket: return "is a socket, not a file";
    default: return "is not a regular file";
    }
}

}  // namespace

std::string InputLimits::refusal(long long width, long long height) const {
    const std::string size = std::to_string(width) + " x " + std::to_string(height) + " pixels";
    if (width > max_extent || height > max_extent)
        return size + " is larger than the " + std::to_string(max_extent) + " x " + std::to_string(max_extent) +
               " pixels allowed";
    const double bytes = static_cast<double>(width) * static_cast<double>(height) * kBytesPerPixel;
    if (bytes > static_cast<double>(max_bytes))
        return size + " need " + describeBytes(bytes) + " as float RGBA, more than the " +
               describeBytes(static_cast<double>(max_bytes)) + " allowed per image";
    return "";
}

const InputLimits& inputLimits() { return g_limits; }

void setInputLimits(const InputLimits& limits) { g_limits = limits; }

std::string unreadableReason(const std::string& path) {
    std::error_code ec;
    const std::filesystem::file_status status = std::filesystem::status(path, ec);
    if (ec) return ec.message();
    if (status.type() != std::filesystem::file_type::regular) return kindOtherThanFile(status.type());
    // Opening is what tells whether this process may read it ("Permission denied").
    errno = 0;
    std::FILE* file = std::fopen(path.c_str(), "rb");
    if (!file) return std::generic_category().message(errno ? errno : EACCES);
    std::fclose(file);
    return "";
}

}  // namespace host
