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

// Whether there is no point in a rectangle. True for one with a NaN or a negative size.
constexpr bool isEmpty(const CGRect& r) {
    return !(r.size.width > 0 && r.size.height > 0);
}

// Whether a point is in a rectangle; its right and bottom edges are outside. False for a NaN, and
// for a negative size.
constexpr bool contains(const CGRect& r, CGPoint point) {
    return point.x >= r.origin.x && point.y >= r.origin.y && point.x < r.origin.x + r.size.width &&
           point.y < r.origin.y + r.size.height;
}

// The smallest rectangle around two rectangles without negative sizes.
constexpr CGRect united(const CGRect& a, const CGRect& b) {
    const CGPoint origin{std::min(a.origin.x, b.origin.x), std::min(a.origin.y, b.origin.y)};
    return {origin,
            {std::max(a.origin.x + a.size.width, b.origin.x + b.size.width) - origin.x,
             std::max(a.origin.y + a.size.height, b.origin.y + b.size.height) - origin.y}};
}

// The common part of two rectangles without negative sizes. Its size is zero or negative where
// there is none.
constexpr CGRect intersection(const CGRect& a, const CGRect& b) {
    const CGPoint origin{std::max(a.origin.x, b.origin.x), std::max(a.origin.y, b.origin.y)};
    return {origin,
            {std::min(a.origin.x + a.size.width, b.origin.x + b.size.width) - origin.x,
             std::min(a.origin.y + a.size.height, b.origin.y + b.size.height) - origin.y}};
}

}  // namespace orvane::platform
