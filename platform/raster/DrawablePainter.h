#pragma once

#include "platform/coregraphics/CairoHandles.h"
#include "platform/raster/BitmapPainter.h"

namespace orvane::platform {

struct CGAffineTransform;
struct CGColor;
class CGDrawable;

// Paints drawables of other modules on a bitmap through a Cairo context, which it creates on first
// use and keeps.
class DrawablePainter {
public:
    explicit DrawablePainter(BitmapPainter& painter) : painter_(painter) {}

    // `toPixels` maps the drawable's space to the bitmap's pixels. Paints nothing unless it is
    // drawable.
    void paint(const CGDrawable& drawable, const CGAffineTransform& toPixels,
               const CGColor& fillColor, const CGColor& strokeColor, const Clip& clip);

private:
    static CairoContext makeContext(const Bitmap& bitmap);
    static void paintOn(cairo_t* cairo, const CGDrawable& drawable,
                        const CGAffineTransform& toPixels, const CGColor& fillColor,
                        const CGColor& strokeColor, const PixelRect& area);
    // Paints on pixels of their own, which are then blended under the shapes of the clip.
    void paintCut(const CGDrawable& drawable, const CGAffineTransform& toPixels,
                  const CGColor& fillColor, const CGColor& strokeColor, const Clip& clip);

    BitmapPainter& painter_;
    CairoContext context_;
};

}  // namespace orvane::platform
