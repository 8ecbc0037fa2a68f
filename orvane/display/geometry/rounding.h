#pragma once

#include <cmath>
#include <numbers>

#include "orvane/display/geometry/Rect.h"

namespace orvane::display::geometry {

// Rounds to the nearest integers, ties to even (in the current rounding mode).
inline Point<double> toInt(const Point<double>& p) {
    return {std::nearbyint(p.x), std::nearbyint(p.y)};
}

// Rounds up to integers.
inline Size<double> toInt(const Size<double>& s) {
    return {std::ceil(s.width), std::ceil(s.height)};
}

// Rounds the position to the nearest integers and the size up, and normalizes the result. Position
// and size are rounded separately, so the right and bottom edges may be up to half a point short of
// the given ones. That is deliberate: the frames of views and the bounds of shapes depend on these
// numbers.
inline Rect<double> toInt(const Rect<double>& r) {
    return Rect<double>(toInt(r.position()), toInt(r.size())).normalized();
}

// Converts degrees to radians.
inline double toRadians(double degrees) {
    return degrees * std::numbers::pi / 180;
}

}  // namespace orvane::display::geometry
