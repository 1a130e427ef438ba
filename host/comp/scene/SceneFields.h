#pragma once
// Reads typed fields of a scene document: numbers, sizes, colours, choices and animated values.
//
// Every failure throws SceneError naming the file and the field's JSON path, e.g.
// "scene.json: layers[2].transform.scale: expected 3 numbers". The section readers beside this
// file (composition, layers, sources, transforms, cameras, lights, the effect, render settings)
// all read through one Reader.

#include "host/comp/Animated.h"
#include "host/comp/Composition.h"
#include "host/comp/Scene.h"
#include "host/comp/SceneJson.h"

#include <cstddef>
#include <initializer_list>
#include <string>
#include <utility>
#include <vector>

namespace host {
namespace scene {

using Json = SceneJson;

// "layers[0]" + "source" -> "layers[0].source"; an empty path gives the key alone.
std::string field(const std::string& path, const std::string& key);

// "layers" + 2 -> "layers[2]".
std::string element(const std::string& path, std::size_t i);

// Up to ten significant digits without exponent for ordinary sizes: 2147483.647, 1000000.
std::string shown(double v);

class Reader {
public:
    explicit Reader(std::string file) : file_(std::move(file)) {}

    [[noreturn]] void fail(const std::string& path, const std::string& problem) const;

    // "scene.json: layers[0].source.file", for messages made elsewhere.
    std::string origin(const std::string& path) const { return file_ + ": " + path; }

    void only_fields(const Json& object, const std::string& path,
                     std::initializer_list<const char*> allowed) const;

    double number(const Json& j, const std::string& path) const;
    double positive(const Json& j, const std::string& path) const;
    int integer(const Json& j, const std::string& path) const;
    int positive_integer(const Json& j, const std::string& path) const;

    // A width or height: a whole number from 1 to the largest extent the host takes.
    int extent(const Json& j, const std::string& path) const;

    // A whole `width` x `height` image (or frame) must fit the memory allowed for one image.
    void fits(int width, int height, const std::string& path) const;

    // [numerator, denominator], whole numbers from 1 to 32767 (a pixel aspect ratio).
    std::pair<int, int> ratio(const Json& j, const std::string& path) const;

    // A time that the host can count in its 32-bit ticks (±`limit` seconds).
    double time(const Json& j, const std::string& path, double limit) const;

    bool boolean(const Json& j, const std::string& path) const;

    // Switch-like streams that the host reports as 0/1 numbers.
    double flag(const Json& j, const std::string& path) const;

    std::string text(const Json& j, const std::string& path) const;

    std::vector<double> numbers(const Json& j, const std::string& path, std::size_t count) const;

    Vec3 vec3(const Json& j, const std::string& path) const;

    // [r, g, b] with channels 0..255, opaque.
    Color color(const Json& j, const std::string& path) const;

    // One of the texts in `names`, as its value.
    template <class E>
    E choice(const Json& j, const std::string& path,
             std::initializer_list<std::pair<const char*, E>> names) const;

    // A constant, or {"keys": [[seconds, value], ...]} interpolated linearly.
    template <class T, class ReadOne>
    Animated<T> animated(const Json& j, const std::string& path, ReadOne read_one) const;

    Animated<double> animated_number(const Json& j, const std::string& path) const;
    Animated<double> animated_flag(const Json& j, const std::string& path) const;
    Animated<Vec3> animated_vec3(const Json& j, const std::string& path) const;
    Animated<Color> animated_color(const Json& j, const std::string& path) const;

    // Reads the optional field `name` of `j` into `target` with the Reader member `read`; an
    // absent field keeps the default.
    template <class T, class Value>
    void optional(const Json& j, const std::string& path, const char* name, T& target,
                  Value (Reader::*read)(const Json&, const std::string&) const) const {
        if (j.contains(name)) target = (this->*read)(j[name], field(path, name));
    }

private:
    std::string file_;
};

template <class E>
E Reader::choice(const Json& j, const std::string& path,
                 std::initializer_list<std::pair<const char*, E>> names) const {
    std::string s = text(j, path);
    std::string list;
    for (const auto& n : names) {
        if (s == n.first) return n.second;
        list += list.empty() ? "" : ", ";
        list += std::string("\"") + n.first + "\"";
    }
    fail(path, "expected one of " + list);
}

template <class T, class ReadOne>
Animated<T> Reader::animated(const Json& j, const std::string& path, ReadOne read_one) const {
    if (!j.is_object()) return Animated<T>(read_one(j, path));
    only_fields(j, path, {"keys"});
    if (!j.contains("keys")) fail(path, "expected a value or {\"keys\": [...]}");
    const Json& keys = j["keys"];
    std::string keys_path = field(path, "keys");
    if (!keys.is_array() || keys.empty()) fail(keys_path, "expected a non-empty array");
    Animated<T> result;
    for (std::size_t i = 0; i < keys.size(); ++i) {
        std::string key_path = element(keys_path, i);
        const Json& key = keys[i];
        if (!key.is_array() || key.size() != 2) fail(key_path, "expected [seconds, value]");
        result.add_key(number(key[0], element(key_path, 0)), read_one(key[1], element(key_path, 1)));
    }
    return result;
}

}  // namespace scene
}  // namespace host
