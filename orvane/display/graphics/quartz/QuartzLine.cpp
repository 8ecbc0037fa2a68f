#include "orvane/display/graphics/quartz/QuartzLine.h"

namespace orvane::display::graphics::quartz {

geometry::Rect<double> QuartzLine::getBounds() {
    return calculateBoundsWithStroke(
        geometry::Rect<double>(x1_, y1_, x2_ - x1_, y2_ - y1_).normalized());
}

void QuartzLine::set(float x1, float y1, float x2, float y2) {
    x1_ = x1;
    y1_ = y1;
    x2_ = x2;
    y2_ = y2;
    update();
}

void QuartzLine::setX1(float x1) {
    x1_ = x1;
    update();
}

void QuartzLine::setY1(float y1) {
    y1_ = y1;
    update();
}

void QuartzLine::setX2(float x2) {
    x2_ = x2;
    update();
}

void QuartzLine::setY2(float y2) {
    y2_ = y2;
    update();
}

void QuartzLine::doValidate(const geometry::Rect<double>&) {
    platform::CGContext* const canvas = getCanvas();
    if (canvas == nullptr) {
        return;
    }
    // isStrokeVisible is not tested: a line with an invisible stroke is not painted at all.
    if (hasStrokeGradient()) {
        return drawGradientStroke(*canvas, path_, getBounds());
    }
    applyStyles(*canvas);
    path_.draw(*canvas, false, true);
}

void QuartzLine::update() {
    path_.setLine(x1_, y1_, x2_, y2_);
    invalidate(true);
}

}  // namespace orvane::display::graphics::quartz
