// Reads the scene's "composition": size, pixel aspect, frame rate, duration and background.
#include "host/comp/scene/CompositionReader.h"

namespace host {
namespace scene {

namespace {

double frame_rate(const Reader& in, const Json& j, const std::string& path) {
    const double rate = in.positive(j, path);
    if (rate > Composition::kMaxFrameRate)
        in.fail(path, shown(rate) + " frames per second is more than the " + shown(Composition::kMaxFrameRate) +
                          " the host takes");
    return rate;
}

}  // namespace

std::shared_ptr<Composition> read_composition(const Reader& in, const Json& j, const std::string& path) {
    in.only_fields(j, path, {"name", "width", "height", "pixel_aspect", "frame_rate", "duration", "background"});
    for (const char* required : {"width", "height", "frame_rate", "duration"})
        if (!j.contains(required)) in.fail(field(path, required), "missing");
    const int width = in.extent(j["width"], field(path, "width"));
    const int height = in.extent(j["height"], field(path, "height"));
    in.fits(width, height, path);
    auto comp = std::make_shared<Composition>(
        j.contains("name") ? in.text(j["name"], field(path, "name")) : "Comp 1", width, height,
        frame_rate(in, j["frame_rate"], field(path, "frame_rate")),
        in.positive(j["duration"], field(path, "duration")));
    if (comp->duration() > comp->max_seconds()) {
        in.fail(field(path, "duration"), shown(comp->duration()) + " seconds at " + shown(comp->frame_rate()) +
                                             " frames per second is beyond the host's time range (" +
                                             shown(comp->max_seconds()) + " seconds)");
    }
    if (j.contains("pixel_aspect")) {
        const std::pair<int, int> r = in.ratio(j["pixel_aspect"], field(path, "pixel_aspect"));
        comp->set_pixel_aspect(r.first, r.second);
    }
    if (j.contains("background")) {
        comp->set_background(in.color(j["background"], field(path, "background")));
    }
    return comp;
}

}  // namespace scene
}  // namespace host
