#include "host/files/PngFiles.h"

#include "host/files/ChannelLayout.h"
#include "host/files/SaveRequest.h"

#include <png.h>

#include <cerrno>
#include <csetjmp>
#include <cstdio>
#include <cstring>
#include <new>

namespace host {

namespace {

constexpr std::size_t kSignatureBytes = 8;

// libpng reports errors by longjmp. Everything between a setjmp and libpng's calls is plain
// data, so the jump skips no destructor; the reason is kept here and thrown afterwards.
struct PngError {
    char reason[256] = "";
};

void recordError(png_structp png, png_const_charp message) {
    auto* error = static_cast<PngError*>(png_get_error_ptr(png));
    std::snprintf(error->reason, sizeof error->reason, "%s", message);
    std::longjmp(png_jmpbuf(png), 1);
}

void ignoreWarning(png_structp, png_const_charp) {}

void readFromFile(png_structp png, png_bytep data, png_size_t length) {
    auto* file = static_cast<std::FILE*>(png_get_io_ptr(png));
    if (std::fread(data, 1, length, file) != length) png_error(png, "the file ends early (unexpected end of file)");
}

std::string cannotRead(const std::string& path) { return "cannot read image '" + path + "': "; }

// One PNG opened for reading, its transformations set as OpenImageIO sets them: palettes and
// grey below 8 bits expanded, a transparency chunk turned into alpha, interlacing undone.
class PngReader {
public:
    explicit PngReader(const std::string& path) : path_(path) {
        file_ = std::fopen(path.c_str(), "rb");
        if (!file_) throw ImageIOError(cannotRead(path) + std::strerror(errno));
        png_ = png_create_read_struct(PNG_LIBPNG_VER_STRING, &error_, recordError, ignoreWarning);
        info_ = png_ ? png_create_info_struct(png_) : nullptr;
        if (!info_) {
            close();
            throw ImageIOError(cannotRead(path) + "out of memory");
        }
        png_set_read_fn(png_, file_, readFromFile);
        if (!readInfo()) {
            const std::string reason = error_.reason;
            close();
            throw ImageIOError(cannotRead(path) + reason);
        }
    }
    ~PngReader() { close(); }
    PngReader(const PngReader&) = delete;
    PngReader& operator=(const PngReader&) = delete;

    ImageHeader header() const { return ImageHeader{int(width_), int(height_), channels_, 1}; }

    Image pixels() {
        Image image(static_cast<int>(width_), static_cast<int>(height_));
        std::vector<png_byte> rows;
        std::vector<png_bytep> row_pointers;
        try {
            rows.resize(static_cast<std::size_t>(row_bytes_) * height_);
            row_pointers.resize(height_);
        } catch (const std::bad_alloc&) {
            throw ImageIOError(cannotRead(path_) + "not enough memory for its pixels");
        }
        for (png_uint_32 y = 0; y < height_; ++y) row_pointers[y] = &rows[y * row_bytes_];
        if (!readRows(row_pointers.data())) fail();
        toFloats(rows, image);
        return image;
    }

private:
    bool readInfo() {
        if (setjmp(png_jmpbuf(png_))) return false;
        png_byte signature[kSignatureBytes];
        if (std::fread(signature, 1, kSignatureBytes, file_) != kSignatureBytes ||
            png_sig_cmp(signature, 0, kSignatureBytes) != 0)
            png_error(png_, "not a PNG file");
        png_set_sig_bytes(png_, kSignatureBytes);
        png_read_info(png_, info_);
        const int colour = png_get_color_type(png_, info_);
        if (colour == PNG_COLOR_TYPE_PALETTE) png_set_palette_to_rgb(png_);
        if (colour == PNG_COLOR_TYPE_GRAY && png_get_bit_depth(png_, info_) < 8) png_set_expand_gray_1_2_4_to_8(png_);
        if (png_get_valid(png_, info_, PNG_INFO_tRNS)) png_set_tRNS_to_alpha(png_);
        png_set_interlace_handling(png_);
        png_read_update_info(png_, info_);
        width_ = png_get_image_width(png_, info_);
        height_ = png_get_image_height(png_, info_);
        channels_ = png_get_channels(png_, info_);
        bits_ = png_get_bit_depth(png_, info_);
        row_bytes_ = png_get_rowbytes(png_, info_);
        return true;
    }

    bool readRows(png_bytepp rows) {
        if (setjmp(png_jmpbuf(png_))) return false;
        png_read_image(png_, rows);
        png_read_end(png_, nullptr);
        return true;
    }

