#pragma once

#include <algorithm>
#include <cmath>

namespace orvane::platform {

// Converts an extent in points to one of GTK's, rounded up. The limit is larger than any screen and
// keeps GTK's integers, which it multiplies by the scale factor, from overflowing.
inline int toExtent(double points) {
    constexpr double longest = 1 << 20;
    return static_cast<int>(std::ceil(std::clamp(points, 0.0, longest)));
}

}  // namespace orvane::platform
