#pragma once

#include <algorithm>
#include <cmath>

namespace orvane::platform {

// An extent in points as GTK takes one. Widgets are measured in whole numbers of 31 bits, which GTK
// multiplies by the scale factor, and no screen shows more than this.
inline int toExtent(double points) {
    constexpr double longest = 1 << 20;
    return static_cast<int>(std::ceil(std::clamp(points, 0.0, longest)));
}

}  // namespace orvane::platform
