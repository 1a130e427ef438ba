#pragma once
// A pixel's channels in the host's order (alpha, red, green, blue) as doubles, so tests compare
// whole pixels of any depth in one expectation and see all four channels when one differs.

#include <array>

namespace test_support {

template <class Pixel>
std::array<double, 4> channels(const Pixel& p) {
    return {double(p.alpha), double(p.red), double(p.green), double(p.blue)};
}

using Channels = std::array<double, 4>;

}  // namespace test_support
