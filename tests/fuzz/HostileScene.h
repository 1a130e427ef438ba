#pragma once
// Seeded random scenes built to hurt: every parameter at the ends of its valid range, layers of
// 1x1 or thousands of pixels, zero scale, missing camera or lights, times outside the layer,
// downsampling down to a single pixel, and (in wild cases) NaN, infinities and 1e30 in the
// values the host hands over (camera, lights, transforms).

#include <cstdint>
#include <string>

#include "host/session/Host.h"

namespace fuzz {

struct HostileCase {
    std::uint64_t seed = 0;
    bool wild = false;           // non-finite or enormous host values; output may be anything
    host::RenderRequest request;
    std::string description;     // what was chosen, for the failure message
};

// Fills `session` (not loaded) with a random composition; the parameters come after loading.
HostileCase buildHostileScene(std::uint64_t seed, host::Host& session);
// Sets every parameter of the loaded effect at random, favouring the ends of their ranges.
void setHostileParams(std::uint64_t seed, host::Host& session, HostileCase& hostile);

// Runs one case start to finish in this process; returns the problems found (empty: none).
std::string runHostileCase(std::uint64_t seed);

}  // namespace fuzz
