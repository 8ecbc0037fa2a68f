#pragma once

#include <cstdint>
#include <memory>
#include <variant>

#include "platform/coregraphics/CGPath.h"
#include "platform/raster/AlignedBox.h"
#include "platform/raster/Blend.h"
#include "platform/raster/MaskCache.h"
#include "platform/raster/StrokeStyle.h"

namespace orvane::platform {

// The coverage of one outline under one transformation, filled or stroked: which pixels it touches,
// and how to paint them. It is the same whatever part of it is asked for: masks are rasterised
// whole, large ones tile by tile along a grid that begins where the shape does.
//
// Made for each paint, on the stack; it refers to the outline and the dash.
class ShapeCoverage {
public:
    // `toPixels` takes the outline to the bitmap's pixels, `pen` the user space of a stroke. With
    // `isLasting` unset the outline is not worth keeping masks for. Whatever cannot be drawn
    // sensibly covers nothing.
    ShapeCoverage(const std::shared_ptr<const CGPath::Outline>& outline,
                  const CGAffineTransform& toPixels, const CGAffineTransform& pen,
                  Coverage coverage, const StrokeStyle& stroke, bool isLasting);

    // Every pixel that can be covered at all, cut to where bitmaps reach.
    const PixelRect& bounds() const { return bounds_; }
    // Whether every pixel of the area is known to be covered in full.
    bool covers(const PixelRect& area) const;
    // Whether it is a box of whole pixels, which bounds() describes entirely.
    bool isExactBox() const;

    // Lays the colour over what is covered within `clip`, which lies in the bitmap.
    void paint(const Bitmap& bitmap, const PixelRect& clip, std::uint32_t color) const;
    // Multiplies the bytes of `area` (up to Mask::kSide either way, rows that far apart).
    void multiply(std::uint8_t* coverage, const PixelRect& area) const;

private:
    struct Masked {
        std::shared_ptr<const CGPath::Outline> outline;  // none for plain shapes
        bool isLasting;
        MaskKey::Numbers key;
        CGAffineTransform pen;
        std::span<const double> dash;
        // Where the outline's own pixel grid begins in the bitmap's.
        std::int64_t originX;
        std::int64_t originY;
        // The box of everything covered, in the outline's grid.
        std::int64_t left, top, right, bottom;
        double reach;

        bool isTiled() const { return right - left > Mask::kSide || bottom - top > Mask::kSide; }
    };

    bool makeBox(const CGPath::Outline& outline, const CGAffineTransform& toPixels,
                 const CGAffineTransform& pen, Coverage coverage, const StrokeStyle& stroke);
    void makeMasked(const std::shared_ptr<const CGPath::Outline>& outline,
                    const CGAffineTransform& toPixels, const CGAffineTransform& pen,
                    Coverage coverage, const StrokeStyle& stroke, bool isLasting);

    template <typename Visit>
    void forEachTile(const PixelRect& area, Visit visit) const;
    static Mask rasterise(const Masked& masked, const MaskKey::Numbers& key);

    std::variant<std::monostate, AlignedBox, Masked> form_;
    PixelRect bounds_;
};

}  // namespace orvane::platform
