#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "platform/raster/Blend.h"
#include "platform/raster/PixelRect.h"

namespace orvane::platform {

// The coverage of each pixel by a shape, in an area of at most 256 by 256 pixels. Only the covered
// spans of each row are stored: most of a shape is either empty or full, and the ring of a stroked
// outline is nearly empty.
class Mask {
public:
    static constexpr int kSide = 256;

    // Covers nothing.
    explicit Mask(int height) : rows_(static_cast<std::size_t>(height) + 1) {}
    // Reads one byte per pixel. Rows are `stride` bytes apart; width and height are at most kSide.
    Mask(const std::uint8_t* coverage, int width, int height, std::ptrdiff_t stride);

    // Composites `color` over the pixels, with the mask's corner at (left, top). `clip` lies inside
    // the mask and the bitmap.
    void paint(const Bitmap& bitmap, int left, int top, const PixelRect& clip,
               std::uint32_t color) const;

    // Multiplies the bytes of `coverage`, which belong to `area`, by this mask, whose corner is at
    // (left, top). Rows are kSide bytes apart; the area lies inside the mask.
    void multiply(std::uint8_t* coverage, int left, int top, const PixelRect& area) const;

    // Sets the bytes of `area` that lie outside `inside` to 0. Rows are kSide bytes apart.
    static void clearOutside(std::uint8_t* coverage, const PixelRect& area,
                             const PixelRect& inside);

    // Memory used in addition to the object itself.
    std::size_t byteCount() const;

private:
    // The pixels `first` to `last` of a row: all full, or each with a byte of coverage.
    struct Span {
        std::uint8_t first;
        std::uint8_t last;
        bool full;
    };
    // Indexes of a row's first span and byte; they end where those of the next row begin.
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
