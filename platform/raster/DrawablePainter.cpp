#include "platform/raster/DrawablePainter.h"

#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

#include "platform/coregraphics/CGAffineTransform.h"
#include "platform/coregraphics/CGColor.h"
#include "platform/coregraphics/CGDrawable.h"
#include "platform/coregraphics/CairoCanvas.h"
#include "platform/raster/BitmapSource.h"
#include "platform/raster/ShapeCoverage.h"

namespace orvane::platform {

namespace {

// The drawable's box in pixels, one pixel larger on each side for antialiasing, limited to Cairo's
// range. Empty when a corner is NaN.
PixelRect pixelBox(const CGRect& box, const CGAffineTransform& toPixels) {
    static constexpr double kReach = 1 << 22;
    const CGRect mapped = toPixels.apply(box);
    const double right = mapped.origin.x + mapped.size.width;
    const double bottom = mapped.origin.y + mapped.size.height;
    if (std::isnan(right) || std::isnan(bottom)) {
        return {};
    }
    const auto pixel = [](double value) {
        return static_cast<int>(std::clamp(value, -kReach, kReach));
    };
    return {pixel(std::floor(mapped.origin.x)) - 1, pixel(std::floor(mapped.origin.y)) - 1,
            pixel(std::ceil(right)) + 1, pixel(std::ceil(bottom)) + 1};
}

}  // namespace

CairoContext DrawablePainter::makeContext(const Bitmap& bitmap) {
    const CairoSurface surface(cairo_image_surface_create_for_data(
        reinterpret_cast<unsigned char*>(bitmap.pixels), CAIRO_FORMAT_ARGB32, bitmap.width,
        bitmap.height, static_cast<int>(bitmap.stride * 4)));
    return CairoContext(cairo_create(surface.get()));  // keeps the surface alive
}

void DrawablePainter::paintOn(cairo_t* cairo, const CGDrawable& drawable,
                              const CGAffineTransform& t, const CGColor& fillColor,
                              const CGColor& strokeColor, const PixelRect& area) {
    cairo_surface_t* const surface = cairo_get_target(cairo);
    cairo_surface_mark_dirty(surface);
    cairo_save(cairo);
    cairo_rectangle(cairo, area.left, area.top, area.width(), area.height());
    cairo_clip(cairo);
    const cairo_matrix_t matrix{t.a, t.b, t.c, t.d, t.tx, t.ty};
    cairo_set_matrix(cairo, &matrix);
    cairo_set_source_rgba(cairo, fillColor.red, fillColor.green, fillColor.blue, fillColor.alpha);
    CairoCanvas canvas{cairo, fillColor, strokeColor};
    drawable.paint(canvas);
    cairo_restore(cairo);
    cairo_new_path(cairo);
    cairo_surface_flush(surface);
}

void DrawablePainter::paint(const CGDrawable& drawable, const CGAffineTransform& toPixels,
                            const CGColor& fillColor, const CGColor& strokeColor,
                            const Clip& clip) {
    if (!toPixels.isDrawable()) {
        return;
    }
    const PixelRect area = clip.bounds.intersected(pixelBox(drawable.inkBounds(), toPixels));
    if (area.isEmpty()) {
        return;
    }
    // Where a drawable paints twice, blending its pixels as a whole rounds differently. So each
    // pixel is painted in the way that the clip dictates there, whatever the painted area is.
    const PixelRect uncut = BitmapPainter::uncutPart(clip, area);
    if (uncut.isEmpty()) {
        paintCut(drawable, toPixels, fillColor, strokeColor, {area, clip.shapes});
        return;
    }
    // A Cairo context ignores all calls after an error.
    if (!context_ || cairo_status(context_.get()) != CAIRO_STATUS_SUCCESS) {
        context_ = makeContext(painter_.bitmap());
    }
    paintOn(context_.get(), drawable, toPixels, fillColor, strokeColor, uncut);
    for (const PixelRect& edge : {PixelRect{area.left, area.top, area.right, uncut.top},
                                  PixelRect{area.left, uncut.bottom, area.right, area.bottom},
                                  PixelRect{area.left, uncut.top, uncut.left, uncut.bottom},
                                  PixelRect{uncut.right, uncut.top, area.right, uncut.bottom}}) {
        if (!edge.isEmpty()) {
            paintCut(drawable, toPixels, fillColor, strokeColor, {edge, clip.shapes});
        }
    }
}

void DrawablePainter::paintCut(const CGDrawable& drawable, const CGAffineTransform& toPixels,
                               const CGColor& fillColor, const CGColor& strokeColor,
                               const Clip& clip) {
    const PixelRect& area = clip.bounds;
    std::vector<std::uint32_t> pixels(static_cast<std::size_t>(area.width()) *
                                      static_cast<std::size_t>(area.height()));
    const Bitmap layer{pixels.data(), area.width(), area.height(), area.width()};
    CGAffineTransform toLayer = toPixels;
    toLayer.tx -= area.left;
    toLayer.ty -= area.top;
    const CairoContext context = makeContext(layer);
    paintOn(context.get(), drawable, toLayer, fillColor, strokeColor, layer.bounds());
    painter_.paint(BitmapSource(layer.pixels, layer.stride, area.left, area.top), clip);
}

}  // namespace orvane::platform
