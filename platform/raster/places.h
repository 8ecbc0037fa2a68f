#pragma once

#include <cmath>

namespace orvane::platform {

// Shapes, gradients and bitmaps are placed on a grid this fine, so that moving the canvas by whole
// pixels moves its pictures bit by bit, whatever the rounding of the sums on the way.
inline constexpr double kPlacesPerPixel = 65536;

// The nearest place of a grid with so many places a pixel. Halves go up, on either side of 0, so
// that the grid is the same around every pixel.
inline double roundedTo(double places, double value) {
    return std::floor(value * places + 0.5) / places;
}

}  // namespace orvane::platform
