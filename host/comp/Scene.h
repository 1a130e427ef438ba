#pragma once
// Scene files: a composition, its layers, the effect's parameter values and the render
// settings, in JSON (the format is described in docs/scene-format.md).
//
// Parameters are kept by display name with their values as written; the host resolves names
// to indices, popup texts to choices and layer names to layer ids once the module has
// registered its parameters.

#include "host/comp/Composition.h"

#include <memory>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace host {

// A bad scene: the message names the file, the JSON path of the field and the problem, e.g.
// "scene.json: layers[2].transform.scale: expected 3 numbers".
class SceneError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

// One parameter value as the scene writes it.
struct SceneValue {
    enum class Kind {
        None,     // null: no layer chosen
        Number,   // sliders, angles, popups by number, checkboxes (true = 1)
        Text,     // popup item or layer name
        Numbers,  // colours [r, g, b] 0..255, points [x, y] pixels
    };
    Kind kind = Kind::None;
    bool boolean = false;  // a Number written as true/false (or on/off): only checkboxes take it
    double number = 0;
    std::string text;
    std::vector<double> numbers;
};

struct SceneParameter {
    std::string name;  // the parameter's display name
    std::string path;  // JSON path of the value, for messages about it
    SceneValue value;  // used when there are no keys
    std::vector<std::pair<double, SceneValue>> keys;  // (composition seconds, value)

    bool animated() const { return !keys.empty(); }
};

struct SceneRender {
    bool has_frames = false;  // a frame range rather than a single time
    double time = 0;          // composition seconds
    int first_frame = 0;      // inclusive
    int last_frame = 0;       // inclusive
    int bit_depth = 8;        // 8, 16 or 32
    int downsample = 1;       // 1 full resolution, 2 half, ... up to kMaxDownsample

    static constexpr int kMaxDownsample = 64;

    // The composition times to render, in order.
    std::vector<double> times(double frame_rate) const;
};

struct Scene {
    std::string file;  // as given to load_scene
    std::shared_ptr<Composition> composition;
    int effect_layer_id = 0;  // the layer carrying the effect
    std::vector<SceneParameter> parameters;
    SceneRender render;
};

// Reads a scene file. Relative image paths are taken from the scene file's directory. The file
// must be a regular file; images and sizes are checked against inputLimits() (InputFiles.h),
// image files from their headers.
Scene load_scene(const std::string& path);

// Parses scene text; `file` labels messages and `base_dir` anchors relative image paths.
Scene parse_scene(const std::string& text, const std::string& file, const std::string& base_dir);

}  // namespace host
