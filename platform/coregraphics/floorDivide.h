#pragma once

namespace orvane::platform {

// The quotient of two integers, rounded down. `divisor` is positive.
template <typename Integer>
constexpr Integer floorDivide(Integer value, Integer divisor) {
    return value / divisor - (value % divisor < 0 ? 1 : 0);
}

}  // namespace orvane::platform
