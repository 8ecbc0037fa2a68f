#pragma once

#include <cmath>
#include <numbers>
#include <vector>

#include "bench/Measure.h"

// What both sides animate: things of 20 x 20 units, half rectangles and half circles, filled and
// stroked. Key frames animate each of them endlessly: a third moves, a third rotates about its
// center, a third fades.
namespace bench {

inline constexpr int kCounts[] = {100, 1000};
inline constexpr double kPass = 2;         // seconds
inline constexpr double kFrame = 1. / 60;  // seconds

enum class Motion { Move, Turn, Fade };

inline Motion motion(int i) {
    return static_cast<Motion>(i % 3);
}

// Key frames, spread evenly: places relative to home, angles in radians, opacities.
inline const std::vector<Place> kMoves = {{0, 0}, {60, 20}, {30, 70}, {0, 0}};
inline const std::vector<double> kTurns = {0, 2 * std::numbers::pi};
inline const std::vector<double> kFades = {1, 0.2, 1};

}  // namespace bench
