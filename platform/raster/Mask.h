#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "platform/raster/Blend.h"
#include "platform/raster/PixelRect.h"

namespace orvane::platform {

// How much of each pixel a shape covers, in an area of at most 256 by 256 pixels. Stored as the
// spans of each row that are covered at all: most of a shape is either empty or full, and an
// outline's ring is nearly all empty.
class Mask {
public:
    static constexpr int kSide = 256;

    Mask() = default;
    // From one byte a pixel, rows `stride` bytes apart; width and height up to kSide.
    Mask(const std::uint8_t* coverage, int width, int height, std::ptrdiff_t stride);

    // Lays `color` over the pixels, this mask's corner standing at left, top; within `clip`, which
    // lies inside the mask and the bitmap.
    void paint(const Bitmap& bitmap, int left, int top, const PixelRect& clip,
               std::uint32_t color) const;

    // Multiplies the bytes of `coverage` by this mask. The bytes are those of `area`, rows kSide
    // apart; area lies inside the mask, whose corner stands at left, top.
    void multiply(std::uint8_t* coverage, int left, int top, const PixelRect& area) const;

    // Sets the bytes of `area` that lie outside `inside` to 0. Rows are kSide bytes apart.
    static void clearOutside(std::uint8_t* coverage, const PixelRect& area,
                             const PixelRect& inside);

    // Memory beyond the object itself.
    std::size_t byteCount() const;

private:
    // Pixels `first` to `last` of a row, either all full or each with a byte of coverage.
    struct Span {
        std::uint8_t first;
        std::uint8_t last;
        bool full;
    };
    // Where a row's spans and bytes begin; those of the next row end them.
    struct Row {
        std::uint16_t span;
        std::uint16_t byte;
    };

    template <typename Visit>
    void forEachSpan(int row, int left, int right, Visit visit) const;

    std::vector<Row> rows_;
    std::vector<Span> spans_;
    std::vector<std::uint8_t> bytes_;
};

}  // namespace orvane::platform