    // Channel values / 255 or / 65535 as OpenImageIO scales them (a float multiply by the
    // reciprocal), then grey, grey + alpha, RGB or RGBA onto RGBA.
    void toFloats(const std::vector<png_byte>& rows, Image& image) const {
        const int alpha = channels_ == 2 ? 1 : (channels_ == 4 ? 3 : -1);
        const float scale = bits_ == 16 ? 1.0f / 65535.0f : 1.0f / 255.0f;
        const std::size_t bytes_per_channel = bits_ == 16 ? 2 : 1;
        float channels[4] = {0, 0, 0, 0};
        for (png_uint_32 y = 0; y < height_; ++y) {
            const png_byte* in = &rows[y * row_bytes_];
            for (png_uint_32 x = 0; x < width_; ++x) {
                for (int c = 0; c < channels_; ++c, in += bytes_per_channel)
                    channels[c] = float(bytes_per_channel == 2 ? (in[0] << 8) | in[1] : in[0]) * scale;
                image.at(int(x), int(y)) = toRGBA(channels, channels_, alpha);
            }
        }
    }

    [[noreturn]] void fail() { throw ImageIOError(cannotRead(path_) + error_.reason); }

    void close() {
        if (png_) png_destroy_read_struct(&png_, info_ ? &info_ : nullptr, nullptr);
        if (file_) std::fclose(file_);
        png_ = nullptr;
        info_ = nullptr;
        file_ = nullptr;
    }

    std::string path_;
    std::FILE* file_ = nullptr;
    png_structp png_ = nullptr;
    png_infop info_ = nullptr;
    PngError error_;
    png_uint_32 width_ = 0, height_ = 0;
    int channels_ = 0, bits_ = 8;
    png_size_t row_bytes_ = 0;
};

// The encoded bytes, appended by libpng's write callback; a failed allocation becomes a libpng
// error, so no exception crosses libpng.
struct PngOutput {
    std::vector<unsigned char> bytes;
};

void appendToOutput(png_structp png, png_bytep data, png_size_t length) {
    auto* out = static_cast<PngOutput*>(png_get_io_ptr(png));
    try {
        out->bytes.insert(out->bytes.end(), data, data + length);
    } catch (const std::bad_alloc&) {
        png_error(png, "out of memory");
    }
}

void flushNothing(png_structp) {}

bool writeRows(png_structp png, png_infop info, const QuantisedImage& image, const SaveOptions& options,
               png_bytepp rows) {
    if (setjmp(png_jmpbuf(png))) return false;
    png_set_IHDR(png, info, png_uint_32(image.width), png_uint_32(image.height), image.bits(),
                 PNG_COLOR_TYPE_RGB_ALPHA, PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
    png_set_compression_level(png, options.png_level);
    if (options.png_up_filter) png_set_filter(png, PNG_FILTER_TYPE_BASE, PNG_FILTER_UP);
    png_write_info(png, info);
    if (image.bits() == 16) png_set_swap(png);  // PNG holds 16-bit samples big-endian
    png_write_image(png, rows);
    png_write_end(png, nullptr);
    return true;
}

}  // namespace

bool isPngFile(const std::string& path) {
    std::FILE* file = std::fopen(path.c_str(), "rb");
    if (!file) return false;
    png_byte signature[kSignatureBytes];
    const bool png = std::fread(signature, 1, kSignatureBytes, file) == kSignatureBytes &&
                     png_sig_cmp(signature, 0, kSignatureBytes) == 0;
    std::fclose(file);
    return png;
}

ImageHeader readPngHeader(const std::string& path) { return PngReader(path).header(); }

Image readPngPixels(const std::string& path) { return PngReader(path).pixels(); }

std::vector<unsigned char> encodePng(const QuantisedImage& image, const std::string& path, const SaveOptions& options) {
    const std::string cannot = "cannot write image '" + path + "': ";
    if (checkedSaveRequest(image.width, image.height, path, options) || options.png_bits != image.bits())
        throw ImageIOError(cannot + "its " + std::to_string(image.bits()) + "-bit channels are for a PNG of that depth");
    const std::size_t row_bytes = std::size_t(image.width) * 4 * std::size_t(image.bits() / 8);
    const auto* pixels = image.bits() == 16 ? reinterpret_cast<const unsigned char*>(image.rgba16.data())
                                            : image.rgba8.data();
    std::vector<png_bytep> rows(static_cast<std::size_t>(image.height));
    for (std::size_t y = 0; y < rows.size(); ++y) rows[y] = const_cast<png_bytep>(pixels + y * row_bytes);

    PngError error;
    PngOutput output;
    png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, &error, recordError, ignoreWarning);
    png_infop info = png ? png_create_info_struct(png) : nullptr;
    if (!info) {
        png_destroy_write_struct(&png, nullptr);
        throw ImageIOError(cannot + "out of memory");
    }
    png_set_write_fn(png, &output, appendToOutput, flushNothing);
    const bool written = writeRows(png, info, image, options, rows.data());
    png_destroy_write_struct(&png, &info);
    if (!written) throw ImageIOError(cannot + error.reason);
    return std::move(output.bytes);
}

}  // namespace host
