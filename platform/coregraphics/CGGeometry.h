#pragma once

#include <algorithm>
#include <cmath>

namespace orvane::platform {

// A position; the owner of the value says in which coordinate space.
struct CGPoint {
    double x = 0;
    double y = 0;
    friend constexpr bool operator==(const CGPoint&, const CGPoint&) = default;
};

// A width and a height, which may be negative in a CGRect; see standardized().
struct CGSize {
    double width = 0;
    double height = 0;
    friend constexpr bool operator==(const CGSize&, const CGSize&) = default;
};

// A rectangle that extends from its origin by its size.
struct CGRect {
    CGPoint origin;
    CGSize size;
    friend constexpr bool operator==(const CGRect&, const CGRect&) = default;
};

// Whether both corners are finite. A sum that overflows makes the far corner infinite.
inline bool isFinite(const CGRect& r) {
    return std::isfinite(r.origin.x) && std::isfinite(r.origin.y) &&
           std::isfinite(r.origin.x + r.size.width) && std::isfinite(r.origin.y + r.size.height);
}

// The same rectangle with its origin at the smallest coordinates: a negative size extends from the
// origin in the opposite direction.
inline CGRect standardized(const CGRect& r) {
    return {{std::min(r.origin.x, r.origin.x + r.size.width),
             std::min(r.origin.y, r.origin.y + r.size.height)},
            {std::abs(r.size.width), std::abs(r.size.height)}};
}

}  // namespace orvane::platform
