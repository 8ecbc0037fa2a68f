#include "orvane/display/graphics/quartz/QuartzEllipse.h"

namespace orvane::display::graphics::quartz {

void QuartzEllipse::set(float cx, float cy, float rx, float ry) {
    cx_ = cx;
    cy_ = cy;
    rx_ = rx;
    ry_ = ry;
    update();
}

void QuartzEllipse::setCx(float cx) {
    cx_ = cx;
    update();
}

void QuartzEllipse::setCy(float cy) {
    cy_ = cy;
    update();
}

void QuartzEllipse::setRx(float rx) {
    rx_ = rx;
    update();
}

void QuartzEllipse::setRy(float ry) {
    ry_ = ry;
    update();
}

void QuartzEllipse::update() {
    path_.setEllipse(cx_, cy_, rx_, ry_);
    invalidate(true);
}

}  // namespace orvane::display::graphics::quartz
