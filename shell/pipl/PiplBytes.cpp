#include "shell/pipl/PiplBytes.h"

#include <string>

#include "AEConfig.h"
#include "entry.h"
#include "shell/EffectInfo.h"

namespace pipl {

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

// Strings are stored with their padding counted in the property's length.
Bytes pascalString(const std::string& s)
{
    Bytes data;
    data.push_back(std::uint8_t(s.size()));
    for (char c : s) {
        data.push_back(std::uint8_t(c));
    }
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

// A property's data: its size is the recorded length; the list pads the data with zeros to a
// multiple of 4 bytes (only the 2-byte info flags need it).
struct Property {
    std::uint32_t key;
    Bytes data;
};

// The properties in the order After Effects' own effect templates list them.
std::vector<Property> effectProperties()
{
    using namespace effect_info;
    return {
        {fourCC("kind"), word32(fourCC("eFKT"))},
        {fourCC("name"), pascalString(kName)},
        {fourCC("catg"), pascalString(kCategory)},
        {fourCC("8664"), cString(kEntryPoint)},
        {fourCC("ePVR"), twoWords(2, 0)},
        {fourCC("eSVR"), twoWords(kSpecVersionMajor, kSpecVersionMinor)},
        {fourCC("eVER"), word32(kVersion)},
        {fourCC("eINF"), Bytes{0, 0}},  // info flags: a 16-bit 0
        {fourCC("eGLO"), word32(std::uint32_t(kOutFlags))},
        {fourCC("eGL2"), word32(std::uint32_t(kOutFlags2))},
        {fourCC("eMNA"), pascalString(kMatchName)},
        {fourCC("aeFL"), word32(AE_RESERVED_INFO)},
    };
}

}  // namespace

std::vector<std::uint8_t> effectPropertyList()
{
    const std::vector<Property> properties = effectProperties();
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
        out.insert(out.end(), (4 - p.data.size() % 4) % 4, std::uint8_t(0));
    }
    return out;
}

}  // namespace pipl
