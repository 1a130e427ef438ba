// Reads a camera layer's "camera": zoom, depth of field and projection.
#include "host/comp/scene/CameraReader.h"

namespace host {
namespace scene {

void read_camera(const Reader& in, const Json& j, const std::string& path, CameraSettings& c) {
    in.only_fields(j, path, {"zoom", "depth_of_field", "focus_distance", "aperture", "blur_level", "projection"});
    in.optional(j, path, "zoom", c.zoom, &Reader::animated_number);
    in.optional(j, path, "depth_of_field", c.depth_of_field, &Reader::animated_flag);
    in.optional(j, path, "focus_distance", c.focus_distance, &Reader::animated_number);
    in.optional(j, path, "aperture", c.aperture, &Reader::animated_number);
    in.optional(j, path, "blur_level", c.blur_level, &Reader::animated_number);
    if (j.contains("projection")) {
        c.projection = in.choice<CameraProjection>(j["projection"], field(path, "projection"),
                                                   {{"perspective", CameraProjection::Perspective},
                                                    {"orthographic", CameraProjection::Orthographic}});
    }
}

}  // namespace scene
}  // namespace host
