#pragma once
// The emulated host's composition: its size and timing, and its layers from top (index 0) to
// bottom with their switches, transforms and per-kind settings. Every property that After
// Effects can keyframe is an Animated value over composition seconds.
//
// Units follow the host: positions in composition pixels, scale in percent, angles in degrees,
// colours as alpha/red/green/blue in 0..1, times in seconds.

#include "host/comp/Animated.h"

#include <map>
#include <memory>
#include <string>
#include <vector>

namespace host {

struct Vec3 {
    double x = 0, y = 0, z = 0;

    Vec3 operator+(const Vec3& o) const { return {x + o.x, y + o.y, z + o.z}; }
    Vec3 operator-(const Vec3& o) const { return {x - o.x, y - o.y, z - o.z}; }
    Vec3 operator*(double f) const { return {x * f, y * f, z * f}; }
    bool operator==(const Vec3& o) const { return x == o.x && y == o.y && z == o.z; }
};

struct Color {
    double alpha = 1, red = 1, green = 1, blue = 1;

    Color operator+(const Color& o) const {
        return {alpha + o.alpha, red + o.red, green + o.green, blue + o.blue};
    }
    Color operator-(const Color& o) const {
        return {alpha - o.alpha, red - o.red, green - o.green, blue - o.blue};
    }
    Color operator*(double f) const { return {alpha * f, red * f, green * f, blue * f}; }
};

// Values equal to the host's AEGP_ObjectType for the kinds that have one.
enum class LayerKind { Footage, Solid, Null, Camera, Light };

// Values equal to AEGP_CameraType.
enum class CameraProjection { Perspective = 0, Orthographic = 1 };

// Values equal to AEGP_LightType.
enum class LightType { Parallel = 0, Spot = 1, Point = 2, Ambient = 3 };

// Where the pixels of a footage or solid layer come from. A file when `path` is set, otherwise
// an image generated at `width` x `height`.
enum class GeneratedPattern { None, Solid, Checkerboard, UvGrid, Gradient };

struct FootageSource {
    std::string name;  // the project item's name, shown when the layer has no name of its own
    std::string path;  // image file; empty for generated sources
    std::string origin;  // where the file was asked for, e.g. "scene.json: layers[0].source.file"
    GeneratedPattern pattern = GeneratedPattern::None;
    int width = 0;      // pixels; for files, 0 until the host has read the file
    int height = 0;
    Color color;         // solid colour, first checker/gradient colour
    Color color2{1, 0, 0, 0};  // second checker/gradient colour
    int cell = 32;       // checker and grid cell size, pixels
    int par_num = 1;     // pixel aspect ratio of the source
    int par_den = 1;

    bool is_file() const { return !path.empty(); }
};

struct LayerTransform {
    Animated<Vec3> anchor;
    Animated<Vec3> position;
    Animated<Vec3> scale{Vec3{100, 100, 100}};
    Animated<Vec3> orientation;  // degrees about x, y, z
    Animated<double> rotation_x{0.0};
    Animated<double> rotation_y{0.0};
    Animated<double> rotation_z{0.0};
    // Cameras and lights only: the look-at target, in the same space as `position`.
    Animated<Vec3> point_of_interest;
    bool auto_orient = true;  // two-node camera / light aiming at point_of_interest
};

struct CameraSettings {
    Animated<double> zoom{0.0};  // pixels; 0 means "the 50 mm preset", resolved on add
    Animated<double> depth_of_field{0.0};  // 0 off, 1 on
    Animated<double> focus_distance{0.0};  // pixels; 0 means "the zoom", resolved on add
    Animated<double> aperture{25.3};       // pixels
    Animated<double> blur_level{100.0};    // percent
    CameraProjection projection = CameraProjection::Perspective;
};

struct LightSettings {
    LightType type = LightType::Point;
    Animated<double> intensity{100.0};         // percent
    Animated<Color> color{Color{}};
    Animated<double> cone_angle{90.0};         // degrees, full angle
    Animated<double> cone_feather{50.0};       // percent
    Animated<double> shadow_darkness{100.0};   // percent
    Animated<double> shadow_diffusion{0.0};    // pixels
    Animated<double> casts_shadows{0.0};       // 0 off, 1 on
};

struct Layer {
    int id = 0;                // unique within the composition, never 0
    std::string name;          // the layer's own name; empty shows the source's name
    LayerKind kind = LayerKind::Solid;
    FootageSource source;      // footage and solid layers
    double start_time = 0;     // composition time of the layer's time 0, seconds
    double in_point = 0;       // composition seconds
    double duration = 0;       // seconds; 0 means "to the end of the composition", resolved on add
    bool video_active = true;
    bool is_3d = false;        // cameras and lights are always 3D
    int parent_id = 0;         // 0: no parent
    LayerTransform transform;
    CameraSettings camera;
    LightSettings light;

