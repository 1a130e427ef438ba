// Reads the typed fields every section of a scene is made of.
#include "host/comp/scene/SceneFields.h"

#include "host/files/InputFiles.h"

#include <cmath>
#include <cstdio>

namespace host {
namespace scene {

std::string field(const std::string& path, const std::string& key) {
    return path.empty() ? key : path + "." + key;
}

std::string element(const std::string& path, std::size_t i) {
    return path + "[" + std::to_string(i) + "]";
}

std::string shown(double v) {
    char text[32];
    std::snprintf(text, sizeof text, "%.10g", v);
    return text;
}

namespace {

std::string seconds(double v) { return shown(v) + " seconds"; }

}  // namespace

void Reader::fail(const std::string& path, const std::string& problem) const {
    throw SceneError(origin(path) + ": " + problem);
}

void Reader::only_fields(const Json& object, const std::string& path,
                         std::initializer_list<const char*> allowed) const {
    if (!object.is_object()) fail(path, "expected an object");
    for (auto it = object.begin(); it != object.end(); ++it) {
        bool known = false;
        for (const char* name : allowed) known = known || it.key() == name;
        if (!known) fail(field(path, it.key()), "unknown field");
    }
}

double Reader::number(const Json& j, const std::string& path) const {
    if (!j.is_number()) fail(path, "expected a number");
    return j.get<double>();
}

double Reader::positive(const Json& j, const std::string& path) const {
    double v = number(j, path);
    if (!(v > 0)) fail(path, "expected a number greater than 0");
    return v;
}

int Reader::integer(const Json& j, const std::string& path) const {
    double v = number(j, path);
    if (v != std::floor(v) || std::fabs(v) > 1e9) fail(path, "expected a whole number");
    return static_cast<int>(v);
}

int Reader::positive_integer(const Json& j, const std::string& path) const {
    int v = integer(j, path);
    if (v < 1) fail(path, "expected a whole number of at least 1");
    return v;
}

int Reader::extent(const Json& j, const std::string& path) const {
    const int v = positive_integer(j, path);
    if (v > inputLimits().max_extent)
        fail(path, std::to_string(v) + " pixels is more than the " + std::to_string(inputLimits().max_extent) +
                       " allowed");
    return v;
}

void Reader::fits(int width, int height, const std::string& path) const {
    const std::string why = inputLimits().refusal(width, height);
    if (!why.empty()) fail(path, why);
}

std::pair<int, int> Reader::ratio(const Json& j, const std::string& path) const {
    const std::vector<double> r = numbers(j, path, 2);
    for (double v : r)
        if (!(v >= 1 && v <= 32767) || v != std::floor(v))
            fail(path, "expected [numerator, denominator], whole numbers from 1 to 32767");
    return {static_cast<int>(r[0]), static_cast<int>(r[1])};
}

double Reader::time(const Json& j, const std::string& path, double limit) const {
    const double v = number(j, path);
    if (std::fabs(v) > limit) fail(path, seconds(v) + " is beyond the host's time range (" + seconds(limit) + ")");
    return v;
}

bool Reader::boolean(const Json& j, const std::string& path) const {
    if (!j.is_boolean()) fail(path, "expected true or false");
    return j.get<bool>();
}

double Reader::flag(const Json& j, const std::string& path) const {
    if (j.is_boolean()) return j.get<bool>() ? 1.0 : 0.0;
    double v = number(j, path);
    if (v != 0 && v != 1) fail(path, "expected true, false, 0 or 1");
    return v;
}

std::string Reader::text(const Json& j, const std::string& path) const {
    if (!j.is_string()) fail(path, "expected a string");
    return j.get<std::string>();
}

std::vector<double> Reader::numbers(const Json& j, const std::string& path, std::size_t count) const {
    if (!j.is_array() || j.size() != count) {
        fail(path, "expected " + std::to_string(count) + " numbers");
    }
    std::vector<double> v;
    for (std::size_t i = 0; i < count; ++i) {
        if (!j[i].is_number()) fail(path, "expected " + std::to_string(count) + " numbers");
        v.push_back(j[i].get<double>());
    }
    return v;
}

Vec3 Reader::vec3(const Json& j, const std::string& path) const {
    std::vector<double> v = numbers(j, path, 3);
    return Vec3{v[0], v[1], v[2]};
}

Color Reader::color(const Json& j, const std::string& path) const {
    std::vector<double> v = numbers(j, path, 3);
    for (double c : v)
        if (c < 0 || c > 255) fail(path, "colour channels must lie in 0..255");
    return Color{1.0, v[0] / 255.0, v[1] / 255.0, v[2] / 255.0};
}

Animated<double> Reader::animated_number(const Json& j, const std::string& path) const {
    return animated<double>(j, path, [this](const Json& v, const std::string& p) { return number(v, p); });
}

Animated<double> Reader::animated_flag(const Json& j, const std::string& path) const {
    return animated<double>(j, path, [this](const Json& v, const std::string& p) { return flag(v, p); });
}

Animated<Vec3> Reader::animated_vec3(const Json& j, const std::string& path) const {
    return animated<Vec3>(j, path, [this](const Json& v, const std::string& p) { return vec3(v, p); });
}

Animated<Color> Reader::animated_color(const Json& j, const std::string& path) const {
    return animated<Color>(j, path, [this](const Json& v, const std::string& p) { return color(v, p); });
}

}  // namespace scene
}  // namespace host
