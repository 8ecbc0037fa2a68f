#include "orvane/display/graphics/quartz/PathWrapper.h"

#include <array>
#include <cstddef>
#include <memory_resource>

#include "platform/coregraphics/CGContext.h"

namespace orvane::display::graphics::quartz {

using platform::CGAffineTransform;
using platform::CGPathDrawingMode;
using platform::CGPoint;
using platform::CGRect;

namespace {

CGPathDrawingMode drawingMode(bool fill, bool stroke, bool isEOFill) {
    if (!fill) {
        return CGPathDrawingMode::Stroke;
    }
    if (stroke) {
        return isEOFill ? CGPathDrawingMode::EOFillStroke : CGPathDrawingMode::FillStroke;
    }
    return isEOFill ? CGPathDrawingMode::EOFill : CGPathDrawingMode::Fill;
}

}  // namespace

void PathWrapper::start() {
    if (!path_.isEmpty()) {
        path_ = platform::CGPath();
    }
}

void PathWrapper::setRect(float x, float y, float width, float height) {
    start();
    path_.addRect(CGRect{{x, y}, {width, height}});
    calculateBounds();
}

void PathWrapper::setRoundedRect(float x, float y, float width, float height, float rx, float ry) {
    start();
    path_.addRoundedRect(CGRect{{x, y}, {width, height}}, rx, ry);
    calculateBounds();
}

void PathWrapper::setEllipse(float cx, float cy, float rx, float ry) {
    start();
    path_.addEllipseInRect(CGRect{{cx, cy}, {rx, ry}});
    calculateBounds();
}

void PathWrapper::setCircle(float cx, float cy, float r) {
    setEllipse(cx, cy, 2 * r, 2 * r);
}

void PathWrapper::setLine(float x1, float y1, float x2, float y2) {
    start();
    path_.addLines(std::array{CGPoint{x1, y1}, CGPoint{x2, y2}});
}

void PathWrapper::setPolyline(const std::vector<float>& points, bool closed) {
    start();
    // The usual few dozen points need no allocation.
    std::array<std::byte, 1024> stack;
    std::pmr::monotonic_buffer_resource arena(stack.data(), stack.size());
    std::pmr::vector<CGPoint> corners(&arena);
    corners.reserve(points.size() / 2);
    for (std::size_t i = 0; i + 1 < points.size(); i += 2) {
        corners.push_back({points[i], points[i + 1]});
    }
    path_.addLines(corners);
    if (closed) {
        path_.closeSubpath();
    }
    calculateBounds();
}

void PathWrapper::moveTo(float x, float y) {
    path_.moveToPoint(x, y);
}

void PathWrapper::lineTo(float x, float y) {
    path_.addLineToPoint(x, y);
}

void PathWrapper::cubicTo(float x, float y, float c1x, float c1y, float c2x, float c2y) {
    path_.addCurveToPoint(c1x, c1y, c2x, c2y, x, y);
}

void PathWrapper::quadTo(float x, float y, float cx, float cy) {
    path_.addQuadCurveToPoint(cx, cy, x, y);
}

void PathWrapper::arcTo(float x, float y, float rx, float ry, double rotation, double start,
                        double delta) {
    const CGAffineTransform fromUnitCircle =
        CGAffineTransform::makeTranslation(x, y).rotate(rotation).scale(rx, ry);
    path_.addRelativeArc(fromUnitCircle, 0, 0, 1, start, delta);
}

void PathWrapper::close() {
    path_.closeSubpath();
}

void PathWrapper::beforeDraw(platform::CGContext& canvas) const {
    canvas.addPath(path_);
}

void PathWrapper::draw(platform::CGContext& canvas, bool fill, bool stroke) const {
    canvas.addPath(path_);
    canvas.drawPath(drawingMode(fill, stroke, isEOFill_));
}

void PathWrapper::calculateBounds() {
    longestMiter_ = path_.longestMiter();
    if (const auto box = path_.getPathBoundingBox()) {
        bounds_ = geometry::Rect<double>(*box);
    }
}

}  // namespace orvane::display::graphics::quartz
