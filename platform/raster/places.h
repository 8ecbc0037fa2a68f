#pragma once

#include <cmath>

namespace orvane::platform {

// Shapes, gradients and images are placed on a grid with this resolution. Moving the canvas by
// whole pixels then moves its pictures exactly, regardless of rounding in the computations.
inline constexpr double kPlacesPerPixel = 65536;

// Rounds to the nearest multiple of 1 / places. Halves are rounded up on both sides of 0, so that
// the grid is the same around every pixel.
inline double roundedTo(double places, double value) {
    return std::floor(value * places + 0.5) / places;
}

}  // namespace orvane::platform
