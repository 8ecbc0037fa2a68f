#pragma once

#include <pixman.h>

#include <cstddef>
#include <cstdint>
#include <memory>

namespace orvane::platform {

struct PixmanRelease {
    void operator()(pixman_image_t* image) const { pixman_image_unref(image); }
};
using PixmanImage = std::unique_ptr<pixman_image_t, PixmanRelease>;

// An image of premultiplied ARGB words that stay the caller's, rows `stride` words apart; null when
// there is no memory for it. The library takes pixels to write to: of a source they are only read.
inline PixmanImage wrapPixels(const std::uint32_t* pixels, int width, int height,
                              std::ptrdiff_t stride) {
    return PixmanImage(pixman_image_create_bits_no_clear(
        PIXMAN_a8r8g8b8, width, height, const_cast<std::uint32_t*>(pixels),
        static_cast<int>(stride * static_cast<std::ptrdiff_t>(sizeof *pixels))));
}

}  // namespace orvane::platform
