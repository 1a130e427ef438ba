// Reads a layer's "transform": anchor, position, scale, rotations and, for cameras and lights, aim.
#include "host/comp/scene/TransformReader.h"

namespace host {
namespace scene {

void read_transform(const Reader& in, const Json& j, const std::string& path, Layer& l) {
    in.only_fields(j, path, {"anchor", "position", "scale", "orientation", "rotation_x", "rotation_y",
                             "rotation_z", "point_of_interest", "auto_orient"});
    LayerTransform& t = l.transform;
    bool aims = l.kind == LayerKind::Camera || l.kind == LayerKind::Light;
    if (aims && (j.contains("anchor") || j.contains("scale"))) {
        in.fail(field(path, j.contains("anchor") ? "anchor" : "scale"),
                "cameras and lights have no anchor point or scale");
    }
    if (!aims && (j.contains("point_of_interest") || j.contains("auto_orient"))) {
        in.fail(field(path, j.contains("auto_orient") ? "auto_orient" : "point_of_interest"),
                "only cameras and lights have a point of interest");
    }
    in.optional(j, path, "anchor", t.anchor, &Reader::animated_vec3);
    in.optional(j, path, "position", t.position, &Reader::animated_vec3);
    in.optional(j, path, "scale", t.scale, &Reader::animated_vec3);
    in.optional(j, path, "orientation", t.orientation, &Reader::animated_vec3);
    in.optional(j, path, "rotation_x", t.rotation_x, &Reader::animated_number);
    in.optional(j, path, "rotation_y", t.rotation_y, &Reader::animated_number);
    in.optional(j, path, "rotation_z", t.rotation_z, &Reader::animated_number);
    in.optional(j, path, "point_of_interest", t.point_of_interest, &Reader::animated_vec3);
    in.optional(j, path, "auto_orient", t.auto_orient, &Reader::boolean);
}

}  // namespace scene
}  // namespace host
