#pragma once

#include <cstdint>
#include <optional>

#include "platform/coregraphics/CGGeometry.h"
#include "platform/raster/Blend.h"
#include "platform/raster/PixelRect.h"

namespace orvane::platform {

// A rectangle with sides along the pixel grid, optionally with a hole of the same kind. Most fills
// and strokes of rectangles have this form. Its coverage is computed, not rasterized: it is
// constant in each cell of a grid of at most seven by seven cells.
class AlignedBox {
public:
    // Corners in pixels. Coordinates are limited to a range larger than any bitmap.
    AlignedBox(CGPoint min, CGPoint max);
    void setHole(CGPoint min, CGPoint max);

    // Every pixel with any coverage.
    PixelRect bounds() const;
    // The pixels that are fully covered; of a box with a hole, none.
    PixelRect covered() const;
    // Whether bounds() is fully covered, so that no pixel is antialiased.
    bool isExact() const { return covered().contains(bounds()); }

    void paint(const Bitmap& bitmap, const PixelRect& clip, std::uint32_t color) const;
    // Multiplies the bytes of `area` by the coverage. Rows are Mask::kSide bytes apart.
    void multiply(std::uint8_t* coverage, const PixelRect& area) const;

private:
    // In 1/256 of a pixel, the resolution at which Cairo rasterizes all other shapes.
    struct Interval {
        std::int64_t from;
        std::int64_t to;
    };
    struct Box {
        Interval x;
        Interval y;
    };
    // The pixels from `first` to before `end` on one axis, and how much of each the box and its
    // hole take.
    struct Run {
        int first;
        int end;
        std::uint32_t box;
        std::uint32_t hole;
    };
    struct Runs {
        Run runs[7];
        int count = 0;
    };

    static Interval interval(double from, double to);
    static Runs runsOf(const Interval& box, const Interval* hole, int first, int end);

    template <typename Visit>
    void forEachCell(const PixelRect& area, Visit visit) const;

    Box box_;
    std::optional<Box> hole_;
};

}  // namespace orvane::platform
