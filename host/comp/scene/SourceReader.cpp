// Reads a footage or solid layer's "source": an image file or a generated pattern.
#include "host/comp/scene/SourceReader.h"

#include "host/files/ImageIO.h"

namespace host {
namespace scene {

namespace {

std::string base_name(const std::string& path) {
    std::size_t slash = path.find_last_of('/');
    return slash == std::string::npos ? path : path.substr(slash + 1);
}

std::string default_source_name(const FootageSource& s) {
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

std::string resolve(const std::string& file, const std::string& base_dir) {
    if (file.empty() || file[0] == '/' || base_dir.empty()) return file;
    return base_dir + "/" + file;
}

// Only the header is read here (and checked against the input limits); the pixels are
// loaded when the session starts.
void read_image_size(FootageSource& s) {
    try {
        const ImageSize size = readImageSize(s.path, s.origin);
        s.width = size.width;
        s.height = size.height;
    } catch (const ImageIOError& e) {
        throw SceneError(e.what());
    }
}

void read_file(const Reader& in, const Json& j, const std::string& path, const std::string& base_dir,
               FootageSource& s) {
    const std::string name = in.text(j["file"], field(path, "file"));
    if (name.empty()) in.fail(field(path, "file"), "expected a file name");
    s.path = resolve(name, base_dir);
    s.origin = in.origin(field(path, "file"));
    read_image_size(s);
}

void read_generated(const Reader& in, const Json& j, const std::string& path, FootageSource& s) {
    if (j.contains("generate")) {
        s.pattern = in.choice<GeneratedPattern>(
            j["generate"], field(path, "generate"),
            {{"solid", GeneratedPattern::Solid}, {"checkerboard", GeneratedPattern::Checkerboard},
             {"uv_grid", GeneratedPattern::UvGrid}, {"gradient", GeneratedPattern::Gradient}});
    }
    for (const char* required : {"width", "height"})
        if (!j.contains(required)) in.fail(field(path, required), "missing");
    s.width = in.extent(j["width"], field(path, "width"));
    s.height = in.extent(j["height"], field(path, "height"));
    in.fits(s.width, s.height, path);
}

}  // namespace

FootageSource read_source(const Reader& in, const Json& j, const std::string& path, LayerKind kind,
                          const std::string& base_dir) {
    in.only_fields(j, path, {"name", "file", "generate", "width", "height", "color", "color2", "cell",
                             "pixel_aspect"});
    FootageSource s;
    bool file = j.contains("file");
    if (kind == LayerKind::Solid) {
        if (file || j.contains("generate")) in.fail(path, "a solid has only a size and a colour");
        s.pattern = GeneratedPattern::Solid;
    } else if (file == j.contains("generate")) {
        in.fail(path, "expected either \"file\" or \"generate\"");
    }
    if (file) {
        read_file(in, j, path, base_dir, s);
    } else {
        read_generated(in, j, path, s);
    }
    in.optional(j, path, "color", s.color, &Reader::color);
    in.optional(j, path, "color2", s.color2, &Reader::color);
    in.optional(j, path, "cell", s.cell, &Reader::positive_integer);
    if (j.contains("pixel_aspect")) {
        const std::pair<int, int> r = in.ratio(j["pixel_aspect"], field(path, "pixel_aspect"));
        s.par_num = r.first;
        s.par_den = r.second;
    }
    s.name = j.contains("name") ? in.text(j["name"], field(path, "name")) : default_source_name(s);
    return s;
}

}  // namespace scene
}  // namespace host
