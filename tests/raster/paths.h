#pragma once

#include <initializer_list>

#include "platform/coregraphics/CGContext.h"
#include "platform/coregraphics/CGPath.h"

// Paths as single expressions, for tables of cases.
namespace orvane::platform {

inline CGPath rectPath(double x, double y, double width, double height) {
    CGPath path;
    path.addRect({{x, y}, {width, height}});
    return path;
}

inline CGPath roundedPath(double x, double y, double width, double height, double rx, double ry) {
    CGPath path;
    path.addRoundedRect({{x, y}, {width, height}}, rx, ry);
    return path;
}

inline CGPath ellipsePath(double x, double y, double width, double height) {
    CGPath path;
    path.addEllipseInRect({{x, y}, {width, height}});
    return path;
}

inline CGPath linePath(std::initializer_list<CGPoint> points) {
    CGPath path;
    path.addLines({points.begin(), points.size()});
    return path;
}

inline CGPath polygonPath(std::initializer_list<CGPoint> points) {
    CGPath path = linePath(points);
    path.closeSubpath();
    return path;
}

inline void draw(CGContext& canvas, const CGPath& path,
                 CGPathDrawingMode mode = CGPathDrawingMode::Fill) {
    canvas.addPath(path);
    canvas.drawPath(mode);
}

}  // namespace orvane::platform
