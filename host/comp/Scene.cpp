#include "host/comp/Scene.h"

#include "host/files/ImageIO.h"
#include "host/files/InputFiles.h"
#include "host/comp/SceneJson.h"

#include <cmath>
#include <cstdio>
#include <fstream>
#include <initializer_list>
#include <map>
#include <sstream>

namespace host {

namespace {

using Json = SceneJson;

std::string field(const std::string& path, const std::string& key) {
    return path.empty() ? key : path + "." + key;
}

std::string element(const std::string& path, std::size_t i) {
    return path + "[" + std::to_string(i) + "]";
}

// Up to ten significant digits without exponent for ordinary sizes: 2147483.647, 1000000.
std::string shown(double v) {
    char text[32];
    std::snprintf(text, sizeof text, "%.10g", v);
    return text;
}

std::string base_name(const std::string& path) {
    std::size_t slash = path.find_last_of('/');
    return slash == std::string::npos ? path : path.substr(slash + 1);
}

// Reads typed values out of the document; every failure names the file and JSON path.
class Reader {
public:
    explicit Reader(std::string file) : file_(std::move(file)) {}

    [[noreturn]] void fail(const std::string& path, const std::string& problem) const {
        throw SceneError(origin(path) + ": " + problem);
    }

    // "scene.json: layers[0].source.file", for messages made elsewhere.
    std::string origin(const std::string& path) const { return file_ + ": " + path; }

    void only_fields(const Json& object, const std::string& path,
                     std::initializer_list<const char*> allowed) const {
        if (!object.is_object()) fail(path, "expected an object");
        for (auto it = object.begin(); it != object.end(); ++it) {
            bool known = false;
            for (const char* name : allowed) known = known || it.key() == name;
            if (!known) fail(field(path, it.key()), "unknown field");
        }
    }

    double number(const Json& j, const std::string& path) const {
        if (!j.is_number()) fail(path, "expected a number");
        return j.get<double>();
    }

    double positive(const Json& j, const std::string& path) const {
        double v = number(j, path);
        if (!(v > 0)) fail(path, "expected a number greater than 0");
        return v;
    }

    int integer(const Json& j, const std::string& path) const {
        double v = number(j, path);
        if (v != std::floor(v) || std::fabs(v) > 1e9) fail(path, "expected a whole number");
        return static_cast<int>(v);
    }

    int positive_integer(const Json& j, const std::string& path) const {
        int v = integer(j, path);
        if (v < 1) fail(path, "expected a whole number of at least 1");
        return v;
    }

    // A width or height: a whole number from 1 to the largest extent the host takes.
    int extent(const Json& j, const std::string& path) const {
        const int v = positive_integer(j, path);
        if (v > inputLimits().max_extent)
            fail(path, std::to_string(v) + " pixels is more than the " + std::to_string(inputLimits().max_extent) +
                           " allowed");
        return v;
    }

    // A whole `width` x `height` image (or frame) must fit the memory allowed for one image.
    void fits(int width, int height, const std::string& path) const {
        const std::string why = inputLimits().refusal(width, height);
        if (!why.empty()) fail(path, why);
    }

    // [numerator, denominator], whole numbers from 1 to 32767 (a pixel aspect ratio).
    std::pair<int, int> ratio(const Json& j, const std::string& path) const {
        const std::vector<double> r = numbers(j, path, 2);
        for (double v : r)
            if (!(v >= 1 && v <= 32767) || v != std::floor(v))
                fail(path, "expected [numerator, denominator], whole numbers from 1 to 32767");
        return {static_cast<int>(r[0]), static_cast<int>(r[1])};
    }

    // A time that the host can count in its 32-bit ticks (±`limit` seconds).
    double time(const Json& j, const std::string& path, double limit) const {
        const double v = number(j, path);
        if (std::fabs(v) > limit) fail(path, seconds(v) + " is beyond the host's time range (" + seconds(limit) + ")");
        return v;
    }

    static std::string seconds(double v) { return shown(v) + " seconds"; }

    bool boolean(const Json& j, const std::string& path) const {
        if (!j.is_boolean()) fail(path, "expected true or false");
        return j.get<bool>();
    }

    // Switch-like streams that the host reports as 0/1 numbers.
    double flag(const Json& j, const std::string& path) const {
        if (j.is_boolean()) return j.get<bool>() ? 1.0 : 0.0;
        double v = number(j, path);
        if (v != 0 && v != 1) fail(path, "expected true, false, 0 or 1");
        return v;
    }

