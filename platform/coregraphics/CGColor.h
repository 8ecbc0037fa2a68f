#pragma once

#include <algorithm>
#include <cmath>

namespace orvane::platform {

// A color as straight (not premultiplied) components from 0 to 1.
struct CGColor {
    double red = 0;
    double green = 0;
    double blue = 0;
    double alpha = 1;
    friend constexpr bool operator==(const CGColor&, const CGColor&) = default;
};

// A component limited to its range; NaN counts as 0.
inline double limitedComponent(double value) {
    return std::isnan(value) ? 0 : std::clamp(value, 0.0, 1.0);
}

}  // namespace orvane::platform
