#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "orvane/commons/Export.h"
#include "platform/coregraphics/CGColor.h"
#include "platform/coregraphics/CGGeometry.h"

namespace orvane::platform {

class CGDataProvider;

// A decoded bitmap. Immutable and shared; safe to pass between threads. A pixel is a 32-bit word of
// premultiplied alpha, red, green and blue, with alpha in bits 24 to 31. Rows follow each other
// without gaps, the top row first.
class ORVANE_EXPORT CGImage {
public:
    // Decode the whole image. They return null for data that is not in the format, is damaged, or
    // claims more pixels than its bytes can hold or a bitmap may have:
    static std::shared_ptr<const CGImage> createWithPNGDataProvider(const CGDataProvider& provider);
    static std::shared_ptr<const CGImage> createWithJPEGDataProvider(
        const CGDataProvider& provider);
    // Decodes a PNG file. Returns null also if the file cannot be read.
    static std::shared_ptr<const CGImage> createWithPNGFile(const std::string& path);

    // Converts raw pixels of four bytes: red, green, blue and alpha, not premultiplied (bitmap
    // information 3). Pixels beyond the end of the bytes are transparent. Returns null for sizes
    // that are not positive or exceed the limits of a canvas.
    static std::shared_ptr<const CGImage> create(std::ptrdiff_t width, std::ptrdiff_t height,
                                                 std::ptrdiff_t bytesPerRow,
                                                 const CGDataProvider& provider);

    // Takes premultiplied words as described above. Returns null unless there are `width * height`
    // of them and the size is within the limits of a canvas.
    static std::shared_ptr<const CGImage> createWithPixels(int width, int height,
                                                           std::vector<std::uint32_t> pixels);

    // Refers to `width * height` words as described above, all of them with full alpha, without
    // copying them: for a picture that is shown for a moment, such as one of a video. Nothing may
    // change the words while the image, or anything else that holds them, exists. Returns null for
    // null, and for a size that createWithPixels refuses.
    static std::shared_ptr<const CGImage> createTransient(
        int width, int height, std::shared_ptr<const std::uint32_t[]> pixels);

    // The size of the picture, in pixels of its file. A JPEG of more pixels than a bitmap may have
    // is decoded at a half, a quarter or an eighth of its resolution, and keeps its size.
    const CGSize& size() const { return size_; }

    // The number of stored pixels:
    int width() const { return width_; }
    int height() const { return height_; }
    // `width * height` words as described above, borrowed from the image.
    std::span<const std::uint32_t> pixels() const {
        return {pixels_.get(),
                static_cast<std::size_t>(width_) * static_cast<std::size_t>(height_)};
    }

    // Whether every pixel has full alpha.
    bool isOpaque() const { return isOpaque_; }

    // Whether createTransient has made it. A reduction to not less than a half is then interpolated
    // between four pixels, which is several times as fast as the average of all.
    bool isTransient() const { return isTransient_; }

    // Returns a copy in which every pixel has this color, with the opacity of the picture.
    std::shared_ptr<const CGImage> createTinted(const CGColor& color) const;

    // Returns false when the file cannot be written.
    bool writePNG(const std::string& filename) const;

private:
    CGImage(int width, int height, std::vector<std::uint32_t> pixels);
    CGImage(int width, int height, std::shared_ptr<const std::uint32_t[]> pixels);
    static std::shared_ptr<const CGImage> createReduced(int width, int height,
                                                        std::vector<std::uint32_t> pixels,
                                                        const CGSize& size);

    int width_;
    int height_;
    CGSize size_;
    bool isOpaque_;
    bool isTransient_ = false;
    std::shared_ptr<const std::uint32_t[]> pixels_;
};

}  // namespace orvane::platform
