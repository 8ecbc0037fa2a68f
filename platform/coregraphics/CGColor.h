#pragma once

namespace orvane::platform {

// Straight (not premultiplied) components from 0 to 1.
struct CGColor {
    double red = 0;
    double green = 0;
    double blue = 0;
    double alpha = 1;
    friend constexpr bool operator==(const CGColor&, const CGColor&) = default;
};

}  // namespace orvane::platform
