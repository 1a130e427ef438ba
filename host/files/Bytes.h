#pragma once
// Byte counts for messages. Inline, so the image-IO module needs nothing else from the host.

#include <cstdio>
#include <string>

namespace host {

// Bytes as "512 MiB" or "5.96 GiB".
inline std::string describeBytes(double bytes) {
    const char* units[] = {"bytes", "KiB", "MiB", "GiB", "TiB", "PiB", "EiB"};
    int unit = 0;
    while (bytes >= 1024 && unit < 6) bytes /= 1024, ++unit;
    char text[48];
    std::snprintf(text, sizeof text, bytes == static_cast<long long>(bytes) ? "%.0f %s" : "%.3g %s", bytes, units[unit]);
    return text;
}

}  // namespace host
