#include "AE_MyLib/AEObject/AEO_String.h"

namespace AEO {

namespace {

const char32_t kReplacement = 0xFFFD;

bool isHighSurrogate(char32_t u) { return u >= 0xD800 && u <= 0xDBFF; }
bool isLowSurrogate(char32_t u) { return u >= 0xDC00 && u <= 0xDFFF; }

// Reads one code point at text[i] and advances i past it.
char32_t decodeUtf16(const char16_t* text, std::size_t& i)
{
    const char32_t first = text[i++];
    if (isHighSurrogate(first)) {
        const char32_t second = text[i];
        if (!isLowSurrogate(second)) {
            return kReplacement;
        }
        ++i;
        return 0x10000 + ((first - 0xD800) << 10) + (second - 0xDC00);
    }
    return isLowSurrogate(first) ? kReplacement : first;
}

// The UTF-8 bytes of code point c; returns their count (1 to 4).
std::size_t encodeUtf8(char32_t c, char bytes[4])
{
    if (c < 0x80) {
        bytes[0] = char(c);
        return 1;
    }
    if (c < 0x800) {
        bytes[0] = char(0xC0 | (c >> 6));
        bytes[1] = char(0x80 | (c & 0x3F));
        return 2;
    }
    if (c < 0x10000) {
        bytes[0] = char(0xE0 | (c >> 12));
        bytes[1] = char(0x80 | ((c >> 6) & 0x3F));
        bytes[2] = char(0x80 | (c & 0x3F));
        return 3;
    }
    bytes[0] = char(0xF0 | (c >> 18));
    bytes[1] = char(0x80 | ((c >> 12) & 0x3F));
    bytes[2] = char(0x80 | ((c >> 6) & 0x3F));
    bytes[3] = char(0x80 | (c & 0x3F));
    return 4;
}

}  // namespace

bool appendUtf8(String<char>& out, const char16_t* utf16)
{
    if (!utf16) {
        return true;
    }
    std::size_t i = 0;
    while (utf16[i] != 0) {
        char bytes[4];
        const std::size_t n = encodeUtf8(decodeUtf16(utf16, i), bytes);
        if (!out.append(bytes, n)) {
            return false;
        }
    }
    return true;
}

}  // namespace AEO
