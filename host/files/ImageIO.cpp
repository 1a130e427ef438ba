#include "host/files/ImageIOModule.h"

#include "host/files/ChannelLayout.h"
#include "host/files/SaveRequest.h"
#include "host/pixels/RowBands.h"

#include <OpenImageIO/filesystem.h>
#include <OpenImageIO/imageio.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <fcntl.h>
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

void unpremultiply(Image& image) {
    for (RGBA& p : image.pixels()) {
        if (p.a > 0.0f) {
            p.r /= p.a;
            p.g /= p.a;
            p.b /= p.a;
        }
    }
}

// Rows converted and handed to the writer at a time: the strip stays in cache, and the frame
// never needs a second full-size copy (whose page faults alone cost as much as converting).
constexpr int kStripRows = 64;

// Converts the picture strip by strip with convert(pixel, four float channels out), each strip
// in bands of rows on `threads` threads, and writes it. row(y) is the first pixel of row y.
// False when the writer fails.
template <class Row, class Convert>
bool writeInStrips(OIIO::ImageOutput& out, int width, int height, Row row, int threads, Convert convert) {
    const std::size_t columns = static_cast<std::size_t>(width);
    std::vector<float> strip(columns * kStripRows * 4);
    for (int y0 = 0; y0 < height; y0 += kStripRows) {
        const int y1 = std::min(y0 + kStripRows, height);
        forEachRowBand(y1 - y0, threads, [&](int first, int end) {
            for (int r = first; r < end; ++r) {
                const auto* pixels = row(y0 + r);
                float* channels = &strip[static_cast<std::size_t>(r) * columns * 4];
                for (std::size_t x = 0; x < columns; ++x) convert(pixels[x], &channels[x * 4]);
            }
        });
        if (!out.write_scanlines(y0, y1, 0, OIIO::TypeDesc::FLOAT, strip.data())) return false;
    }
    return true;
}

// EXR holds premultiplied colour.
void premultiplied(const PF_PixelFloat& p, float* c) {
    c[0] = p.red * p.alpha, c[1] = p.green * p.alpha, c[2] = p.blue * p.alpha, c[3] = p.alpha;
}

bool writePremultiplied(OIIO::ImageOutput& out, const Image& image, int threads) {
    const RGBA* pixels = image.pixels().data();
    const std::size_t width = static_cast<std::size_t>(image.width());
    return writeInStrips(out, image.width(), image.height(), [=](int y) { return pixels + y * width; }, threads,
                         [](const RGBA& p, float* c) { premultiplied(PF_PixelFloat{p.a, p.r, p.g, p.b}, c); });
}

bool writePremultiplied(OIIO::ImageOutput& out, const PF_EffectWorld& world, int threads) {
    return writeInStrips(out, world.width, world.height,
                                [&world](int y) { return worldRow<PF_PixelFloat>(world, y); }, threads,
                                premultiplied);
}

// OpenImageIO's messages may run over several lines (one per library complaint); ours are one.
std::string oneLine(const std::string& text) {
    std::string joined, line;
    for (std::istringstream lines(text); std::getline(lines, line);)
        if (!line.empty()) joined += (joined.empty() ? "" : "; ") + line;
    return joined.empty() ? "not an image OpenImageIO can read" : joined;
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

std::string cannotRead(const std::string& path) { return "cannot read image '" + path + "': "; }

std::unique_ptr<OIIO::ImageInput> open(const std::string& path, const OIIO::ImageSpec* config) {
    auto in = OIIO::ImageInput::open(path, config);
    if (!in) throw ImageIOError(cannotRead(path) + oneLine(OIIO::geterror()));
    return in;
}

}  // namespace

