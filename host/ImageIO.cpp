#include "host/ImageIO.h"

#include "host/InputFiles.h"

#include <OpenImageIO/imageio.h>

#include <algorithm>
#include <cctype>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <fcntl.h>
#include <filesystem>
#include <memory>
#include <mutex>
#include <new>
#include <sstream>
#include <unistd.h>

#if defined(__SANITIZE_ADDRESS__)
#include <sanitizer/lsan_interface.h>
#endif

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

// Image libraries (libpng) print warnings and errors of a damaged file straight to stderr;
// the same reasons come back through OpenImageIO's geterror() and go into our one-line
// message, so the raw lines are sent to /dev/null while a file is read. Reads happen while
// scenes are loaded, before rendering writes anything to stderr.
class LibraryChatterMuted {
public:
    LibraryChatterMuted() : lock_(mutex()) {
        std::fflush(stderr);
        const int null = ::open("/dev/null", O_WRONLY | O_CLOEXEC);
        if (null < 0) return;
        saved_ = ::dup(STDERR_FILENO);
        if (saved_ >= 0) ::dup2(null, STDERR_FILENO);
        ::close(null);
    }
    ~LibraryChatterMuted() {
        if (saved_ < 0) return;
        std::fflush(stderr);
        ::dup2(saved_, STDERR_FILENO);
        ::close(saved_);
    }
    LibraryChatterMuted(const LibraryChatterMuted&) = delete;
    LibraryChatterMuted& operator=(const LibraryChatterMuted&) = delete;

private:
    static std::mutex& mutex() {
        static std::mutex m;
        return m;
    }
    std::lock_guard<std::mutex> lock_;
    int saved_ = -1;
};

// OpenImageIO's PNG reader leaves a libpng error by a longjmp that skips the destructor of a
// string of its own: a few bytes per damaged file, lost inside the library. In sanitizer builds
// the leak checker is told not to count what the library allocates while it reads pixels, so
// that our own leaks stay visible.
class LibraryLeaksIgnored {
public:
    LibraryLeaksIgnored() {
#if defined(__SANITIZE_ADDRESS__)
        __lsan_disable();
#endif
    }
    ~LibraryLeaksIgnored() {
#if defined(__SANITIZE_ADDRESS__)
        __lsan_enable();
#endif
    }
    LibraryLeaksIgnored(const LibraryLeaksIgnored&) = delete;
    LibraryLeaksIgnored& operator=(const LibraryLeaksIgnored&) = delete;
};

std::string messageStart(const std::string& path, const std::string& origin) {
    return (origin.empty() ? "" : origin + ": ") + "cannot read image '" + path + "': ";
}

// OpenImageIO's messages may run over several lines (one per library complaint); ours are one.
std::string oneLine(const std::string& text) {
    std::string joined, line;
    for (std::istringstream lines(text); std::getline(lines, line);)
        if (!line.empty()) joined += (joined.empty() ? "" : "; ") + line;
    return joined.empty() ? "not an image OpenImageIO can read" : joined;
}

// Opens `path` after checking it is a regular file (a device or FIFO would never end format
// detection), and refuses an image beyond the input limits from its header alone.
std::unique_ptr<OIIO::ImageInput> openChecked(const std::string& path, const std::string& origin,
                                              const OIIO::ImageSpec* config) {
    const std::string unreadable = unreadableReason(path);
    if (!unreadable.empty()) throw ImageIOError(messageStart(path, origin) + unreadable);
    auto in = OIIO::ImageInput::open(path, config);
    if (!in) throw ImageIOError(messageStart(path, origin) + oneLine(OIIO::geterror()));
    const OIIO::ImageSpec& spec = in->spec();
    if (spec.width <= 0 || spec.height <= 0 || spec.nchannels <= 0 || spec.depth > 1)
        throw ImageIOError(messageStart(path, origin) + "it has no pixels, or is a volume");
    std::string too_large = inputLimits().refusal(spec.width, spec.height);
    const double file_bytes = double(spec.width) * spec.height * spec.nchannels * sizeof(float);
    if (too_large.empty() && file_bytes > double(inputLimits().max_bytes))
        too_large = std::to_string(spec.nchannels) + " channels need " + describeBytes(file_bytes) +
                    " as floats, more than the " + describeBytes(double(inputLimits().max_bytes)) + " allowed per image";
    if (!too_large.empty()) throw ImageIOError(messageStart(path, origin) + too_large);
    return in;
}

}  // namespace

Image loadImage(const std::string& path, const std::string& origin) {
    // Ask readers to leave unassociated (straight) alpha as it is in the file.
    OIIO::ImageSpec config;
    config.attribute("oiio:UnassociatedAlpha", 1);
    const LibraryChatterMuted muted;
    const std::unique_ptr<OIIO::ImageInput> in = openChecked(path, origin, &config);
    const OIIO::ImageSpec& spec = in->spec();
    const int count = spec.nchannels;
    std::vector<float> data;
    Image image;
    try {
        data.resize(static_cast<std::size_t>(spec.width) * spec.height * count);
        image = Image(spec.width, spec.height);
    } catch (const std::bad_alloc&) {
        throw ImageIOError(messageStart(path, origin) + "not enough memory for its " + std::to_string(spec.width) +
                           " x " + std::to_string(spec.height) + " pixels");
    }
    bool read = false;
    {
        const LibraryLeaksIgnored library_leaks;
        read = in->read_image(0, 0, 0, count, OIIO::TypeDesc::FLOAT, data.data());
    }
    if (!read) throw ImageIOError(messageStart(path, origin) + oneLine(in->geterror()));

    for (std::size_t i = 0; i < image.pixels().size(); ++i)
        image.pixels()[i] = toRGBA(&data[i * count], count, spec.alpha_channel);
    const bool has_alpha = spec.alpha_channel >= 0 || count == 2;
    if (has_alpha && spec.get_int_attribute("oiio:UnassociatedAlpha", 0) == 0) unpremultiply(image);
    return image;
}

ImageSize readImageSize(const std::string& path, const std::string& origin) {
    const LibraryChatterMuted muted;
    const std::unique_ptr<OIIO::ImageInput> in = openChecked(path, origin, nullptr);
    return ImageSize{in->spec().width, in->spec().height};
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
