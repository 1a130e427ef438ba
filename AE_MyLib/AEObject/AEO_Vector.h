#pragma once

// A growable array whose storage comes from host handle memory (through AEO::InData), for the
// few containers the module needs. It holds trivially copyable elements only, never shrinks,
// and reports a failed allocation instead of throwing.

#include <cstddef>
#include <cstring>
#include <type_traits>

#include "AE_MyLib/AEObject/AEO_InData.h"

namespace AEO {

template <class T>
class Vector {
    static_assert(std::is_trivially_copyable<T>::value, "elements are moved as raw bytes");

public:
    explicit Vector(const InData* allocator = nullptr)
        : _capacity(0), _count(0), _data(nullptr), _allocator(allocator)
    {
    }
    ~Vector() { release(); }

    Vector(Vector&& other) noexcept
        : _capacity(other._capacity), _count(other._count), _data(other._data),
          _allocator(other._allocator)
    {
        other._capacity = 0;
        other._count = 0;
        other._data = nullptr;
    }
    Vector(const Vector&) = delete;
    Vector& operator=(const Vector&) = delete;
    Vector& operator=(Vector&&) = delete;

    // Storage already held stays with the allocator that made it; set this before growing.
    void set_allocator(const InData* allocator) { _allocator = allocator; }
    const InData* allocator() const { return _allocator; }

    std::size_t size() const { return static_cast<std::size_t>(_count); }
    std::size_t capacity() const { return static_cast<std::size_t>(_capacity); }
    bool empty() const { return _count == 0; }

    T& operator[](std::size_t i) { return _data[i]; }
    const T& operator[](std::size_t i) const { return _data[i]; }
    T* begin() { return _data; }
    T* end() { return _data + _count; }
    const T* begin() const { return _data; }
    const T* end() const { return _data + _count; }
    T* data() { return _data; }
    const T* data() const { return _data; }

    // Room for n elements. False, with the vector unchanged, when the memory cannot be had.
    bool reserve(std::size_t n)
    {
        if (n <= _capacity) {
            return true;
        }
        if (!_allocator) {
            return false;
        }
        T* grown = static_cast<T*>(_allocator->malloc(A_u_longlong(n) * sizeof(T)));
        if (!grown) {
            return false;
        }
        if (_count > 0) {
            std::memcpy(static_cast<void*>(grown), _data, size() * sizeof(T));
        }
        release();
        _data = grown;
        _capacity = n;
        return true;
    }

    // n elements, the new ones copies of value. When the storage cannot grow, the count stays.
    void resize(std::size_t n, const T& value)
    {
        if (!reserve(n)) {
            return;
        }
        for (std::size_t i = size(); i < n; ++i) {
            _data[i] = value;
        }
        _count = n;
    }

    // Appends value; false (and nothing appended) when the storage cannot grow.
    bool push_back(const T& value)
    {
        const std::size_t before = size();
        if (before == capacity() && !reserve(before == 0 ? 4 : before * 2)) {
            return false;
        }
        _data[before] = value;
        _count = before + 1;
        return true;
    }

private:
    void release()
    {
        if (_data && _allocator) {
            _allocator->free(_data);
        }
        _data = nullptr;
        _capacity = 0;
    }

    A_u_longlong _capacity;
    A_u_longlong _count;
    T* _data;
    const InData* _allocator;
};

}  // namespace AEO
