#include "orvane/display/graphics/quartz/QuartzShape.h"

#include <algorithm>

#include "platform/coregraphics/CGContext.h"

namespace orvane::display::graphics::quartz {

geometry::Size<double> QuartzShape::getInkMargin() {
    const double reach =
        isStrokeVisible() ? std::max(0.0, 0.5 * getStrokeWidth() * path_.getLongestMiter()) : 0;
    const geometry::Rect<double>& outline = path_.getBounds();
    return marginAround(getBounds(), {outline.x - reach, outline.y - reach,
                                      outline.width + 2 * reach, outline.height + 2 * reach});
}

void QuartzShape::paintFill(platform::CGContext& canvas) {
    if (isGradientMode()) {
        path_.beforeDraw(canvas);
    }
    QuartzFillStyleable::applyStyles(canvas, getBounds());
    if (!isGradientMode()) {
        path_.draw(canvas, true, false);
    }
}

void QuartzShape::doValidate(const geometry::Rect<double>&) {
    platform::CGContext* const canvas = getCanvas();
    if (canvas == nullptr) {
        return;
    }
    if (hasStrokeGradient()) {
        canvas->saveGState();
        if (isFillVisible()) {
            paintFill(*canvas);
        }
        canvas->restoreGState();
        return drawGradientStroke(*canvas, path_, getBounds());
    }
    const bool gradientMode = isGradientMode();
    const bool fillVisible = isFillVisible();
    if (fillVisible) {
        if (gradientMode) {
            path_.beforeDraw(*canvas);
        }
        QuartzFillStyleable::applyStyles(*canvas, getBounds());
    }
    const bool strokeVisible = isStrokeVisible();
    if (strokeVisible) {
        QuartzStrokeStyleable::applyStyles(*canvas);
    }
    path_.draw(*canvas, fillVisible && !gradientMode, strokeVisible);
}

}  // namespace orvane::display::graphics::quartz
