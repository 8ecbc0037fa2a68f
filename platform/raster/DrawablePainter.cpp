#include "platform/raster/DrawablePainter.h"

#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

#include "platform/coregraphics/CGDrawable.h"
#include "platform/coregraphics/CairoCanvas.h"
#include "platform/raster/BitmapSource.h"
#include "platform/raster/ShapeCoverage.h"

namespace orvane::platform {

namespace {

// The drawable's box in pixels, a pixel wider all round for antialiasing, cut to the raster
// library's range; nothing when a corner is nowhere.
PixelRect pixelBox(const CGRect& box, const CGAffineTransform& t) {
    static constexpr double kReach = 1 << 22;
    const double xs[] = {box.origin.x, box.origin.x + box.size.width};
    const double ys[] = {box.origin.y, box.origin.y + box.size.height};
    CGPoint min{kReach, kReach};
    CGPoint max{-kReach, -kReach};
    for (const double x : xs) {
        for (const double y : ys) {
            const CGPoint p{t.a * x + t.c * y + t.tx, t.b * x + t.d * y + t.ty};
            if (std::isnan(p.x) || std::isnan(p.y)) {
                return {};
            }
            min = {std::min(min.x, p.x), std::min(min.y, p.y)};
            max = {std::max(max.x, p.x), std::max(max.y, p.y)};
        }
    }
    const auto pixel = [](double value) {
        return static_cast<int>(std::clamp(value, -kReach, kReach));
    };
    return {pixel(std::floor(min.x)) - 1, pixel(std::floor(min.y)) - 1, pixel(std::ceil(max.x)) + 1,
            pixel(std::ceil(max.y)) + 1};
}

}  // namespace

DrawablePainter::Context DrawablePainter::makeContext(const Bitmap& bitmap) {
    cairo_surface_t* const surface = cairo_image_surface_create_for_data(
        reinterpret_cast<unsigned char*>(bitmap.pixels), CAIRO_FORMAT_ARGB32, bitmap.width,
        bitmap.height, static_cast<int>(bitmap.stride * 4));
    Context context(cairo_create(surface));
    cairo_surface_destroy(surface);  // the context holds it
    return context;
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
    if (!isInvertible(toPixels)) {
        return;
    }
    const PixelRect area = clip.bounds.intersected(pixelBox(drawable.inkBounds(), toPixels));
    if (area.isEmpty()) {
        return;
    }
    if (!BitmapPainter::isCutBy(clip, area)) {
        // A context that met an error does nothing ever after.
        if (!context_ || cairo_status(context_.get()) != CAIRO_STATUS_SUCCESS) {
            context_ = makeContext(painter_.bitmap());
        }
        paintOn(context_.get(), drawable, toPixels, fillColor, strokeColor, area);
        return;
    }
    std::vector<std::uint32_t> pixels(static_cast<std::size_t>(area.width()) *
                                      static_cast<std::size_t>(area.height()));
    const Bitmap layer{pixels.data(), area.width(), area.height(), area.width()};
    CGAffineTransform toLayer = toPixels;
    toLayer.tx -= area.left;
    toLayer.ty -= area.top;
    const Context context = makeContext(layer);
    paintOn(context.get(), drawable, toLayer, fillColor, strokeColor, layer.bounds());
    painter_.paint(BitmapSource(layer.pixels, layer.stride, area.left, area.top),
                   {area, clip.shapes});
}

}  // namespace orvane::platform
