#include "platform/raster/BoxBlur.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <numbers>

namespace orvane::platform {

namespace {

// One box filter: the average of the pixels from `before` pixels before to `after` behind.
struct Box {
    int before;
    int after;

    // The reciprocal of the size with 24 binary places.
    std::uint32_t factor() const {
        const auto size = static_cast<std::uint32_t>(before + after + 1);
        return ((1U << 24) + size / 2) / size;
    }
};

std::uint8_t average(std::uint32_t sum, std::uint32_t factor) {
    const std::uint64_t exact = std::uint64_t{sum} * factor + (1U << 23);
    return static_cast<std::uint8_t>(std::min<std::uint64_t>(exact >> 24, 255));
}

// Filters lines of `count` groups of `width` bytes: with a width of one pixel these are the pixels
// of a row, with the width of a row the rows of an image.
void filter(const std::uint8_t* from, std::uint8_t* to, int count, std::size_t width, Box box,
            std::vector<std::uint32_t>& sums) {
    const std::uint32_t factor = box.factor();
    sums.assign(width, 0);
    const auto add = [&](int at) {
        const std::uint8_t* const bytes = from + static_cast<std::size_t>(at) * width;
        for (std::size_t i = 0; i < width; ++i) {
            sums[i] += bytes[i];
        }
    };
    for (int at = 0; at < std::min(box.after, count); ++at) {
        add(at);
    }
    for (int at = 0; at < count; ++at) {
        if (at + box.after < count) {
            add(at + box.after);
        }
        std::uint8_t* const out = to + static_cast<std::size_t>(at) * width;
        for (std::size_t i = 0; i < width; ++i) {
            out[i] = average(sums[i], factor);
        }
        if (at >= box.before) {
            const std::uint8_t* const gone =
                from + static_cast<std::size_t>(at - box.before) * width;
            for (std::size_t i = 0; i < width; ++i) {
                sums[i] -= gone[i];
            }
        }
    }
}

}  // namespace

BoxBlur::BoxBlur(double radius) {
    const double deviation = radius > 0 ? std::min(radius, 1000.0) / 2 : 0;
    size_ = static_cast<int>(deviation * 3 * std::sqrt(2 * std::numbers::pi) / 4 + 0.5);
}

void BoxBlur::apply(std::uint8_t* bytes, int width, int height, int channels) const {
    if (isSharp() || width <= 0 || height <= 0) {
        return;
    }
    // An even box has its middle between two pixels: the first one is to the left of it, the second
    // one to the right, and the third one larger by a pixel.
    const int half = size_ / 2;
    const bool isOdd = size_ % 2 != 0;
    const std::array<Box, 3> boxes{Box{half, isOdd ? half : half - 1},
                                   Box{isOdd ? half : half - 1, half}, Box{half, half}};
    const auto stride = static_cast<std::size_t>(width) * static_cast<std::size_t>(channels);
    std::vector<std::uint32_t> sums;
    std::vector<std::uint8_t> other(stride * static_cast<std::size_t>(height));
    std::uint8_t* from = bytes;
    std::uint8_t* to = other.data();
    for (const Box& box : boxes) {
        for (int y = 0; y < height; ++y) {
            const std::size_t row = static_cast<std::size_t>(y) * stride;
            filter(from + row, to + row, width, static_cast<std::size_t>(channels), box, sums);
        }
        std::swap(from, to);
    }
    for (const Box& box : boxes) {
        filter(from, to, height, stride, box, sums);
        std::swap(from, to);
    }
}

void BoxBlur::apply(std::vector<std::uint8_t>& bytes, int width, int height, int channels) const {
    apply(bytes.data(), width, height, channels);
}

void BoxBlur::apply(std::vector<std::uint32_t>& pixels, int width, int height) const {
    apply(reinterpret_cast<std::uint8_t*>(pixels.data()), width, height, 4);
}

}  // namespace orvane::platform
