#pragma once

#include <cmath>

#include "orvane/display/geometry/isZero.h"

namespace orvane::display::graphics::quartz {

// Whether a text can have this size. Setters ignore a size that is zero or not finite.
inline bool isUsableTextSize(float size) {
    return std::isfinite(size) && !geometry::isZero(size);
}

}  // namespace orvane::display::graphics::quartz
