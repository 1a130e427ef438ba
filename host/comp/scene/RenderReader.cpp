// Reads the scene's "render" settings: the time or frames, the bit depth and the downsample.
#include "host/comp/scene/RenderReader.h"

namespace host {
namespace scene {

namespace {

void read_frames(const Reader& in, const Json& j, const std::string& fp, const Composition& comp, SceneRender& r) {
    in.numbers(j, fp, 2);  // two numbers first, then each a whole frame
    int first = in.integer(j[0], element(fp, 0));
    int last = in.integer(j[1], element(fp, 1));
    if (first < 0 || last < first) in.fail(fp, "expected [first, last] with 0 <= first <= last");
    if (last > comp.last_frame())
        in.fail(fp, "frame " + std::to_string(last) + " is past the end of the composition (frames 0-" +
                        std::to_string(comp.last_frame()) + ")");
    r.has_frames = true;
    r.first_frame = first;
    r.last_frame = last;
}

}  // namespace

SceneRender read_render(const Reader& in, const Json& j, const std::string& path, const Composition& comp) {
    in.only_fields(j, path, {"time", "frames", "bit_depth", "downsample"});
    SceneRender r;
    if (j.contains("time") && j.contains("frames")) in.fail(path, "give either \"time\" or \"frames\"");
    in.optional(j, path, "time", r.time, &Reader::number);
    if (!(r.time >= 0 && r.time < comp.duration()))
        in.fail(field(path, "time"), shown(r.time) + " is outside the composition (0 to " +
                                         shown(comp.duration()) + " seconds)");
    if (j.contains("frames")) read_frames(in, j["frames"], field(path, "frames"), comp, r);
    if (j.contains("bit_depth")) {
        r.bit_depth = in.integer(j["bit_depth"], field(path, "bit_depth"));
        if (r.bit_depth != 8 && r.bit_depth != 16 && r.bit_depth != 32) {
            in.fail(field(path, "bit_depth"), "expected 8, 16 or 32");
        }
    }
    in.optional(j, path, "downsample", r.downsample, &Reader::positive_integer);
    if (r.downsample > SceneRender::kMaxDownsample)
        in.fail(field(path, "downsample"), "expected a whole number from 1 to " +
                                               std::to_string(SceneRender::kMaxDownsample));
    return r;
}

}  // namespace scene
}  // namespace host