    bool has_source() const { return kind == LayerKind::Footage || kind == LayerKind::Solid; }
    bool is_three_d() const { return is_3d || kind == LayerKind::Camera || kind == LayerKind::Light; }
    // The name the user sees: its own, or its source's when it has none.
    const std::string& display_name() const { return name.empty() ? source.name : name; }
    double layer_time(double comp_seconds) const { return comp_seconds - start_time; }
    double comp_time(double layer_seconds) const { return layer_seconds + start_time; }
    bool spans(double comp_seconds) const {
        return in_point <= comp_seconds && comp_seconds < in_point + duration;
    }
};

struct DefaultCamera {
    double distance;   // pixels from the lens to the image plane (also its zoom)
    Vec3 position;     // looking along +z, unrotated
};

// The last frame that starts inside a composition of `duration` seconds (frame = time × rate),
// 0 for a composition shorter than a frame; never beyond the largest int.
int lastFrameOf(double duration, double frame_rate);

class Composition {
public:
    // Fastest frame rate the host takes: its time scale (hundredths of a frame) stays far
    // inside 32 bits.
    static constexpr double kMaxFrameRate = 1e6;

    Composition(std::string name, int width, int height, double frame_rate, double duration);

    const std::string& name() const { return name_; }
    int width() const { return width_; }
    int height() const { return height_; }
    double frame_rate() const { return frame_rate_; }
    double duration() const { return duration_; }
    int par_num() const { return par_num_; }
    int par_den() const { return par_den_; }
    const Color& background() const { return background_; }

    void set_pixel_aspect(int num, int den) { par_num_ = num; par_den_ = den; }
    void set_background(const Color& c) { background_ = c; }
    // Ticks per second of the times the host reports for this composition.
    unsigned time_scale() const;
    // Times reach the effect as 32-bit counts of ticks: the longest time, in seconds, that they
    // can express (either way from 0).
    double max_seconds() const;
    int last_frame() const { return lastFrameOf(duration_, frame_rate_); }

    // Appends below the current bottom layer; gives it a fresh id and fills the defaults that
    // depend on the composition (duration; a camera's zoom and focus distance).
    Layer& add_layer(Layer layer);

    std::size_t num_layers() const { return layers_.size(); }
    Layer& layer(std::size_t index) { return *layers_[index]; }
    const Layer& layer(std::size_t index) const { return *layers_[index]; }
    const Layer* find_by_id(int id) const;
    Layer* find_by_id(int id);
    int index_of(int id) const;  // -1 when absent
    // First layer from the top whose displayed name is `name`, as the expression language's
    // thisComp.layer(name) resolves it.
    const Layer* find_by_name(const std::string& name) const;
    const Layer* parent_of(const Layer& layer) const;

    // The camera the composition is seen through at `comp_seconds`: the topmost camera layer
    // with video on whose span contains the time; null when there is none.
    const Layer* active_camera(double comp_seconds) const;
    // The invisible camera used without a camera layer: the 50 mm preset on 36 mm film.
    DefaultCamera default_camera() const;
    double default_camera_distance() const { return default_camera().distance; }

    // Expressions by layer id and layer stream number, stored verbatim.
    void set_layer_expression(int layer_id, int stream, const std::string& text);
    const std::string* layer_expression(int layer_id, int stream) const;

private:
    std::string name_;
    int width_;
    int height_;
    double frame_rate_;
    double duration_;
    int par_num_ = 1;
    int par_den_ = 1;
    Color background_{1, 0, 0, 0};
    int next_id_ = 1;
    // unique_ptr keeps each layer at a fixed address: host handles point at them.
    std::vector<std::unique_ptr<Layer>> layers_;
    std::map<std::pair<int, int>, std::string> layer_expressions_;
};

}  // namespace host
