#include "orvane/display/graphics/quartz/QuartzPath.h"

#include "orvane/display/geometry/rounding.h"

namespace orvane::display::graphics::quartz {

void QuartzPath::start() {
    path_.start();
}

void QuartzPath::finish() {
    path_.finish();
    invalidate(true);
}

void QuartzPath::move(float x, float y, bool) {
    path_.moveTo(x, y);
}

void QuartzPath::line(float x, float y, bool) {
    path_.lineTo(x, y);
}

void QuartzPath::cubicCurve(float x, float y, float c1x, float c1y, float c2x, float c2y, bool) {
    path_.cubicTo(x, y, c1x, c1y, c2x, c2y);
}

void QuartzPath::quadCurve(float x, float y, float cx, float cy, bool) {
    path_.quadTo(x, y, cx, cy);
}

void QuartzPath::arc(float x, float y, float rx, float ry, float rotation, float start,
                     float delta) {
    path_.arcTo(x, y, rx, ry, geometry::toRadians(rotation), geometry::toRadians(start),
                geometry::toRadians(delta));
}

void QuartzPath::close() {
    path_.close();
}

}  // namespace orvane::display::graphics::quartz
