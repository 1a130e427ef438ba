#pragma once
// A property value that is either constant or keyframed over composition seconds.
//
// Keyframed values interpolate linearly between neighbouring keys and hold the first key's
// value before it and the last key's value after it. T needs `T + T`, `T - T` and `T * double`
// to interpolate; types without them (enums, strings) hold each key until the next one.

#include <algorithm>
#include <cstddef>
#include <type_traits>
#include <utility>
#include <vector>

namespace host {

namespace detail {

template <class T, class = void>
struct IsInterpolable : std::false_type {};

template <class T>
struct IsInterpolable<T, std::void_t<decltype(std::declval<T>() + (std::declval<T>() - std::declval<T>()) *
                                              std::declval<double>())>> : std::true_type {};

// Value at fraction `f` (0..1) of the way from `a` to `b`.
template <class T>
T lerp(const T& a, const T& b, double f) {
    if constexpr (std::is_same_v<T, bool>) {
        return f < 1.0 ? a : b;
    } else if constexpr (std::is_arithmetic_v<T>) {
        return static_cast<T>(a + (b - a) * f);
    } else if constexpr (IsInterpolable<T>::value) {
        return a + (b - a) * f;
    } else {
        return f < 1.0 ? a : b;
    }
}

}  // namespace detail

template <class T>
class Animated {
public:
    struct Key {
        double seconds;
        T value;
    };

    Animated() : constant_() {}
    Animated(T value) : constant_(std::move(value)) {}  // NOLINT: implicit on purpose

    // Adds (or replaces) the key at `seconds`; keys stay sorted by time.
    void add_key(double seconds, T value) {
        auto it = std::lower_bound(keys_.begin(), keys_.end(), seconds,
                                   [](const Key& k, double s) { return k.seconds < s; });
        if (it != keys_.end() && it->seconds == seconds) {
            it->value = std::move(value);
        } else {
            keys_.insert(it, Key{seconds, std::move(value)});
        }
    }

    // Replaces every key (and the constant) by one constant value.
    void set(T value) {
        keys_.clear();
        constant_ = std::move(value);
    }

    T at(double seconds) const {
        if (keys_.empty()) return constant_;
        if (seconds <= keys_.front().seconds) return keys_.front().value;
        if (seconds >= keys_.back().seconds) return keys_.back().value;
        auto next = std::upper_bound(keys_.begin(), keys_.end(), seconds,
                                     [](double s, const Key& k) { return s < k.seconds; });
        auto prev = next - 1;
        double f = (seconds - prev->seconds) / (next->seconds - prev->seconds);
        return detail::lerp(prev->value, next->value, f);
    }

    bool is_animated() const { return !keys_.empty(); }
    const std::vector<Key>& keys() const { return keys_; }

private:
    T constant_;
    std::vector<Key> keys_;
};

}  // namespace host
