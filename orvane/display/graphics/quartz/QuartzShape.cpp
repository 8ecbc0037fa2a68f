#include "orvane/display/graphics/quartz/QuartzShape.h"

namespace orvane::display::graphics::quartz {

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
