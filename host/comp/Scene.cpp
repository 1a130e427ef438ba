// Reads a scene file: its top level here, each section through its reader in scene/.
#include "host/comp/Scene.h"

#include "host/comp/SceneJson.h"
#include "host/comp/scene/CompositionReader.h"
#include "host/comp/scene/LayersReader.h"
#include "host/comp/scene/RenderReader.h"
#include "host/comp/scene/SceneFields.h"
#include "host/files/InputFiles.h"

#include <fstream>
#include <sstream>

namespace host {

std::vector<double> SceneRender::times(double frame_rate) const {
    if (!has_frames) return {time};
    std::vector<double> t;
    for (int f = first_frame; f <= last_frame; ++f) t.push_back(f / frame_rate);
    return t;
}

Scene parse_scene(const std::string& text, const std::string& file, const std::string& base_dir) {
    const SceneJson doc = parseSceneJson(text, file);
    const scene::Reader in(file);
    in.only_fields(doc, "(top level)", {"composition", "layers", "render"});
    if (!doc.contains("composition")) in.fail("composition", "missing");
    if (!doc.contains("layers")) in.fail("layers", "missing");
    Scene scene;
    scene.file = file;
    scene.composition = scene::read_composition(in, doc["composition"], "composition");
    scene::read_layers(in, doc["layers"], "layers", base_dir, scene);
    if (scene.effect_layer_id == 0) in.fail("layers", "no layer carries an \"effect\"");
    if (doc.contains("render")) scene.render = scene::read_render(in, doc["render"], "render", *scene.composition);
    return scene;
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
