#pragma once

// Zero-terminated strings kept in an AEO::Vector, so their memory comes from the host like every
// other allocation of the module. Narrow strings hold UTF-8, wide ones UTF-16.

#include <cstddef>

#include "AE_MyLib/AEObject/AEO_Vector.h"

namespace AEO {

template <class CharT>
class String {
public:
    explicit String(const InData* allocator = nullptr) : _chars(allocator) {}
    String(String&&) = default;

    void set_allocator(const InData* allocator) { _chars.set_allocator(allocator); }

    // Characters without the terminator.
    std::size_t size() const { return _chars.empty() ? 0 : _chars.size() - 1; }
    bool empty() const { return size() == 0; }
    const CharT* c_str() const
    {
        static const CharT kEmpty[1] = {0};
        return _chars.empty() ? kEmpty : _chars.data();
    }
    CharT operator[](std::size_t i) const { return _chars[i]; }

    // Each returns false, leaving the string as it was, when the memory cannot be had.
    bool assign(const CharT* text) { return assign(text, lengthOf(text)); }
    bool assign(const CharT* text, std::size_t n)
    {
        if (!_chars.reserve(n + 1)) {
            return false;
        }
        _chars.resize(0, CharT(0));
        return append(text, n);
    }
    bool append(const CharT* text) { return append(text, lengthOf(text)); }
    bool append(const CharT* text, std::size_t n)
    {
        const std::size_t old_size = size();
        if (!reserveFor(old_size + n + 1)) {
            return false;
        }
        _chars.resize(old_size + n + 1, CharT(0));
        for (std::size_t i = 0; i < n; ++i) {
            _chars[old_size + i] = text[i];
        }
        _chars[old_size + n] = CharT(0);
        return true;
    }
    bool append(CharT c) { return append(&c, 1); }

private:
    // Grows geometrically so that text built a character at a time (UTF-16 to UTF-8) costs a
    // few host allocations, not one per character; falls back to the exact need when the
    // doubled block cannot be had.
    bool reserveFor(std::size_t needed)
    {
        if (needed <= _chars.capacity()) {
            return true;
        }
        const std::size_t doubled = 2 * _chars.capacity();
        return (doubled > needed && _chars.reserve(doubled)) || _chars.reserve(needed);
    }

public:
    static std::size_t lengthOf(const CharT* text)
    {
        std::size_t n = 0;
        while (text && text[n] != CharT(0)) {
            ++n;
        }
        return n;
    }

private:
    Vector<CharT> _chars;  // the characters and the terminator, or nothing at all
};

// Appends the UTF-8 form of a zero-terminated UTF-16 text to out. A lone surrogate becomes
// U+FFFD. False when the memory runs out (out then holds a prefix).
bool appendUtf8(String<char>& out, const char16_t* utf16);

}  // namespace AEO
