#include "host/ImageIO.h"

#include "host/FileCommit.h"
#include "host/SystemFaults.h"

#include <OpenImageIO/filesystem.h>
#include <OpenImageIO/imageio.h>

#include <algorithm>
#include <cctype>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <new>

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

// OpenImageIO's messages may span lines; ours are one line each.
std::string oneLine(std::string text) {
    while (!text.empty() && text.back() == '\n') text.pop_back();
    std::replace(text.begin(), text.end(), '\n', ' ');
    return text;
}

}  // namespace

Image loadImage(const std::string& path) {
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

namespace {

// The file's bytes, encoded in memory so that writing them is one checked, all-or-nothing step.
std::vector<unsigned char> encodeImage(const Image& image, const std::string& path, bool exr,
                                       const SaveOptions& options) {
    if (systemFault(SystemCall::Allocate) != 0) throw std::bad_alloc();
    const OIIO::TypeDesc type = exr ? OIIO::TypeDesc::FLOAT
                                    : (options.png_bits == 16 ? OIIO::TypeDesc::UINT16 : OIIO::TypeDesc::UINT8);
    OIIO::ImageSpec spec(image.width(), image.height(), 4, type);
    spec.alpha_channel = 3;
    // PNG holds straight colour; say ours already is, so the writer does not divide again.
    if (!exr) spec.attribute("oiio:UnassociatedAlpha", 1);

    std::vector<unsigned char> bytes;
    OIIO::Filesystem::IOVecOutput memory(bytes);
    auto out = OIIO::ImageOutput::create(path, &memory);
    if (!out) throw ImageIOError("cannot write image '" + path + "': " + oneLine(OIIO::geterror()));
    bool ok = out->open(path, spec);
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
    if (!ok) throw ImageIOError("cannot write image '" + path + "': " + oneLine(out->geterror()));
    return bytes;
}

}  // namespace

void saveImage(const Image& image, const std::string& path, const SaveOptions& options) {
    const std::string ext = lowerExtension(path);
    const bool exr = ext == ".exr";
    if (!exr && ext != ".png")
        throw ImageIOError("cannot write image '" + path + "': only .png and .exr files are written");
    if (!exr && options.png_bits != 8 && options.png_bits != 16)
        throw ImageIOError("cannot write image '" + path + "': PNG depth must be 8 or 16 bits");
    if (image.empty()) throw ImageIOError("cannot write image '" + path + "': the image is empty");

    std::vector<unsigned char> bytes;
    try {
        bytes = encodeImage(image, path, exr, options);
    } catch (const std::bad_alloc&) {
        throw ImageIOError("cannot write image '" + path + "': out of memory while encoding its " +
                           std::to_string(image.width()) + " x " + std::to_string(image.height()) + " pixels");
    }
    try {
        writeFileAtomically(path, bytes.data(), bytes.size());
    } catch (const FileError& e) {
        throw ImageIOError("cannot write image '" + path + "': " + e.reason());
    }
}

}  // namespace host
