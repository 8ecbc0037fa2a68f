#include "orvane/display/graphics/quartz/QuartzRect.h"

#include "orvane/display/geometry/isZero.h"

namespace orvane::display::graphics::quartz {

void QuartzRect::set(float x, float y, float width, float height) {
    x_ = x;
    y_ = y;
    width_ = width;
    height_ = height;
    update();
}

void QuartzRect::setX(float x) {
    x_ = x;
    update();
}

void QuartzRect::setY(float y) {
    y_ = y;
    update();
}

void QuartzRect::setWidth(float width) {
    width_ = width;
    update();
}

void QuartzRect::setHeight(float height) {
    height_ = height;
    update();
}

void QuartzRect::setRx(float rx) {
    rx_ = rx;
    update();
}

void QuartzRect::setRy(float ry) {
    ry_ = ry;
    update();
}

void QuartzRect::update() {
    // One radius that is not zero makes a rounded rectangle.
    if (geometry::isZero(rx_) && geometry::isZero(ry_)) {
        path_.setRect(x_, y_, width_, height_);
    } else {
        path_.setRoundedRect(x_, y_, width_, height_, rx_, ry_);
    }
    invalidate(true);
}

}  // namespace orvane::display::graphics::quartz
