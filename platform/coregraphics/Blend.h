#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>

#include "platform/coregraphics/CGColor.h"
#include "platform/coregraphics/PixelRect.h"

namespace orvane::platform {

// The pixels that a canvas paints on: premultiplied ARGB words, rows `stride` words apart.
struct Bitmap {
    std::uint32_t* pixels = nullptr;
    int width = 0;
    int height = 0;
    std::ptrdiff_t stride = 0;

    std::uint32_t* at(int x, int y) const { return pixels + y * stride + x; }
    PixelRect bounds() const { return {0, 0, width, height}; }
};

// A colour with its channels 16 bits apart, so that all four are worked on at once.
namespace wide {

inline constexpr std::uint64_t kChannels = 0x00ff00ff00ff00ffu;

inline std::uint64_t spread(std::uint32_t color) {
    return (color | std::uint64_t{color} << 24) & kChannels;
}

inline std::uint32_t packed(std::uint64_t color) {
    return static_cast<std::uint32_t>(color | color >> 24);
}

inline std::uint64_t scaled(std::uint64_t color, std::uint64_t factor) {
    // x / 255 is (x + x / 256) / 256 after the half has been added.
    const std::uint64_t x = color * factor + 0x0080008000800080u;
    return ((x + ((x >> 8) & kChannels)) >> 8) & kChannels;
}

inline std::uint64_t over(std::uint64_t source, std::uint64_t below) {
    return source + scaled(below, 255 - (source >> 48));
}

}  // namespace wide

// Every channel of a premultiplied colour times `factor` / 255, rounded to nearest.
inline std::uint32_t scaled(std::uint32_t color, std::uint32_t factor) {
    return wide::packed(wide::scaled(wide::spread(color), factor));
}

// The premultiplied colour `source` laid over `below`.
inline std::uint32_t over(std::uint32_t source, std::uint32_t below) {
    return wide::packed(wide::over(wide::spread(source), wide::spread(below)));
}

// A colour given in straight bytes.
inline std::uint32_t premultiplied(std::uint32_t r, std::uint32_t g, std::uint32_t b,
                                   std::uint32_t a) {
    return (a << 24) | scaled(r << 16 | g << 8 | b, a);
}

// Out of range components are cut, those that are no numbers count as 0.
std::uint32_t premultiplied(const CGColor& color);

// Lay colours over a row of pixels: one colour alike everywhere; one colour by the coverage (0 to
// 255) of each pixel; a colour and a coverage for each pixel.
inline void blendSolid(std::uint32_t* row, int count, std::uint32_t color) {
    if (color >> 24 == 255) {
        std::fill_n(row, count, color);
        return;
    }
    const std::uint64_t source = wide::spread(color);
    for (int i = 0; i < count; ++i) {
        row[i] = wide::packed(wide::over(source, wide::spread(row[i])));
    }
}
void blendCoverage(std::uint32_t* row, const std::uint8_t* coverage, int count,
                   std::uint32_t color);
void blendColors(std::uint32_t* row, const std::uint32_t* colors, const std::uint8_t* coverage,
                 int count);

// Lays a picture over the part `area` of the bitmap, pixel for pixel. `colors` is the area's first
// pixel in the picture, whose rows are `stride` words apart.
void blendPicture(const Bitmap& bitmap, const PixelRect& area, const std::uint32_t* colors,
                  std::ptrdiff_t stride);

}  // namespace orvane::platform
