#pragma once
// A rendered output as plain numbers: every channel of every pixel, in the world's own units
// (0..255, 0..32768 or float), row padding dropped. For comparing frames and checking values.

#include <vector>

#include "host/session/Host.h"

namespace reliability {

std::vector<float> outputChannels(const host::RenderResult& result);

// Number of channels that are NaN or infinite.
std::size_t nonFiniteChannels(const std::vector<float>& channels);

}  // namespace reliability
