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

// Wraps premultiplied ARGB words in a Pixman image. The caller keeps the pixels; rows are `stride`
// words apart. Returns null when memory is exhausted. Pixman takes mutable pixels but only reads
// those of a source.
inline PixmanImage wrapPixels(const std::uint32_t* pixels, int width, int height,
                              std::ptrdiff_t stride) {
    return PixmanImage(pixman_image_create_bits_no_clear(
        PIXMAN_a8r8g8b8, width, height, const_cast<std::uint32_t*>(pixels),
        static_cast<int>(stride * static_cast<std::ptrdiff_t>(sizeof *pixels))));
}

}  // namespace orvane::platform
