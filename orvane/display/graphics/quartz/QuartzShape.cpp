#include "orvane/display/graphics/quartz/QuartzShape.h"

#include <algorithm>

namespace orvane::display::graphics::quartz {

geometry::Size<double> QuartzShape::getInkMargin() {
    const double reach =
        isStrokeVisible() ? std::max(0.0, 0.5 * getStrokeWidth() * path_.getLongestMiter()) : 0;
    const geometry::Rect<double>& outline = path_.getBounds();
    return marginAround(getBounds(), {outline.x - reach, outline.y - reach,
                                      outline.width + 2 * reach, outline.height + 2 * reach});
}

void QuartzShape::doValidate(const geometry::Rect<double>&) {
    platform::CGContext* const canvas = getCanvas();
    if (canvas == nullptr) {
        return;
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