Image readImagePixels(const std::string& path) {
    // Ask readers to leave unassociated (straight) alpha as it is in the file.
    OIIO::ImageSpec config;
    config.attribute("oiio:UnassociatedAlpha", 1);
    const LibraryChatterMuted muted;
    const std::unique_ptr<OIIO::ImageInput> in = open(path, &config);
    const OIIO::ImageSpec& spec = in->spec();
    const int count = spec.nchannels;
    std::vector<float> data;
    Image image;
    try {
        data.resize(static_cast<std::size_t>(spec.width) * spec.height * count);
        image = Image(spec.width, spec.height);
    } catch (const std::bad_alloc&) {
        throw ImageIOError(cannotRead(path) + "not enough memory for its " + std::to_string(spec.width) + " x " +
                           std::to_string(spec.height) + " pixels");
    }
    bool read = false;
    {
        const LibraryLeaksIgnored library_leaks;
        read = in->read_image(0, 0, 0, count, OIIO::TypeDesc::FLOAT, data.data());
    }
    if (!read) throw ImageIOError(cannotRead(path) + oneLine(in->geterror()));

    for (std::size_t i = 0; i < image.pixels().size(); ++i)
        image.pixels()[i] = toRGBA(&data[i * count], count, spec.alpha_channel);
    const bool has_alpha = spec.alpha_channel >= 0 || count == 2;
    if (has_alpha && spec.get_int_attribute("oiio:UnassociatedAlpha", 0) == 0) unpremultiply(image);
    return image;
}

ImageHeader readImageHeader(const std::string& path) {
    const LibraryChatterMuted muted;
    const OIIO::ImageSpec spec = open(path, nullptr)->spec();
    return ImageHeader{spec.width, spec.height, spec.nchannels, spec.depth};
}

namespace {

// Headers, offset tables and the worst case of compression on top of the raw pixels.
constexpr std::size_t kHeaderRoom = std::size_t(1) << 20;

// Frames are encoded while the next one renders on every core, so OpenEXR compresses in the
// calling thread: a pool of its own would only add hand-offs between threads.
void compressInCallingThread() {
    static std::once_flag once;
    std::call_once(once, [] { OIIO::attribute("exr_threads", -1); });
}

// The OpenEXR file's bytes, encoded in memory so that the host writes them in one checked,
// all-or-nothing step. write(out) hands the writer its pixels. (PNG files are written through
// libpng by the host itself.)
template <class Write>
std::vector<unsigned char> encodeExrInMemory(int width, int height, const std::string& path,
                                             const SaveOptions& options, Write write) {
    if (!checkedSaveRequest(width, height, path, options))
        throw ImageIOError("cannot write image '" + path + "': only OpenEXR files are written here");
    OIIO::ImageSpec spec(width, height, 4, OIIO::TypeDesc::FLOAT);
    spec.alpha_channel = 3;
    spec.attribute("compression", options.exr_compression);
    compressInCallingThread();

    // Room for the uncompressed picture: the writer appends chunk by chunk, and a growing
    // vector would copy a 1920 x 1080 float frame several times over.
    try {
        std::vector<unsigned char> bytes;
        bytes.reserve(static_cast<std::size_t>(width) * height * 4 * sizeof(float) + kHeaderRoom);
        OIIO::Filesystem::IOVecOutput memory(bytes);
        auto out = OIIO::ImageOutput::create(path, &memory);
        if (!out) throw ImageIOError("cannot write image '" + path + "': " + oneLine(OIIO::geterror()));
        bool ok = out->open(path, spec);
        if (ok) {
            ok = write(*out);
            ok = out->close() && ok;
        }
        if (!ok) throw ImageIOError("cannot write image '" + path + "': " + oneLine(out->geterror()));
        return bytes;
    } catch (const std::bad_alloc&) {
        throw outOfMemoryWhileEncoding(width, height, path);
    }
}

}  // namespace

std::vector<unsigned char> encodeExr(const Image& image, const std::string& path, const SaveOptions& options) {
    return encodeExrInMemory(image.width(), image.height(), path, options, [&](OIIO::ImageOutput& out) {
        return writePremultiplied(out, image, options.threads);
    });
}

std::vector<unsigned char> encodeExrWorld(const FloatWorldFrame& frame, const std::string& path,
                                          const SaveOptions& options) {
    const PF_EffectWorld& world = *frame.world;
    return encodeExrInMemory(world.width, world.height, path, options, [&](OIIO::ImageOutput& out) {
        return writePremultiplied(out, world, options.threads);
    });
}

}  // namespace host
