#include "host/InputFiles.h"

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

namespace host {

namespace {

InputLimits g_limits;

std::string kindOtherThanFile(mode_t mode) {
    if (S_ISDIR(mode)) return "is a directory";
    if (S_ISCHR(mode) || S_ISBLK(mode)) return "is a device, not a file";
    if (S_ISFIFO(mode)) return "is a FIFO, not a file";
    if (S_ISSOCK(mode)) return "is a socket, not a file";
    return "is not a regular file";
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
    struct stat info {};
    if (::stat(path.c_str(), &info) != 0) return std::generic_category().message(errno);
    if (!S_ISREG(info.st_mode)) return kindOtherThanFile(info.st_mode);
    const int fd = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (fd < 0) return std::generic_category().message(errno);
    ::close(fd);
    return "";
}

}  // namespace host
