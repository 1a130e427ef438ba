#pragma once
// The effect's plug-in property list (PiPL): the resource After Effects reads to find the
// effect, its entry point, names and flags before it runs any of the effect's code. Built in
// the little-endian layout of the Windows resource compiler; the same bytes become the
// Windows resource (type 'PiPL', id 16000) and the Linux sidecar the emulated host reads.

#include <cstdint>
#include <vector>

namespace pipl {

// Resource type and id under which After Effects looks for the list in a Windows module.
constexpr const char* kResourceType = "PiPL";
constexpr int kResourceId = 16000;

// The complete property list, every value taken from shell/EffectInfo.h.
std::vector<std::uint8_t> effectPropertyList();

}  // namespace pipl
