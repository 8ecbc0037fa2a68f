#pragma once

#include <algorithm>
#include <cmath>
#include <concepts>
#include <limits>

#include "orvane/display/geometry/Point.h"
#include "orvane/display/geometry/Size.h"
#include "orvane/display/geometry/isZero.h"

namespace orvane::display::geometry {

// A rectangle: the position of its top left corner and its size. Its right and bottom edges are x +
// width and y + height. A size may be negative; only the functions that say so normalize it.
//
// This class is the only place for the rules that the display tree depends on: emptiness, the union
// of frames, the intersection with a dirty rectangle, and normalization.
template <typename T>
struct Rect : Point<T>, Size<T> {
    using Point<T>::x;
    using Point<T>::y;
    using Size<T>::width;
    using Size<T>::height;

    // The smallest normal number. Numbers that differ by less count as equal.
    static constexpr T kEpsilon = std::numeric_limits<T>::min();

    // All zero.
    constexpr Rect() = default;
    // Position and size as four numbers.
    constexpr Rect(T x_, T y_, T width_, T height_) : Point<T>(x_, y_), Size<T>(width_, height_) {}
    // Position and size.
    constexpr Rect(const Point<T>& position, const Size<T>& size)
        : Point<T>(position), Size<T>(size) {}

    // Converts from any structure with an origin and a size, such as the platform's rectangle. The
    // numbers are copied unchanged, negative sizes included.
    template <typename R>
    requires requires(const R& r) {
        r.origin.x;
        r.size.width;
    }
    constexpr explicit Rect(const R& r)
        : Point<T>(r.origin.x, r.origin.y), Size<T>(r.size.width, r.size.height) {}
    // Converts to such a structure.
    template <typename R>
    requires(requires(R r) {
        r.origin.x;
        r.size.width;
    } && std::default_initializable<R>) constexpr explicit
    operator R() const {
        R r;
        r.origin.x = x;
        r.origin.y = y;
        r.size.width = width;
        r.size.height = height;
        return r;
    }

    // The top left corner.
    constexpr const Point<T>& position() const { return *this; }
    // The width and the height.
    constexpr const Size<T>& size() const { return *this; }

    // Whether both width and height are zero; see isZero. A rectangle that is empty in one
    // direction only is not empty: the frame of a horizontal line takes part in unions and
    // painting.
    bool isEmpty() const { return isZero(width) && isZero(height); }

    // Whether the width or the height differs by kEpsilon or more.
    bool sizeDiffers(const Rect& other) const {
        return std::abs(width - other.width) >= kEpsilon ||
               std::abs(height - other.height) >= kEpsilon;
    }
    // Whether any of the four numbers differs by kEpsilon or more.
    bool differs(const Rect& other) const {
        return std::abs(x - other.x) >= kEpsilon || std::abs(y - other.y) >= kEpsilon ||
               sizeDiffers(other);
    }

    // Returns the same area with a width and height that are not negative.
    constexpr Rect normalized() const {
        Rect r = *this;
        if (r.width < 0) {
            r.x += r.width;
            r.width = -r.width;
        }
        if (r.height < 0) {
            r.y += r.height;
            r.height = -r.height;
        }
        return r;
    }

    // Returns the rectangle moved by an offset.
    constexpr Rect movedBy(const Point<T>& offset) const {
        return {x + offset.x, y + offset.y, width, height};
    }

    // How far from the origin a union of frames can extend, in points. At larger coordinates a
    // double does not have the fractions of a point that painting needs, so that one stray object
    // would blur or remove its neighbors.
    static constexpr T kReach = T(1e9);

    // Whether every edge lies within the reach. False for a rectangle with a NaN.
    bool isWithinReach() const {
        return std::abs(x) <= kReach && std::abs(y) <= kReach && std::abs(x + width) <= kReach &&
               std::abs(y + height) <= kReach;
    }

    // Returns the part within the reach; the zero rectangle for one with a NaN.
    Rect cutToReach() const {
        if (isWithinReach()) {
            return *this;
        }
        const T right = x + width;
        const T bottom = y + height;
        if (std::isnan(x) || std::isnan(y) || std::isnan(right) || std::isnan(bottom)) {
            return {};
        }
        const T left = std::clamp(x, -kReach, kReach);
        const T top = std::clamp(y, -kReach, kReach);
        return {left, top, std::clamp(right, -kReach, kReach) - left,
                std::clamp(bottom, -kReach, kReach) - top};
    }

    // Extends this rectangle to the union with `added`. An empty `added` has no effect; an empty
    // union is replaced by `added`. `added` is first cut to the reach.
    void unite(const Rect& added) {
        const Rect other = added.cutToReach();
        if (isEmpty()) {
            *this = other;
            return;
        }
        if (other.isEmpty()) {
            return;
        }
        const T right = std::max(x + width, other.x + other.width);
        const T bottom = std::max(y + height, other.y + other.height);
        x = std::min(x, other.x);
        y = std::min(y, other.y);
        width = right - x;
        height = bottom - y;
    }

    // Whether no gap lies between the two rectangles. Rectangles that share an edge touch.
    constexpr bool touches(const Rect& other) const {
        return !(x > other.x + other.width || other.x > x + width || y > other.y + other.height ||
                 other.y > y + height);
    }

    // Returns the common part: the zero rectangle when the two do not touch, a rectangle of zero
    // width or height when they share an edge.
    constexpr Rect intersection(const Rect& other) const {
        if (!touches(other)) {
            return {};
        }
        const T left = std::max(x, other.x);
        const T top = std::max(y, other.y);
        return Rect(left, top, std::min(x + width, other.x + other.width) - left,
                    std::min(y + height, other.y + other.height) - top)
            .normalized();
    }

    // Whether a point lies inside. The edges belong to the rectangle.
    constexpr bool contains(const Point<T>& p) const {
        return p.x >= x && p.y >= y && x + width >= p.x && y + height >= p.y;
    }

    friend constexpr bool operator==(const Rect&, const Rect&) = default;
};

}  // namespace orvane::display::geometry
