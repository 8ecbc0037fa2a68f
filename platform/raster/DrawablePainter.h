#pragma once

#include "platform/coregraphics/CGAffineTransform.h"
#include "platform/coregraphics/CGColor.h"
#include "platform/coregraphics/CairoHandles.h"
#include "platform/raster/BitmapPainter.h"

namespace orvane::platform {

class CGDrawable;

// Lets drawables of other rooms paint on a bitmap through the raster library, whose context it
// makes at the first need and keeps.
class DrawablePainter {
public:
    explicit DrawablePainter(BitmapPainter& painter) : painter_(painter) {}

    // `toPixels` takes the drawable's own space to the bitmap's pixels. What cannot be inverted or
    // is out of range paints nothing.
    void paint(const CGDrawable& drawable, const CGAffineTransform& toPixels,
               const CGColor& fillColor, const CGColor& strokeColor, const Clip& clip);

private:
    static CairoContext makeContext(const Bitmap& bitmap);
    static void paintOn(cairo_t* cairo, const CGDrawable& drawable,
                        const CGAffineTransform& toPixels, const CGColor& fillColor,
                        const CGColor& strokeColor, const PixelRect& area);

    BitmapPainter& painter_;
    CairoContext context_;
};

}  // namespace orvane::platform
