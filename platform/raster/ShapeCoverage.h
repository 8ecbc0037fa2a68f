#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <variant>

#include "platform/coregraphics/CGPath.h"
#include "platform/raster/AlignedBox.h"
#include "platform/raster/Blend.h"
#include "platform/raster/MaskCache.h"
#include "platform/raster/StrokeStyle.h"

namespace orvane::platform {

// The coverage of one outline under one transformation, filled or stroked: which pixels it touches,
// and how to paint them. It does not depend on the part that is requested: small masks are
// rasterized as a whole, large ones in tiles on a grid that begins at the shape's origin.
//
// Created on the stack for each paint call. It refers to the outline and the dash.
class ShapeCoverage {
public:
    // `toPixels` maps the outline to the bitmap's pixels; `pen` maps the user space of a stroke.
    // Masks are cached only if `isLasting` is set. What cannot be drawn covers nothing.
    ShapeCoverage(const std::shared_ptr<const CGPath::Outline>& outline,
                  const CGAffineTransform& toPixels, const CGAffineTransform& pen,
                  Coverage coverage, const StrokeStyle& stroke, bool isLasting);

    // Every pixel that may be covered, limited to the range of bitmaps.
    const PixelRect& bounds() const { return bounds_; }
    // The pixels that are known to be fully covered.
    PixelRect covered() const;
    bool covers(const PixelRect& area) const { return covered().contains(area); }
    // Whether the shape is exactly the whole pixels of bounds().
    bool isExactBox() const;

    // Composites the color over the covered pixels within `clip`, which lies in the bitmap.
    void paint(const Bitmap& bitmap, const PixelRect& clip, std::uint32_t color) const;
    // Multiplies the bytes of `area` by the coverage. The area is at most Mask::kSide pixels in
    // each direction; rows are Mask::kSide bytes apart.
    void multiply(std::uint8_t* coverage, const PixelRect& area) const;

private:
    struct Masked {
        std::shared_ptr<const CGPath::Outline> outline;  // null for plain shapes
        bool isLasting;
        MaskKey::Numbers key;
        CGAffineTransform pen;
        std::span<const double> dash;
        // The bitmap pixel at which the outline's pixel grid begins.
        std::int64_t originX;
        std::int64_t originY;
        // The box of everything covered, in the outline's grid.
        std::int64_t left, top, right, bottom;
        double reach;  // the largest distance of the stroke from the outline, in pixels

        bool isTiled() const { return right - left > Mask::kSide || bottom - top > Mask::kSide; }
    };

    bool makeBox(const CGPath::Outline& outline, const CGAffineTransform& toPixels,
                 const CGAffineTransform& pen, Coverage coverage, const StrokeStyle& stroke);
    void makeMasked(const std::shared_ptr<const CGPath::Outline>& outline,
                    const CGAffineTransform& toPixels, const CGAffineTransform& pen,
                    Coverage coverage, const StrokeStyle& stroke, bool isLasting);

    template <typename Visit>
    void forEachTile(const PixelRect& area, Visit visit) const;
    static std::optional<Mask> rasterize(const Masked& masked, const MaskKey::Numbers& key);

    std::variant<std::monostate, AlignedBox, Masked> form_;
    PixelRect bounds_;
};

}  // namespace orvane::platform
