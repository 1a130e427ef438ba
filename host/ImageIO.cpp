#include "host/ImageIO.h"

#include "host/ImageDump.h"

#include <OpenImageIO/imageio.h>

#include <algorithm>
#include <cctype>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <unistd.h>

namespace host {

namespace {

namespace fs = std::filesystem;

std::string lowerExtension(const std::string& path) {
    std::string ext = fs::path(path).extension().string();
    std::transform(ext.begin(), ext.end(), ext.begin(), [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    return ext;
}

// Maps the file's channels (grey, grey + alpha, RGB, RGBA, more) onto straight RGBA.
RGBA toRGBA(const float* channels, int count, int alpha_channel) {
    RGBA p;
    if (count <= 2) {
        p.r = p.g = p.b = channels[0];
    } else {
        p.r = channels[0];
        p.g = channels[1];
        p.b = channels[2];
    }
    if (alpha_channel < 0 && count == 2) alpha_channel = 1;
    p.a = alpha_channel >= 0 && alpha_channel < count ? channels[alpha_channel] : 1.0f;
    return p;
}

void unpremultiply(Image& image) {
    for (RGBA& p : image.pixels()) {
        if (p.a > 0.0f) {
            p.r /= p.a;
            p.g /= p.a;
            p.b /= p.a;
        }
    }
}

template <class T>
std::vector<T> quantise(const Image& image, double white) {
    std::vector<T> data;
    data.reserve(image.pixels().size() * 4);
    auto q = [white](float v) {
        const double scaled = std::floor(static_cast<double>(v) * white + 0.5);
        return static_cast<T>(std::clamp(std::isnan(scaled) ? 0.0 : scaled, 0.0, white));
    };
    for (const RGBA& p : image.pixels()) {
        data.push_back(q(p.r));
        data.push_back(q(p.g));
        data.push_back(q(p.b));
        data.push_back(q(p.a));
    }
    return data;
}

std::vector<float> premultipliedFloats(const Image& image) {
    std::vector<float> data;
    data.reserve(image.pixels().size() * 4);
    for (const RGBA& p : image.pixels()) {
        data.push_back(p.r * p.a);
        data.push_back(p.g * p.a);
        data.push_back(p.b * p.a);
        data.push_back(p.a);
    }
    return data;
}

// A name beside the target that keeps its extension (writers pick the format from it).
std::string temporaryPath(const std::string& path) {
    const fs::path target(path);
    const std::string name = "." + target.stem().string() + ".tmp" + std::to_string(::getpid()) +
                             target.extension().string();
    return (target.parent_path() / name).string();
}

}  // namespace

Image loadImage(const std::string& path) {
    if (isImageDump(path)) return readImageDump(path);
    // Ask readers to leave unassociated (straight) alpha as it is in the file.
    OIIO::ImageSpec config;
    config.attribute("oiio:UnassociatedAlpha", 1);
    auto in = OIIO::ImageInput::open(path, &config);
    if (!in) throw ImageIOError("cannot read image '" + path + "': " + OIIO::geterror());
    const OIIO::ImageSpec& spec = in->spec();
    const int count = spec.nchannels;
    if (spec.width <= 0 || spec.height <= 0 || count <= 0)
        throw ImageIOError("cannot read image '" + path + "': it has no pixels");
    std::vector<float> data(static_cast<std::size_t>(spec.width) * spec.height * count);
    if (!in->read_image(0, 0, 0, count, OIIO::TypeDesc::FLOAT, data.data()))
        throw ImageIOError("cannot read image '" + path + "': " + in->geterror());

    Image image(spec.width, spec.height);
    for (std::size_t i = 0; i < image.pixels().size(); ++i)
        image.pixels()[i] = toRGBA(&data[i * count], count, spec.alpha_channel);
    const bool has_alpha = spec.alpha_channel >= 0 || count == 2;
    if (has_alpha && spec.get_int_attribute("oiio:UnassociatedAlpha", 0) == 0) unpremultiply(image);
    return image;
}

void imageSize(const std::string& path, int& width, int& height) {
    if (isImageDump(path)) return readImageDumpSize(path, width, height);
    auto input = OIIO::ImageInput::open(path);
    if (!input) throw ImageIOError("cannot read image '" + path + "': " + OIIO::geterror());
    width = input->spec().width;
    height = input->spec().height;
    input->close();
}

void saveImage(const Image& image, const std::string& path, const SaveOptions& options) {
    const std::string ext = lowerExtension(path);
    const bool exr = ext == ".exr";
    if (!exr && ext != ".png")
        throw ImageIOError("cannot write image '" + path + "': only .png and .exr files are written");
    if (!exr && options.png_bits != 8 && options.png_bits != 16)
        throw ImageIOError("cannot write image '" + path + "': PNG depth must be 8 or 16 bits");
    if (image.empty()) throw ImageIOError("cannot write image '" + path + "': the image is empty");

    const OIIO::TypeDesc type = exr ? OIIO::TypeDesc::FLOAT
                                    : (options.png_bits == 16 ? OIIO::TypeDesc::UINT16 : OIIO::TypeDesc::UINT8);
    OIIO::ImageSpec spec(image.width(), image.height(), 4, type);
    spec.alpha_channel = 3;
    // PNG holds straight colour; say ours already is, so the writer does not divide again.
    if (!exr) spec.attribute("oiio:UnassociatedAlpha", 1);

    auto out = OIIO::ImageOutput::create(path);
    if (!out) throw ImageIOError("cannot write image '" + path + "': " + OIIO::geterror());
    const std::string temp = temporaryPath(path);
    bool ok = out->open(temp, spec);
    if (ok) {
        if (exr) {
            ok = out->write_image(OIIO::TypeDesc::FLOAT, premultipliedFloats(image).data());
        } else if (options.png_bits == 16) {
            ok = out->write_image(OIIO::TypeDesc::UINT16, quantise<std::uint16_t>(image, 65535.0).data());
        } else {
            ok = out->write_image(OIIO::TypeDesc::UINT8, quantise<std::uint8_t>(image, 255.0).data());
        }
        ok = out->close() && ok;
    }
    if (!ok) {
        const std::string why = out->geterror();
        std::remove(temp.c_str());
        throw ImageIOError("cannot write image '" + path + "': " + why);
    }
    std::error_code ec;
    fs::rename(temp, path, ec);
    if (ec) {
        std::remove(temp.c_str());
        throw ImageIOError("cannot write image '" + path + "': " + ec.message());
    }
}

}  // namespace host
