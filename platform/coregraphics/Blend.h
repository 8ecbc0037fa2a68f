#pragma once

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

// Every channel of a premultiplied colour times `factor` / 255, rounded to nearest.
inline std::uint32_t scaled(std::uint32_t color, std::uint32_t factor) {
    // Two channels at a time, each with 8 bits of room above it; x / 255 is (x + x / 256) / 256
    // after the half has been added.
    std::uint32_t low = (color & 0x00ff00ffu) * factor + 0x00800080u;
    std::uint32_t high = ((color >> 8) & 0x00ff00ffu) * factor + 0x00800080u;
    low = ((low + ((low >> 8) & 0x00ff00ffu)) >> 8) & 0x00ff00ffu;
    high = (high + ((high >> 8) & 0x00ff00ffu)) & 0xff00ff00u;
    return low | high;
}

// The premultiplied colour `source` laid over `below`.
inline std::uint32_t over(std::uint32_t source, std::uint32_t below) {
    return source + scaled(below, 255 - (source >> 24));
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
void blendSolid(std::uint32_t* row, int count, std::uint32_t color);
void blendCoverage(std::uint32_t* row, const std::uint8_t* coverage, int count,
                   std::uint32_t color);
void blendColors(std::uint32_t* row, const std::uint32_t* colors, const std::uint8_t* coverage,
                 int count);

}  // namespace orvane::platform
