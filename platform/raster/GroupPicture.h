#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "platform/coregraphics/CGAffineTransform.h"
#include "platform/coregraphics/CGContext.h"
#include "platform/coregraphics/CGGroup.h"
#include "platform/raster/BitmapPainter.h"
#include "platform/raster/BoxBlur.h"
#include "platform/raster/DrawablePainter.h"
#include "platform/raster/PixelRect.h"

namespace orvane::platform {

// Where the pixels of a group are, and how far its effects reach.
struct GroupLayout {
    // `ctm` maps user space to pixels. `clip` is what the canvas shows: it replaces an area that
    // is too large to be drawn.
    GroupLayout(const CGRect& area, const CGGroupStyle& style, const CGAffineTransform& ctm,
                const PixelRect& clip);

    BoxBlur blur;
    BoxBlur shadowBlur;
    bool hasShadow;
    int shadowX = 0;  // in pixels
    int shadowY = 0;
    PixelRect wanted;        // the part of the result that will be drawn
    PixelRect source;        // the pixels that have an effect on it
    bool isComplete = true;  // `wanted` is the whole area
};

// The result of a group: pixels with all effects but the opacity.
class GroupPicture final : public CGGroup {
public:
    // `pixels` are those of `layout.source`, without effects. `toPixels` maps the coordinates of
    // the style's lengths to pixels.
    GroupPicture(std::vector<std::uint32_t> pixels, const GroupLayout& layout,
                 const CGColor& shadowColor, const CGAffineTransform& toPixels);
    ~GroupPicture() override;

    // Draws the picture, moved by whole pixels.
    void draw(BitmapPainter& painter, int dx, int dy, double opacity, const Clip& clip) const;

    const CGAffineTransform& toPixels() const { return toPixels_; }
    // Whether the pictures that exist take more memory than may be kept.
    static bool areTooMany();

private:
    void addShadow(const GroupLayout& layout, const CGColor& color);

    std::vector<std::uint32_t> pixels_;
    PixelRect wanted_;
    PixelRect source_;
    CGAffineTransform toPixels_;
};

}  // namespace orvane::platform
