#include <png.h>

#include <algorithm>
#include <bit>
#include <csetjmp>
#include <cstdint>
#include <new>
#include <span>
#include <utility>
#include <vector>

#include "platform/coregraphics/CGDataProvider.h"
#include "platform/coregraphics/CGImage.h"
#include "platform/coregraphics/imageLimits.h"
#include "platform/coregraphics/premultiplied.h"

namespace orvane::platform {

namespace {

// Straight ARGB words in the byte order of the machine.
constexpr bool kIsLittleEndian = std::endian::native == std::endian::little;

// Deflate yields at most 1032 bytes for one, and a pixel takes at least one bit.
constexpr std::int64_t kPixelsPerByte = 1032 * 8;

// One decompression with libpng's progressive reader. Unlike its other readers, that one stops at
// the last row: a file may contain gigabytes of zeros behind it. The reader owns everything that
// decode() allocates, because libpng leaves functions by a jump.
class PngReader {
public:
    PngReader()
        : png_(png_create_read_struct(
              PNG_LIBPNG_VER_STRING, nullptr, [](png_structp png, png_const_charp) { fail(png); },
              [](png_structp, png_const_charp) {})),
          info_(png_ != nullptr ? png_create_info_struct(png_) : nullptr) {}
    ~PngReader() { png_destroy_read_struct(&png_, &info_, nullptr); }
    PngReader(const PngReader&) = delete;
    PngReader& operator=(const PngReader&) = delete;

    // Returns false unless the whole file was decoded.
    bool decode(std::span<const unsigned char> bytes) {
        if (info_ == nullptr || setjmp(png_jmpbuf(png_)) != 0) {
            return false;
        }
        length_ = bytes.size();
        // Only what the colors depend on is read; text would be expanded before the pixels.
        static constexpr png_byte kRead[] = "gAMA\0cHRM\0sRGB\0iCCP\0tRNS";
        constexpr int kReadCount = 5;
        png_set_keep_unknown_chunks(png_, PNG_HANDLE_CHUNK_NEVER, nullptr, -1);
        png_set_keep_unknown_chunks(png_, PNG_HANDLE_CHUNK_AS_DEFAULT, kRead, kReadCount);
        png_set_progressive_read_fn(
            png_, this, [](png_structp png, png_infop) { of(png).start(); },
            [](png_structp png, png_bytep row, png_uint_32 y, int) {
                PngReader& reader = of(png);
                auto* const pixels = reader.pixels_.data() + std::size_t{y} * reader.width_;
                png_progressive_combine_row(png, reinterpret_cast<png_bytep>(pixels), row);
            },
            [](png_structp png, png_infop) { of(png).isAtEnd_ = true; });
        // libpng does not write to its input, but declares it as if it did.
        png_process_data(png_, info_, const_cast<png_bytep>(bytes.data()), bytes.size());
        return isAtEnd_ && hasAllRows();
    }

    int width() const { return static_cast<int>(width_); }
    int height() const { return static_cast<int>(height_); }
    std::vector<std::uint32_t> takePixels() { return std::move(pixels_); }

private:
    static PngReader& of(png_structp png) {
        return *static_cast<PngReader*>(png_get_progressive_ptr(png));
    }
    [[noreturn]] static void fail(png_structp png) { png_longjmp(png, 1); }

    // Called after the header and before the first row.
    void start() {
        width_ = png_get_image_width(png_, info_);
        height_ = png_get_image_height(png_, info_);
        if (!isSensibleImageSize(width_, height_)) {
            reportTooLarge(width_, height_);
            fail(png_);
        }
        if (!canHold(length_, std::int64_t{width_} * height_, kPixelsPerByte)) {
            fail(png_);
        }
        png_set_expand(png_);
        png_set_scale_16(png_);
        png_set_gray_to_rgb(png_);
        // Colors are sRGB, and so are those of a file that does not say what they are.
        png_set_alpha_mode(png_, PNG_ALPHA_PNG, PNG_DEFAULT_sRGB);
        png_set_add_alpha(png_, 255, kIsLittleEndian ? PNG_FILLER_AFTER : PNG_FILLER_BEFORE);
        if (kIsLittleEndian) {
            png_set_bgr(png_);
        } else {
            png_set_swap_alpha(png_);
        }
        isInterlaced_ = png_set_interlace_handling(png_) > 1;
        png_read_update_info(png_, info_);
        if (png_get_rowbytes(png_, info_) != std::size_t{width_} * 4) {
            fail(png_);
        }
        if (!allocate()) {
            fail(png_);
        }
    }

    // No exception may pass through libpng.
    bool allocate() {
        try {
            pixels_.resize(std::size_t{width_} * height_);
            return true;
        } catch (const std::bad_alloc&) {
            return false;
        }
    }

    bool hasAllRows() const {
        constexpr int kPasses = 7;
        return isInterlaced_ ? png_get_current_pass_number(png_) == kPasses
                             : png_get_current_row_number(png_) == height_;
    }

    png_structp png_;
    png_infop info_;
    std::size_t length_ = 0;
    png_uint_32 width_ = 0;
    png_uint_32 height_ = 0;
    bool isInterlaced_ = false;
    bool isAtEnd_ = false;
    std::vector<std::uint32_t> pixels_;
};

// Owns libpng's structure for writing.
class PngImage {
public:
    PngImage() { image_.version = PNG_IMAGE_VERSION; }
    ~PngImage() { png_image_free(&image_); }
    PngImage(const PngImage&) = delete;
    PngImage& operator=(const PngImage&) = delete;

    png_image* operator->() { return &image_; }
    png_image* get() { return &image_; }

private:
    png_image image_{};
};

}  // namespace

std::shared_ptr<const CGImage> CGImage::createWithPNGFile(const std::string& path) {
    const auto bytes = CGDataProvider::createWithFilename(path);
    return bytes ? createWithPNGDataProvider(*bytes) : nullptr;
}

std::shared_ptr<const CGImage> CGImage::createWithPNGDataProvider(const CGDataProvider& provider) {
    PngReader reader;
    if (!reader.decode(provider.bytes())) {
        return nullptr;
    }
    std::vector<std::uint32_t> pixels = reader.takePixels();
    for (std::uint32_t& p : pixels) {
        p = premultiplied(p >> 16 & 255, p >> 8 & 255, p & 255, p >> 24);
    }
    return createWithPixels(reader.width(), reader.height(), std::move(pixels));
}

bool CGImage::writePNG(const std::string& filename) const {
    std::vector<std::uint32_t> straight(pixels().size());
    std::ranges::transform(pixels(), straight.begin(), [](std::uint32_t p) {
        const std::uint32_t alpha = p >> 24;
        if (alpha == 0 || alpha == 255) {
            return p;
        }
        const auto channel = [&](int shift) {
            const std::uint32_t value = p >> shift & 255;
            return std::min<std::uint32_t>(255, (value * 255 + alpha / 2) / alpha) << shift;
        };
        return alpha << 24 | channel(16) | channel(8) | channel(0);
    });
    PngImage png;
    png->width = static_cast<png_uint_32>(width_);
    png->height = static_cast<png_uint_32>(height_);
    png->format = kIsLittleEndian ? PNG_FORMAT_BGRA : PNG_FORMAT_ARGB;
    return png_image_write_to_file(png.get(), filename.c_str(), 0, straight.data(), 0, nullptr) !=
           0;
}

}  // namespace orvane::platform
