#pragma once

#include <cstdint>
#include <optional>

#include "platform/coregraphics/CGGeometry.h"
#include "platform/raster/Blend.h"
#include "platform/raster/PixelRect.h"

namespace orvane::platform {

// A rectangle whose sides run along the pixel grid, possibly with such a hole in it: what most
// fills and strokes of rectangles come down to. Its coverage is worked out instead of rasterised:
// it is the same throughout each cell of a grid of at most seven by seven.
class AlignedBox {
public:
    // Corners in pixels; far ones are cut to where no bitmap reaches.
    AlignedBox(CGPoint min, CGPoint max);
    void setHole(CGPoint min, CGPoint max);

    // Every pixel that is covered at all.
    PixelRect bounds() const;
    // Whether every pixel of the area is covered in full.
    bool covers(const PixelRect& area) const;
    // Whether bounds() is covered in full: nothing is antialiased.
    bool isExact() const { return covers(bounds()); }

    void paint(const Bitmap& bitmap, const PixelRect& clip, std::uint32_t color) const;
    // Multiplies the bytes of `area`, rows Mask::kSide apart, by the coverage.
    void multiply(std::uint8_t* coverage, const PixelRect& area) const;

private:
    // In 256ths of a pixel, the grid that the rasteriser of all other shapes has, too.
    struct Interval {
        std::int64_t from;
        std::int64_t to;
    };
    struct Box {
        Interval x;
        Interval y;
    };
    // Pixels first up to end of one axis, and how much of each the box and its hole take.
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
