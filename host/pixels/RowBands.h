#pragma once
// Runs a whole-image pixel conversion as bands of rows on short-lived threads. Converting a
// frame costs milliseconds, far more than starting a thread; the caller says how many threads,
// so a render limited to one thread stays on one.

#include <algorithm>
#include <system_error>
#include <thread>
#include <vector>

namespace host {

// Calls body(first_row, end_row) for `threads` bands covering rows [0, rows). `body` must not
// throw. Bands whose thread cannot be started run on the calling thread.
template <class Body>
void forEachRowBand(int rows, int threads, const Body& body) {
    const int bands = std::clamp(threads, 1, std::max(rows, 1));
    auto band = [&](int b) { body(rows * b / bands, rows * (b + 1) / bands); };
    std::vector<std::thread> helpers;
    int b = 1;
    try {
        for (; b < bands; ++b) helpers.emplace_back(band, b);
    } catch (const std::system_error&) {
        for (; b < bands; ++b) band(b);
    }
    band(0);
    for (std::thread& t : helpers) t.join();
}

}  // namespace host
