#pragma once

#include <cmath>
#include <concepts>
#include <limits>

namespace orvane::display::geometry {

// Whether a number is zero, or too small to be a normal number of its type. NaN is not zero.
template <std::floating_point T>
bool isZero(T value) {
    return std::abs(value) < std::numeric_limits<T>::min();
}

}  // namespace orvane::display::geometry
