#pragma once

#include <algorithm>
#include <cmath>
#include <concepts>
#include <limits>

#include "orvane/display/geometry/Point.h"
#include "orvane/display/geometry/Size.h"

namespace orvane::display::geometry {

// A position and a size, origin at the top left. The far edges are x + width and y + height and are
// not stored. Nothing normalises a rectangle but what says so.
//
// The rules that the display tree rests on stand here once: emptiness, the union of frames, the
// intersection with a dirty rectangle, the normalising of negative extents.
template <typename T>
struct Rect : Point<T>, Size<T> {
    using Point<T>::x;
    using Point<T>::y;
    using Size<T>::width;
    using Size<T>::height;

    // Below this an extent counts as none, and two frames' numbers as equal: the smallest normal
    // double.
    static constexpr T eps = std::numeric_limits<T>::min();

    constexpr Rect() = default;
    constexpr Rect(T x_, T y_, T width_, T height_) : Point<T>(x_, y_), Size<T>(width_, height_) {}
    constexpr Rect(const Point<T>& position, const Size<T>& size)
        : Point<T>(position), Size<T>(size) {}

    // From and to any structure with an origin and a size, such as the platform's rectangle. The
    // fields are copied as they stand, negative sizes included.
    template <typename R>
    requires requires(const R& r) {
        r.origin.x;
        r.size.width;
    }
    constexpr explicit Rect(const R& r)
        : Point<T>(r.origin.x, r.origin.y), Size<T>(r.size.width, r.size.height) {}
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

    constexpr const Point<T>& position() const { return *this; }
    constexpr const Size<T>& size() const { return *this; }

    // True when width and height are both next to nothing. One side alone does not make a rectangle
    // empty: a line's frame still takes part in unions and painting.
    bool isEmpty() const { return std::abs(width) < eps && std::abs(height) < eps; }

    bool sizeDiffers(const Rect& other) const {
        return std::abs(width - other.width) >= eps || std::abs(height - other.height) >= eps;
    }
    // True when any of the four numbers differs by eps or more.
    bool differs(const Rect& other) const {
        return std::abs(x - other.x) >= eps || std::abs(y - other.y) >= eps || sizeDiffers(other);
    }

    // The same area with non-negative extents.
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

    constexpr Rect movedBy(const Point<T>& offset) const {
        return {x + offset.x, y + offset.y, width, height};
    }

    // How far from the origin a union of frames can reach. Beyond it a double no longer holds the
    // fractions of a point that painting needs, so one stray object would blur or lose its
    // neighbours.
    static constexpr T reach = T(1e9);

    // Whether every edge lies within reach; false for NaN.
    bool isWithinReach() const {
        return std::abs(x) <= reach && std::abs(y) <= reach && std::abs(x + width) <= reach &&
               std::abs(y + height) <= reach;
    }

    // The part within reach; the zero rectangle for one with a NaN.
    Rect cutToReach() const {
        if (isWithinReach()) {
            return *this;
        }
        const T right = x + width;
        const T bottom = y + height;
        if (std::isnan(x) || std::isnan(y) || std::isnan(right) || std::isnan(bottom)) {
            return {};
        }
        const T left = std::clamp(x, -reach, reach);
        const T top = std::clamp(y, -reach, reach);
        return {left, top, std::clamp(right, -reach, reach) - left,
                std::clamp(bottom, -reach, reach) - top};
    }

    // Takes `added` into this union: an empty rectangle adds nothing, and an empty union is
    // replaced.
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

    // True unless a gap lies between the two; rectangles that share an edge do touch.
    constexpr bool touches(const Rect& other) const {
        return !(x > other.x + other.width || other.x > x + width || y > other.y + other.height ||
                 other.y > y + height);
    }

    // The zero rectangle when the two do not touch; a shared edge gives zero width or height.
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

    // Edges are inside.
    constexpr bool contains(const Point<T>& p) const {
        return p.x >= x && p.y >= y && x + width >= p.x && y + height >= p.y;
    }

    friend constexpr bool operator==(const Rect&, const Rect&) = default;
};

}  // namespace orvane::display::geometry
