// Reads the scene's "layers": each layer, its source, transform, camera or light, the effect and parents.
#include "host/comp/scene/LayersReader.h"

#include "host/comp/scene/CameraReader.h"
#include "host/comp/scene/EffectReader.h"
#include "host/comp/scene/LightReader.h"
#include "host/comp/scene/SourceReader.h"
#include "host/comp/scene/TransformReader.h"

namespace host {
namespace scene {

namespace {

void layer_times(const Reader& in, const Json& j, const std::string& path, double limit, Layer& l) {
    if (j.contains("start_time")) l.start_time = in.time(j["start_time"], field(path, "start_time"), limit);
    if (j.contains("in_point")) l.in_point = in.time(j["in_point"], field(path, "in_point"), limit);
    if (j.contains("duration")) {
        in.positive(j["duration"], field(path, "duration"));
        l.duration = in.time(j["duration"], field(path, "duration"), limit);
    }
}

void require_only_for(const Reader& in, const Json& j, const std::string& path, const char* key, bool allowed) {
    if (j.contains(key) && !allowed) in.fail(field(path, key), "not allowed on this type of layer");
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

Layer layer(const Reader& in, const Json& j, const std::string& path, const Composition& comp,
            const std::string& base_dir) {
    in.only_fields(j, path, {"name", "type", "source", "start_time", "in_point", "duration", "video", "3d",
                             "parent", "transform", "camera", "light", "effect"});
    if (!j.contains("type")) in.fail(field(path, "type"), "missing");
    Layer l;
    l.kind = in.choice<LayerKind>(j["type"], field(path, "type"),
                                  {{"footage", LayerKind::Footage}, {"solid", LayerKind::Solid},
                                   {"null", LayerKind::Null}, {"camera", LayerKind::Camera},
                                   {"light", LayerKind::Light}});
    in.optional(j, path, "name", l.name, &Reader::text);
    layer_times(in, j, path, comp.max_seconds(), l);
    in.optional(j, path, "video", l.video_active, &Reader::boolean);
    in.optional(j, path, "3d", l.is_3d, &Reader::boolean);

    require_only_for(in, j, path, "source", l.has_source());
    require_only_for(in, j, path, "camera", l.kind == LayerKind::Camera);
    require_only_for(in, j, path, "light", l.kind == LayerKind::Light);
    if (l.has_source()) {
        if (!j.contains("source")) in.fail(field(path, "source"), "missing");
        l.source = read_source(in, j["source"], field(path, "source"), l.kind, base_dir);
    }
    set_default_placement(l, comp);
    if (j.contains("transform")) read_transform(in, j["transform"], field(path, "transform"), l);
    if (j.contains("camera")) read_camera(in, j["camera"], field(path, "camera"), l.camera);
    if (j.contains("light")) read_light(in, j["light"], field(path, "light"), l.light);
    return l;
}

// Following the parents up from layer `index` must end; coming back to it is a cycle.
void refuse_parent_cycle(const Reader& in, const Composition& comp, std::size_t index, const std::string& path) {
    const Layer& start = comp.layer(index);
    std::string chain = "\"" + start.display_name() + "\"";
    std::size_t steps = 0;
    for (const Layer* at = comp.parent_of(start); at != nullptr && steps <= comp.num_layers();
         at = comp.parent_of(*at), ++steps) {
        chain += " -> \"" + at->display_name() + "\"";
        if (at->id == start.id) in.fail(path, "the parents form a cycle: " + chain);
    }
}

using ParentNames = std::vector<std::pair<std::string, std::string>>;  // (parent name, its path) per layer

// Parents are named, and may be below their children, so they resolve after every layer is in.
void resolve_parents(const Reader& in, const ParentNames& parents, Composition& comp) {
    for (std::size_t i = 0; i < parents.size(); ++i) {
        if (parents[i].first.empty()) continue;
        const Layer* parent = comp.find_by_name(parents[i].first);
        if (parent == nullptr) in.fail(parents[i].second, "no layer named \"" + parents[i].first + "\"");
        Layer& child = comp.layer(i);
        if (parent->id == child.id) in.fail(parents[i].second, "a layer cannot be its own parent");
        child.parent_id = parent->id;
    }
    for (std::size_t i = 0; i < parents.size(); ++i) refuse_parent_cycle(in, comp, i, parents[i].second);
}

}  // namespace

void read_layers(const Reader& in, const Json& j, const std::string& path, const std::string& base_dir,
                 Scene& scene) {
    if (!j.is_array()) in.fail(path, "expected an array of layers");
    ParentNames parents;
    for (std::size_t i = 0; i < j.size(); ++i) {
        std::string lp = element(path, i);
        Layer l = layer(in, j[i], lp, *scene.composition, base_dir);
        parents.emplace_back(j[i].contains("parent") ? in.text(j[i]["parent"], field(lp, "parent")) : "",
                             field(lp, "parent"));
        const Layer& added = scene.composition->add_layer(std::move(l));
        if (j[i].contains("effect")) {
            if (scene.effect_layer_id != 0) in.fail(field(lp, "effect"), "only one layer may carry the effect");
            scene.effect_layer_id = added.id;
            read_effect(in, j[i]["effect"], field(lp, "effect"), scene.parameters);
        }
    }
    resolve_parents(in, parents, *scene.composition);
}

}  // namespace scene
}  // namespace host
