#pragma once
// The plug-in property list (PiPL) an effect ships beside its code. Linux has no resources,
// so the host reads it from a sidecar file next to the module ("<module>.pipl"), in either the
// big-endian Rez layout or the little-endian PiPLtool layout.

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace host {

constexpr std::uint32_t fourCC(const char (&code)[5]) {
    return (std::uint32_t(std::uint8_t(code[0])) << 24) | (std::uint32_t(std::uint8_t(code[1])) << 16) |
           (std::uint32_t(std::uint8_t(code[2])) << 8) | std::uint32_t(std::uint8_t(code[3]));
}

struct PiplInfo {
    std::uint32_t kind = 0;  // fourCC("eFKT") for an effect
    std::string name;
    std::string category;
    std::string match_name;
    std::string entry_point;  // from '8664', 'mi64' or 'ma64'; empty when none
    std::optional<std::uint32_t> global_out_flags;    // 'eGLO'
    std::optional<std::uint32_t> global_out_flags2;   // 'eGL2'
    std::optional<std::uint32_t> effect_version;      // 'eVER'
    std::optional<std::pair<int, int>> spec_version;  // 'eSVR'
    bool little_endian = false;
};

// Parses a property list; throws std::runtime_error on malformed data.
PiplInfo parsePipl(const std::vector<std::uint8_t>& bytes);
// The sidecar of a module: "<path>.pipl" or the path with its extension replaced; empty when
// neither exists.
std::string findPiplSidecar(const std::string& module_path);
PiplInfo readPiplFile(const std::string& path);

// Writes a big-endian property list (for tests and tools).
std::vector<std::uint8_t> buildPipl(const PiplInfo& info);

}  // namespace host
