#include "orvane/display/graphics/quartz/QuartzCircle.h"

namespace orvane::display::graphics::quartz {

void QuartzCircle::set(float cx, float cy, float r) {
    cx_ = cx;
    cy_ = cy;
    r_ = r;
    update();
}

void QuartzCircle::setCx(float cx) {
    cx_ = cx;
    update();
}

void QuartzCircle::setCy(float cy) {
    cy_ = cy;
    update();
}

void QuartzCircle::setR(float r) {
    r_ = r;
    update();
}

void QuartzCircle::update() {
    path_.setCircle(cx_, cy_, r_);
    invalidate(true);
}

}  // namespace orvane::display::graphics::quartz
