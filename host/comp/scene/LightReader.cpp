// Reads a light layer's "light": type, intensity, colour, cone and shadows.
#include "host/comp/scene/LightReader.h"

namespace host {
namespace scene {

void read_light(const Reader& in, const Json& j, const std::string& path, LightSettings& l) {
    in.only_fields(j, path, {"type", "intensity", "color", "cone_angle", "cone_feather", "shadow_darkness",
                             "shadow_diffusion", "casts_shadows"});
    if (j.contains("type")) {
        l.type = in.choice<LightType>(j["type"], field(path, "type"),
                                      {{"parallel", LightType::Parallel}, {"spot", LightType::Spot},
                                       {"point", LightType::Point}, {"ambient", LightType::Ambient}});
    }
    in.optional(j, path, "intensity", l.intensity, &Reader::animated_number);
    in.optional(j, path, "color", l.color, &Reader::animated_color);
    in.optional(j, path, "cone_angle", l.cone_angle, &Reader::animated_number);
    in.optional(j, path, "cone_feather", l.cone_feather, &Reader::animated_number);
    in.optional(j, path, "shadow_darkness", l.shadow_darkness, &Reader::animated_number);
    in.optional(j, path, "shadow_diffusion", l.shadow_diffusion, &Reader::animated_number);
    in.optional(j, path, "casts_shadows", l.casts_shadows, &Reader::animated_flag);
}

}  // namespace scene
}  // namespace host
