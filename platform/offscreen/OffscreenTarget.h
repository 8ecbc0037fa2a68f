#pragma once

#include <cstdint>
#include <memory>

#include "platform/appkit/NSBackingRect.h"
#include "platform/raster/Blend.h"
#include "platform/raster/MovablePixels.h"
#include "platform/raster/PixmanImage.h"

namespace orvane::platform {

// Pixels that views are drawn on: a window's image, or a group of views that is then drawn on the
// image as one. Premultiplied ARGB, 32 bits in the machine's byte order, packed rows.
struct OffscreenTarget {
    NSBackingRect area;  // in the window's image
    std::shared_ptr<std::uint32_t[]> pixels;
    std::shared_ptr<MovablePixels> movable;  // owns `pixels` once all of them were moved
    PixmanImage image;                       // refers to `pixels`

    // Transparent pixels for an area of the image.
    static OffscreenTarget create(const NSBackingRect& area);
    Bitmap bitmap() const;
    // Converts a part of the window's image to coordinates of the bitmap.
    PixelRect toBitmap(const NSBackingRect& rect) const;
    // Moves the pixels of a part of the area, as far as they stay inside it.
    void movePart(const NSBackingRect& part, std::int64_t dx, std::int64_t dy);
    // Moves all pixels without copying them: `pixels` is another address then. Returns false, and
    // moves nothing, if the memory for that is missing. What appears at the edges is undefined.
    bool moveAll(std::int64_t dx, std::int64_t dy);
    // Draws `group` on this target, at its area. `alpha` is the opacity of the group.
    void draw(const OffscreenTarget& group, pixman_op_t blend, double alpha);
};

// A mask that draws everything with one opacity; null for full opacity.
PixmanImage opacityMask(double alpha);

}  // namespace orvane::platform
