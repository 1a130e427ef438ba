// Writes the effect's resource description (a binary property list, in the little-endian
// layout of the Windows resource compiler) to the file named on the command line. The host
// reads it beside the module to learn the entry point, names and flags. Every value comes
// from shell/EffectInfo.h, the same source the module reports at global set-up.

#include <cstdint>
#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

#include "shell/EffectInfo.h"

namespace {

using Bytes = std::vector<std::uint8_t>;

// A four-character code as the 32-bit number the resource compiler stores ('8BIM' etc.).
constexpr std::uint32_t fourCC(const char (&code)[5])
{
    return std::uint32_t(std::uint8_t(code[0])) << 24 | std::uint32_t(std::uint8_t(code[1])) << 16 |
           std::uint32_t(std::uint8_t(code[2])) << 8 | std::uint32_t(std::uint8_t(code[3]));
}

void put16(Bytes& out, std::uint16_t v)
{
    out.push_back(std::uint8_t(v));
    out.push_back(std::uint8_t(v >> 8));
}

void put32(Bytes& out, std::uint32_t v)
{
    put16(out, std::uint16_t(v));
    put16(out, std::uint16_t(v >> 16));
}

void padTo4(Bytes& data)
{
    while (data.size() % 4 != 0) {
        data.push_back(0);
    }
}

Bytes pascalString(const std::string& s)
{
    Bytes data;
    data.reserve(s.size() + 4);
    data.push_back(std::uint8_t(s.size()));
    data.insert(data.end(), s.begin(), s.end());
    padTo4(data);
    return data;
}

Bytes cString(const std::string& s)
{
    Bytes data(s.begin(), s.end());
    data.push_back(0);
    padTo4(data);
    return data;
}

Bytes word32(std::uint32_t v)
{
    Bytes data;
    put32(data, v);
    return data;
}

Bytes twoWords(std::uint16_t major, std::uint16_t minor)
{
    Bytes data;
    put16(data, major);
    put16(data, minor);
    return data;
}

struct Property {
    std::uint32_t key;
    Bytes data;  // already padded to a multiple of 4; its size is the stored length
};

Bytes propertyList()
{
    using namespace effect_info;
    const std::vector<Property> properties = {
        {fourCC("kind"), word32(fourCC("eFKT"))},
        {fourCC("name"), pascalString(kName)},
        {fourCC("catg"), pascalString(kCategory)},
        {fourCC("8664"), cString(kEntryPoint)},
        {fourCC("ePVR"), twoWords(2, 0)},
        {fourCC("eSVR"), twoWords(kSpecVersionMajor, kSpecVersionMinor)},
        {fourCC("eVER"), word32(kVersion)},
        {fourCC("eGLO"), word32(std::uint32_t(kOutFlags))},
        {fourCC("eGL2"), word32(std::uint32_t(kOutFlags2))},
        {fourCC("eMNA"), pascalString(kMatchName)},
        {fourCC("aeFL"), word32(0)},
    };

    Bytes out;
    put16(out, 1);  // resource header word
    put32(out, 0);  // list version
    put32(out, std::uint32_t(properties.size()));
    for (const Property& p : properties) {
        put32(out, fourCC("8BIM"));
        put32(out, p.key);
        put32(out, 0);  // id
        put32(out, std::uint32_t(p.data.size()));
        out.insert(out.end(), p.data.begin(), p.data.end());
    }
    return out;
}

}  // namespace

int main(int argc, char** argv)
{
    if (argc != 2) {
        std::fprintf(stderr, "usage: %s <output.pipl>\n", argv[0]);
        return 2;
    }
    const Bytes list = propertyList();
    std::FILE* file = std::fopen(argv[1], "wb");
    if (!file) {
        std::perror(argv[1]);
        return 1;
    }
    const bool written = std::fwrite(list.data(), 1, list.size(), file) == list.size();
    return (std::fclose(file) == 0 && written) ? 0 : 1;
}
