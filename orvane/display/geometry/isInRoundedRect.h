#pragma once

#include <algorithm>

#include "orvane/display/geometry/Point.h"
#include "orvane/display/geometry/Rect.h"

namespace orvane::display::geometry {

// The radius that the corners of a rectangle really have: at most half of its shorter side, and 0
// for a NaN.
inline double cornerRadius(const Rect<double>& rect, double radius) {
    return radius > 0 ? std::min({radius, rect.width / 2, rect.height / 2}) : 0;
}

// Whether a point is in a rectangle with rounded corners. The rectangle is normalized.
inline bool isInRoundedRect(const Rect<double>& rect, double radius, const Point<double>& point) {
    if (!rect.contains(point)) {
        return false;
    }
    const double r = cornerRadius(rect, radius);
    const double x = std::max({rect.x + r - point.x, point.x - (rect.x + rect.width - r), 0.0});
    const double y = std::max({rect.y + r - point.y, point.y - (rect.y + rect.height - r), 0.0});
    return x * x + y * y <= r * r;
}

}  // namespace orvane::display::geometry
