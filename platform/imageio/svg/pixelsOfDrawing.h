#pragma once

#include <algorithm>
#include <cmath>

#include "platform/coregraphics/imageLimits.h"

namespace orvane::platform {

struct SVGPixels {
    int width;
    int height;
    friend bool operator==(const SVGPixels&, const SVGPixels&) = default;
};

// With how many pixels a drawing of this size is rendered, if `scale` are wanted for each of its
// units. A larger picture is enlarged instead.
inline SVGPixels pixelsOfDrawing(double width, double height, double scale) {
    constexpr double kMostRendered = 1 << 24;
    const double most = std::min(
        {std::sqrt(kMostRendered / width / height), kLargestSide / width, kLargestSide / height});
    const double used = std::min(scale > 0 ? scale : 1, most);
    const auto inPixels = [used](double units) {
        return std::max(static_cast<int>(std::ceil(units * used - 1e-6)), 1);
    };
    return {inPixels(width), inPixels(height)};
}

}  // namespace orvane::platform
