#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>

#include "platform/coregraphics/CGColor.h"
#include "platform/coregraphics/premultiplied.h"
#include "platform/raster/PixelRect.h"

namespace orvane::platform {

// The pixels that a canvas paints on: premultiplied ARGB words, with rows `stride` words apart.
struct Bitmap {
    std::uint32_t* pixels = nullptr;
    int width = 0;
    int height = 0;
    std::ptrdiff_t stride = 0;

    std::uint32_t* at(int x, int y) const { return pixels + y * stride + x; }
    PixelRect bounds() const { return {0, 0, width, height}; }
};

// Components are limited to 0 to 1; NaN counts as 0.
std::uint32_t premultiplied(const CGColor& color);

// Composite colors over a row of pixels: blendSolid one color everywhere; blendCoverage one color
// by the coverage (0 to 255) of each pixel; blendColors a color and a coverage for each pixel.
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

// Composites an image over `area` of the bitmap, pixel by pixel. `colors` is the image's pixel at
// the corner of the area; the image's rows are `stride` words apart.
void blendPicture(const Bitmap& bitmap, const PixelRect& area, const std::uint32_t* colors,
                  std::ptrdiff_t stride);

}  // namespace orvane::platform
