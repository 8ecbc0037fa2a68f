#include <png.h>

#include <algorithm>
#include <bit>
#include <cstdint>
#include <iterator>
#include <span>
#include <string_view>
#include <vector>

#include "platform/coregraphics/CGDataProvider.h"
#include "platform/coregraphics/CGImage.h"
#include "platform/coregraphics/imageLimits.h"
#include "platform/coregraphics/premultiplied.h"

namespace orvane::platform {

namespace {

// Straight ARGB words in the byte order of the machine.
constexpr png_uint_32 kWordFormat =
    std::endian::native == std::endian::little ? PNG_FORMAT_BGRA : PNG_FORMAT_ARGB;

// Owns libpng's image structure.
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

// Deflate yields at most 1032 bytes for one, and a pixel takes at least one bit.
constexpr std::int64_t kPixelsPerByte = 1032 * 8;

// A complete file ends with this chunk, including its checksum.
bool hasEnd(std::span<const unsigned char> bytes) {
    static constexpr unsigned char kEnd[] = {0,   0,   0,    0,    'I',  'E',
                                             'N', 'D', 0xae, 0x42, 0x60, 0x82};
    return std::search(bytes.begin(), bytes.end(), std::begin(kEnd), std::end(kEnd)) != bytes.end();
}

std::uint32_t wordAt(std::span<const unsigned char> bytes, std::size_t at) {
    return std::uint32_t{bytes[at]} << 24 | std::uint32_t{bytes[at + 1]} << 16 |
           std::uint32_t{bytes[at + 2]} << 8 | bytes[at + 3];
}

// Copies the file without its text chunks to `copy` and returns the copy, or returns the file
// itself if it has none. libpng expands compressed text before the pixels, in 1000 chunks of 8 MB
// each.
std::span<const unsigned char> withoutText(std::span<const unsigned char> bytes,
                                           std::vector<unsigned char>& copy) {
    constexpr std::size_t kSignature = 8;
    constexpr std::size_t kChunkFrame = 12;  // length, type and checksum
    std::size_t kept = 0;                    // everything before this byte was copied
    for (std::size_t at = kSignature; at + kChunkFrame <= bytes.size();) {
        const std::size_t size = wordAt(bytes, at) + kChunkFrame;
        if (size > bytes.size() - at) {
            break;
        }
        const std::string_view type(reinterpret_cast<const char*>(bytes.data()) + at + 4, 4);
        if (type == "tEXt" || type == "zTXt" || type == "iTXt") {
            copy.insert(copy.end(), bytes.begin() + static_cast<std::ptrdiff_t>(kept),
                        bytes.begin() + static_cast<std::ptrdiff_t>(at));
            kept = at + size;
        }
        at += size;
    }
    if (kept == 0) {
        return bytes;
    }
    copy.insert(copy.end(), bytes.begin() + static_cast<std::ptrdiff_t>(kept), bytes.end());
    return copy;
}

}  // namespace

std::shared_ptr<const CGImage> CGImage::createWithPNGFile(const std::string& path) {
    const auto bytes = CGDataProvider::createWithFilename(path);
    return bytes ? createWithPNGDataProvider(*bytes) : nullptr;
}

std::shared_ptr<const CGImage> CGImage::createWithPNGDataProvider(const CGDataProvider& provider) {
    std::vector<unsigned char> copy;
    const std::span<const unsigned char> bytes = withoutText(provider.bytes(), copy);
    PngImage png;
    if (png_image_begin_read_from_memory(png.get(), bytes.data(), bytes.size()) == 0) {
        return nullptr;
    }
    if (!isSensibleImageSize(png->width, png->height)) {
        reportTooLarge(png->width, png->height);
        return nullptr;
    }
    if (!canHold(bytes.size(), std::int64_t{png->width} * png->height, kPixelsPerByte) ||
        !hasEnd(bytes)) {
        return nullptr;
    }
    png->format = kWordFormat;
    // Otherwise libpng treats 16-bit components as linear light.
    png->flags |= PNG_IMAGE_FLAG_16BIT_sRGB;
    const auto width = static_cast<int>(png->width);
    const auto height = static_cast<int>(png->height);
    std::vector<std::uint32_t> pixels(std::size_t{png->width} * png->height);
    if (png_image_finish_read(png.get(), nullptr, pixels.data(), 0, nullptr) == 0) {
        return nullptr;
    }
    for (std::uint32_t& p : pixels) {
        p = premultiplied(p >> 16 & 255, p >> 8 & 255, p & 255, p >> 24);
    }
    return createWithPixels(width, height, std::move(pixels));
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
    png->format = kWordFormat;
    return png_image_write_to_file(png.get(), filename.c_str(), 0, straight.data(), 0, nullptr) !=
           0;
}

}  // namespace orvane::platform