    std::string text(const Json& j, const std::string& path) const {
        if (!j.is_string()) fail(path, "expected a string");
        return j.get<std::string>();
    }

    std::vector<double> numbers(const Json& j, const std::string& path, std::size_t count) const {
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

    Vec3 vec3(const Json& j, const std::string& path) const {
        std::vector<double> v = numbers(j, path, 3);
        return Vec3{v[0], v[1], v[2]};
    }

    // [r, g, b] with channels 0..255, opaque.
    Color color(const Json& j, const std::string& path) const {
        std::vector<double> v = numbers(j, path, 3);
        for (double c : v)
            if (c < 0 || c > 255) fail(path, "colour channels must lie in 0..255");
        return Color{1.0, v[0] / 255.0, v[1] / 255.0, v[2] / 255.0};
    }

    template <class E>
    E choice(const Json& j, const std::string& path,
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

    // A constant, or {"keys": [[seconds, value], ...]} interpolated linearly.
    template <class T, class ReadOne>
    Animated<T> animated(const Json& j, const std::string& path, ReadOne read_one) const {
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

    Animated<double> animated_number(const Json& j, const std::string& path) const {
        return animated<double>(j, path, [this](const Json& v, const std::string& p) { return number(v, p); });
    }
    Animated<double> animated_flag(const Json& j, const std::string& path) const {
        return animated<double>(j, path, [this](const Json& v, const std::string& p) { return flag(v, p); });
    }
    Animated<Vec3> animated_vec3(const Json& j, const std::string& path) const {
        return animated<Vec3>(j, path, [this](const Json& v, const std::string& p) { return vec3(v, p); });
    }
    Animated<Color> animated_color(const Json& j, const std::string& path) const {
        return animated<Color>(j, path, [this](const Json& v, const std::string& p) { return color(v, p); });
    }

private:
    std::string file_;
};

class SceneParser {
public:
    SceneParser(const std::string& file, std::string base_dir)
        : in_(file), base_dir_(std::move(base_dir)) {}

    Scene parse(const Json& doc, const std::string& file) {
        in_.only_fields(doc, "(top level)", {"composition", "layers", "render"});
        if (!doc.contains("composition")) in_.fail("composition", "missing");
        if (!doc.contains("layers")) in_.fail("layers", "missing");
        Scene scene;
        scene.file = file;
        scene.composition = composition(doc["composition"], "composition");
        layers(doc["layers"], "layers", scene);
        if (scene.effect_layer_id == 0) in_.fail("layers", "no layer carries an \"effect\"");
        if (doc.contains("render")) scene.render = render(doc["render"], "render", *scene.composition);
        return scene;
    }

private:
    // Reads the optional field `name` of `j` into `target` with the Reader member `read`; an
    // absent field keeps the default.
    template <class T, class Value>
    void optional(const Json& j, const std::string& path, const char* name, T& target,
                  Value (Reader::*read)(const Json&, const std::string&) const) const {
        if (j.contains(name)) target = (in_.*read)(j[name], field(path, name));
    }

    std::shared_ptr<Composition> composition(const Json& j, const std::string& path) {
        in_.only_fields(j, path, {"name", "width", "height", "pixel_aspect", "frame_rate",
                                  "duration", "background"});
        for (const char* required : {"width", "height", "frame_rate", "duration"})
            if (!j.contains(required)) in_.fail(field(path, required), "missing");
        const int width = in_.extent(j["width"], field(path, "width"));
        const int height = in_.extent(j["height"], field(path, "height"));
        in_.fits(width, height, path);
        auto comp = std::make_shared<Composition>(
            j.contains("name") ? in_.text(j["name"], field(path, "name")) : "Comp 1", width, height,
            frame_rate(j["frame_rate"], field(path, "frame_rate")),
            in_.positive(j["duration"], field(path, "duration")));
        if (comp->duration() > comp->max_seconds()) {
            in_.fail(field(path, "duration"), shown(comp->duration()) + " seconds at " + shown(comp->frame_rate()) +
                                                  " frames per second is beyond the host's time range (" +
                                                  shown(comp->max_seconds()) + " seconds)");
        }
        if (j.contains("pixel_aspect")) {
            const std::pair<int, int> r = in_.ratio(j["pixel_aspect"], field(path, "pixel_aspect"));
            comp->set_pixel_aspect(r.first, r.second);
        }
        if (j.contains("background")) {
            comp->set_background(in_.color(j["background"], field(path, "background")));
        }
        return comp;
    }

    double frame_rate(const Json& j, const std::string& path) const {
        const double rate = in_.positive(j, path);
        if (rate > Composition::kMaxFrameRate)
            in_.fail(path, shown(rate) + " frames per second is more than the " + shown(Composition::kMaxFrameRate) +
                               " the host takes");
        return rate;
    }

    void layers(const Json& j, const std::string& path, Scene& scene) {
        if (!j.is_array()) in_.fail(path, "expected an array of layers");
        std::vector<std::pair<std::string, std::string>> parents;  // (parent name, its path)
        for (std::size_t i = 0; i < j.size(); ++i) {
            std::string lp = element(path, i);
            Layer l = layer(j[i], lp, *scene.composition);
            parents.emplace_back(j[i].contains("parent") ? in_.text(j[i]["parent"], field(lp, "parent")) : "",
                                 field(lp, "parent"));
            const Layer& added = scene.composition->add_layer(std::move(l));
            if (j[i].contains("effect")) {
                if (scene.effect_layer_id != 0) in_.fail(field(lp, "effect"), "only one layer may carry the effect");
                scene.effect_layer_id = added.id;
                effect(j[i]["effect"], field(lp, "effect"), scene);
            }
        }
        // Parents are named, and may be below their children, so they resolve last.
        for (std::size_t i = 0; i < parents.size(); ++i) {
            if (parents[i].first.empty()) continue;
            const Layer* parent = scene.composition->find_by_name(parents[i].first);
            if (parent == nullptr) in_.fail(parents[i].second, "no layer named \"" + parents[i].first + "\"");
            Layer& child = scene.composition->layer(i);
            if (parent->id == child.id) in_.fail(parents[i].second, "a layer cannot be its own parent");
            child.parent_id = parent->id;
        }
        for (std::size_t i = 0; i < parents.size(); ++i) refuse_parent_cycle(*scene.composition, i, parents[i].second);
    }

    // Following the parents up from layer `index` must end; coming back to it is a cycle.
    void refuse_parent_cycle(const Composition& comp, std::size_t index, const std::string& path) const {
        const Layer& start = comp.layer(index);
        std::string chain = "\"" + start.display_name() + "\"";
        std::size_t steps = 0;
        for (const Layer* at = comp.parent_of(start); at != nullptr && steps <= comp.num_layers();
             at = comp.parent_of(*at), ++steps) {
            chain += " -> \"" + at->display_name() + "\"";
            if (at->id == start.id) in_.fail(path, "the parents form a cycle: " + chain);
        }
    }

    Layer layer(const Json& j, const std::string& path, const Composition& comp) {
        in_.only_fields(j, path, {"name", "type", "source", "start_time", "in_point", "duration",
                                  "video", "3d", "parent", "transform", "camera", "light",
                                  "effect"});
        if (!j.contains("type")) in_.fail(field(path, "type"), "missing");
        Layer l;
        l.kind = in_.choice<LayerKind>(j["type"], field(path, "type"),
                                       {{"footage", LayerKind::Footage}, {"solid", LayerKind::Solid},
                                        {"null", LayerKind::Null}, {"camera", LayerKind::Camera},
                                        {"light", LayerKind::Light}});
        optional(j, path, "name", l.name, &Reader::text);
        layer_times(j, path, comp.max_seconds(), l);
        optional(j, path, "video", l.video_active, &Reader::boolean);
        optional(j, path, "3d", l.is_3d, &Reader::boolean);

        require_only_for(j, path, "source", l.has_source());
        require_only_for(j, path, "camera", l.kind == LayerKind::Camera);
        require_only_for(j, path, "light", l.kind == LayerKind::Light);
        if (l.has_source()) {
            if (!j.contains("source")) in_.fail(field(path, "source"), "missing");
            l.source = source(j["source"], field(path, "source"), l.kind);
        }
        set_default_placement(l, comp);
        if (j.contains("transform")) transform(j["transform"], field(path, "transform"), l);
        if (j.contains("camera")) camera(j["camera"], field(path, "camera"), l.camera);
        if (j.contains("light")) light(j["light"], field(path, "light"), l.light);
        return l;
    }

    void layer_times(const Json& j, const std::string& path, double limit, Layer& l) const {
        if (j.contains("start_time")) l.start_time = in_.time(j["start_time"], field(path, "start_time"), limit);
        if (j.contains("in_point")) l.in_point = in_.time(j["in_point"], field(path, "in_point"), limit);
        if (j.contains("duration")) {
            in_.positive(j["duration"], field(path, "duration"));
            l.duration = in_.time(j["duration"], field(path, "duration"), limit);
        }
    }

    void require_only_for(const Json& j, const std::string& path, const char* key, bool allowed) {
        if (j.contains(key) && !allowed) in_.fail(field(path, key), "not allowed on this type of layer");
    }

    // A new layer sits centred in the composition; cameras and lights look at the centre
    // from one default camera distance in front of it.
    void set_default_placement(Layer& l, const Composition& comp) {
        Vec3 centre{comp.width() * 0.5, comp.height() * 0.5, 0};
        l.transform.position = centre;
        if (l.kind == LayerKind::Camera || l.kind == LayerKind::Light) {
            l.transform.position = comp.default_camera().position;
            l.transform.point_of_interest = centre;
        } else if (l.has_source()) {
            l.transform.anchor = Vec3{l.source.width * 0.5, l.source.height * 0.5, 0};
        }
    }

    FootageSource source(const Json& j, const std::string& path, LayerKind kind) {
        in_.only_fields(j, path, {"name", "file", "generate", "width", "height", "color",
                                  "color2", "cell", "pixel_aspect"});
        FootageSource s;
        bool file = j.contains("file");
        if (kind == LayerKind::Solid) {
            if (file || j.contains("generate")) in_.fail(path, "a solid has only a size and a colour");
            s.pattern = GeneratedPattern::Solid;
        } else if (file == j.contains("generate")) {
            in_.fail(path, "expected either \"file\" or \"generate\"");
        }
        if (file) {
            const std::string name = in_.text(j["file"], field(path, "file"));
            if (name.empty()) in_.fail(field(path, "file"), "expected a file name");
            s.path = resolve(name);
            s.origin = in_.origin(field(path, "file"));
            read_image_size(s);
        } else {
            if (j.contains("generate")) {
                s.pattern = in_.choice<GeneratedPattern>(
                    j["generate"], field(path, "generate"),
                    {{"solid", GeneratedPattern::Solid}, {"checkerboard", GeneratedPattern::Checkerboard},
                     {"uv_grid", GeneratedPattern::UvGrid}, {"gradient", GeneratedPattern::Gradient}});
            }
            for (const char* required : {"width", "height"})
                if (!j.contains(required)) in_.fail(field(path, required), "missing");
            s.width = in_.extent(j["width"], field(path, "width"));
            s.height = in_.extent(j["height"], field(path, "height"));
            in_.fits(s.width, s.height, path);
        }
        optional(j, path, "color", s.color, &Reader::color);
        optional(j, path, "color2", s.color2, &Reader::color);
        optional(j, path, "cell", s.cell, &Reader::positive_integer);
        if (j.contains("pixel_aspect")) {
            const std::pair<int, int> r = in_.ratio(j["pixel_aspect"], field(path, "pixel_aspect"));
            s.par_num = r.first;
            s.par_den = r.second;
        }
        s.name = j.contains("name") ? in_.text(j["name"], field(path, "name")) : default_source_name(s);
        return s;
    }

    static std::string default_source_name(const FootageSource& s) {
        if (s.is_file()) return base_name(s.path);
        const char* kind = "Solid";
        switch (s.pattern) {
            case GeneratedPattern::Checkerboard: kind = "Checkerboard"; break;
            case GeneratedPattern::UvGrid: kind = "UV Grid"; break;
            case GeneratedPattern::Gradient: kind = "Gradient"; break;
            default: break;
        }
        return std::string(kind) + " " + std::to_string(s.width) + "x" + std::to_string(s.height);
    }

    std::string resolve(const std::string& file) const {
        if (file.empty() || file[0] == '/' || base_dir_.empty()) return file;
        return base_dir_ + "/" + file;
    }

    // Only the header is read here (and checked against the input limits); the pixels are
    // loaded when the session starts.
    static void read_image_size(FootageSource& s) {
        try {
            const ImageSize size = readImageSize(s.path, s.origin);
            s.width = size.width;
            s.height = size.height;
        } catch (const ImageIOError& e) {
            throw SceneError(e.what());
        }
    }

    void transform(const Json& j, const std::string& path, Layer& l) {
        in_.only_fields(j, path, {"anchor", "position", "scale", "orientation", "rotation_x",
                                  "rotation_y", "rotation_z", "point_of_interest", "auto_orient"});
        LayerTransform& t = l.transform;
        bool aims = l.kind == LayerKind::Camera || l.kind == LayerKind::Light;
        if (aims && (j.contains("anchor") || j.contains("scale"))) {
            in_.fail(field(path, j.contains("anchor") ? "anchor" : "scale"),
                     "cameras and lights have no anchor point or scale");
        }
        if (!aims && (j.contains("point_of_interest") || j.contains("auto_orient"))) {
            in_.fail(field(path, j.contains("auto_orient") ? "auto_orient" : "point_of_interest"),
                     "only cameras and lights have a point of interest");
        }
        optional(j, path, "anchor", t.anchor, &Reader::animated_vec3);
        optional(j, path, "position", t.position, &Reader::animated_vec3);
        optional(j, path, "scale", t.scale, &Reader::animated_vec3);
        optional(j, path, "orientation", t.orientation, &Reader::animated_vec3);
        optional(j, path, "rotation_x", t.rotation_x, &Reader::animated_number);
        optional(j, path, "rotation_y", t.rotation_y, &Reader::animated_number);
        optional(j, path, "rotation_z", t.rotation_z, &Reader::animated_number);
        optional(j, path, "point_of_interest", t.point_of_interest, &Reader::animated_vec3);
        optional(j, path, "auto_orient", t.auto_orient, &Reader::boolean);
    }

    void camera(const Json& j, const std::string& path, CameraSettings& c) {
        in_.only_fields(j, path, {"zoom", "depth_of_field", "focus_distance", "aperture",
                                  "blur_level", "projection"});
        optional(j, path, "zoom", c.zoom, &Reader::animated_number);
        optional(j, path, "depth_of_field", c.depth_of_field, &Reader::animated_flag);
        optional(j, path, "focus_distance", c.focus_distance, &Reader::animated_number);
        optional(j, path, "aperture", c.aperture, &Reader::animated_number);
        optional(j, path, "blur_level", c.blur_level, &Reader::animated_number);
        if (j.contains("projection")) {
            c.projection = in_.choice<CameraProjection>(j["projection"], field(path, "projection"),
                                                        {{"perspective", CameraProjection::Perspective},
                                                         {"orthographic", CameraProjection::Orthographic}});
        }
    }

    void light(const Json& j, const std::string& path, LightSettings& l) {
        in_.only_fields(j, path, {"type", "intensity", "color", "cone_angle", "cone_feather",
                                  "shadow_darkness", "shadow_diffusion", "casts_shadows"});
        if (j.contains("type")) {
            l.type = in_.choice<LightType>(j["type"], field(path, "type"),
                                           {{"parallel", LightType::Parallel}, {"spot", LightType::Spot},
                                            {"point", LightType::Point}, {"ambient", LightType::Ambient}});
        }
        optional(j, path, "intensity", l.intensity, &Reader::animated_number);
        optional(j, path, "color", l.color, &Reader::animated_color);
        optional(j, path, "cone_angle", l.cone_angle, &Reader::animated_number);
        optional(j, path, "cone_feather", l.cone_feather, &Reader::animated_number);
        optional(j, path, "shadow_darkness", l.shadow_darkness, &Reader::animated_number);
        optional(j, path, "shadow_diffusion", l.shadow_diffusion, &Reader::animated_number);
        optional(j, path, "casts_shadows", l.casts_shadows, &Reader::animated_flag);
    }

    void effect(const Json& j, const std::string& path, Scene& scene) {
        in_.only_fields(j, path, {"parameters"});
        if (!j.contains("parameters")) return;
        std::string pp = field(path, "parameters");
        const Json& params = j["parameters"];
        if (!params.is_object()) in_.fail(pp, "expected an object of name: value");
        for (auto it = params.begin(); it != params.end(); ++it) {
            SceneParameter p;
            p.name = it.key();
            p.path = field(pp, it.key());
            if (it->is_object()) {
                in_.only_fields(*it, p.path, {"keys"});
                read_keys(*it, p);
            } else {
                p.value = value(*it, p.path);
            }
            scene.parameters.push_back(std::move(p));
        }
    }

    void read_keys(const Json& j, SceneParameter& p) {
        std::string kp = field(p.path, "keys");
        if (!j.contains("keys") || !j["keys"].is_array() || j["keys"].empty()) {
            in_.fail(kp, "expected a non-empty array of [seconds, value]");
        }
        for (std::size_t i = 0; i < j["keys"].size(); ++i) {
            const Json& key = j["keys"][i];
            std::string ip = element(kp, i);
            if (!key.is_array() || key.size() != 2) in_.fail(ip, "expected [seconds, value]");
            p.keys.emplace_back(in_.number(key[0], element(ip, 0)), value(key[1], element(ip, 1)));
        }
        p.value = p.keys.front().second;
    }

    SceneValue value(const Json& j, const std::string& path) {
        SceneValue v;
        if (j.is_null()) {
            v.kind = SceneValue::Kind::None;
        } else if (j.is_boolean()) {
            v.kind = SceneValue::Kind::Number;
            v.boolean = true;
            v.number = j.get<bool>() ? 1 : 0;
        } else if (j.is_number()) {
            v.kind = SceneValue::Kind::Number;
            v.number = j.get<double>();
        } else if (j.is_string()) {
            v.kind = SceneValue::Kind::Text;
            v.text = j.get<std::string>();
        } else if (j.is_array() && (j.size() == 2 || j.size() == 3)) {
            v.kind = SceneValue::Kind::Numbers;
            v.numbers = in_.numbers(j, path, j.size());
        } else {
            in_.fail(path, "expected a number, true/false, a string, null, [x, y] or [r, g, b]");
        }
        return v;
    }

    // Times and frames are held to the composition as the command line's --time and --frames are.
    SceneRender render(const Json& j, const std::string& path, const Composition& comp) {
        in_.only_fields(j, path, {"time", "frames", "bit_depth", "downsample"});
        SceneRender r;
        if (j.contains("time") && j.contains("frames")) in_.fail(path, "give either \"time\" or \"frames\"");
        optional(j, path, "time", r.time, &Reader::number);
        if (!(r.time >= 0 && r.time < comp.duration()))
            in_.fail(field(path, "time"), shown(r.time) + " is outside the composition (0 to " +
                                              shown(comp.duration()) + " seconds)");
        if (j.contains("frames")) {
            std::string fp = field(path, "frames");
            std::vector<double> f = in_.numbers(j["frames"], fp, 2);
            int first = in_.integer(j["frames"][0], element(fp, 0));
            int last = in_.integer(j["frames"][1], element(fp, 1));
            if (first < 0 || last < first) in_.fail(fp, "expected [first, last] with 0 <= first <= last");
            if (last > comp.last_frame())
                in_.fail(fp, "frame " + std::to_string(last) + " is past the end of the composition (frames 0-" +
                                 std::to_string(comp.last_frame()) + ")");
            r.has_frames = true;
            r.first_frame = first;
            r.last_frame = last;
        }
        if (j.contains("bit_depth")) {
            r.bit_depth = in_.integer(j["bit_depth"], field(path, "bit_depth"));
            if (r.bit_depth != 8 && r.bit_depth != 16 && r.bit_depth != 32) {
                in_.fail(field(path, "bit_depth"), "expected 8, 16 or 32");
            }
        }
        optional(j, path, "downsample", r.downsample, &Reader::positive_integer);
        if (r.downsample > SceneRender::kMaxDownsample)
            in_.fail(field(path, "downsample"), "expected a whole number from 1 to " +
                                                    std::to_string(SceneRender::kMaxDownsample));
        return r;
    }

    Reader in_;
    std::string base_dir_;
};

}  // namespace

std::vector<double> SceneRender::times(double frame_rate) const {
    if (!has_frames) return {time};
    std::vector<double> t;
    for (int f = first_frame; f <= last_frame; ++f) t.push_back(f / frame_rate);
    return t;
}

Scene parse_scene(const std::string& text, const std::string& file, const std::string& base_dir) {
    const Json doc = parseSceneJson(text, file);
    return SceneParser(file, base_dir).parse(doc, file);
}

Scene load_scene(const std::string& path) {
    // A device or FIFO would never end (/dev/zero), a folder reads as empty text.
    const std::string unreadable = unreadableReason(path);
    if (!unreadable.empty()) throw SceneError(path + ": cannot open the scene: " + unreadable);
    std::size_t slash = path.find_last_of('/');
    std::string dir = slash == std::string::npos ? std::string() : path.substr(0, slash);
    try {
        std::ifstream in(path, std::ios::binary);
        std::stringstream text;
        if (!(text << in.rdbuf()) && in.bad()) throw SceneError(path + ": cannot read the scene");
        return parse_scene(text.str(), path, dir);
    } catch (const std::bad_alloc&) {
        throw SceneError(path + ": not enough memory to read the scene");
    }
}

}  // namespace host
