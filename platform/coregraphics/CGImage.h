#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "orvane/commons/Export.h"

namespace orvane::platform {

class CGDataProvider;

// A decoded bitmap. Immutable, shared, safe to hand between threads. Its pixels are 32-bit words of
// premultiplied alpha, red, green and blue, alpha in bits 24 to 31, rows packed from the top.
class ORVANE_EXPORT CGImage {
public:
    // Decodes now. Null for what is not of the format, is damaged, or announces more pixels than
    // its bytes could hold.
    static std::shared_ptr<const CGImage> createWithPNGDataProvider(const CGDataProvider& provider);
    static std::shared_ptr<const CGImage> createWithJPEGDataProvider(
        const CGDataProvider& provider);

    // Raw pixels of four bytes red, green, blue, alpha, the alpha not premultiplied, which is the
    // bitmap information 3. Where the bytes end early the rest is transparent. Null for sizes that
    // are not positive or beyond any canvas.
    static std::shared_ptr<const CGImage> create(std::ptrdiff_t width, std::ptrdiff_t height,
                                                 std::ptrdiff_t bytesPerRow,
                                                 const CGDataProvider& provider);

    // From premultiplied words as described above, `width * height` of them.
    static std::shared_ptr<const CGImage> createWithPixels(int width, int height,
                                                           std::vector<std::uint32_t> pixels);

    int width() const { return width_; }
    int height() const { return height_; }
    std::span<const std::uint32_t> pixels() const { return pixels_; }

    // Whether no pixel lets anything shine through.
    bool isOpaque() const { return isOpaque_; }

    // False when the file cannot be written.
    bool writePNG(const std::string& filename) const;

private:
    CGImage(int width, int height, std::vector<std::uint32_t> pixels);

    int width_;
    int height_;
    bool isOpaque_;
    std::vector<std::uint32_t> pixels_;
};

}  // namespace orvane::platform
