#pragma once

#include <cmath>
#include <numbers>

#include "orvane/display/geometry/Rect.h"

namespace orvane::display::geometry {

// Nearest whole numbers, ties to even (in the rounding mode in force).
inline Point<double> toInt(const Point<double>& p) {
    return {std::nearbyint(p.x), std::nearbyint(p.y)};
}

// Next whole numbers upward.
inline Size<double> toInt(const Size<double>& s) {
    return {std::ceil(s.width), std::ceil(s.height)};
}

// Position to the nearest, size upward, then normalised. Both are rounded on their own, so the far
// edge may fall short of the input's by up to half a point. That is deliberate: the frames of views
// and the bounds of shapes rest on these numbers.
inline Rect<double> toInt(const Rect<double>& r) {
    return Rect<double>(toInt(r.position()), toInt(r.size())).normalized();
}

inline double toRadians(double degrees) {
    return degrees * std::numbers::pi / 180;
}

}  // namespace orvane::display::geometry
