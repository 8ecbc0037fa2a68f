#pragma once

#include <algorithm>
#include <cstdint>

namespace orvane::platform {

// A rectangle of whole device pixels, from left/top up to but not including right/bottom. Empty
// when either extent is not above zero.
struct NSBackingRect {
    int left = 0;
    int top = 0;
    int right = 0;
    int bottom = 0;

    constexpr int width() const { return right - left; }
    constexpr int height() const { return bottom - top; }
    constexpr bool isEmpty() const { return right <= left || bottom <= top; }
    constexpr std::int64_t area() const {
        return isEmpty() ? 0 : std::int64_t{width()} * std::int64_t{height()};
    }
    constexpr bool contains(const NSBackingRect& other) const {
        return other.left >= left && other.top >= top && other.right <= right &&
               other.bottom <= bottom;
    }
    constexpr bool intersects(const NSBackingRect& other) const {
        return left < other.right && other.left < right && top < other.bottom && other.top < bottom;
    }
    constexpr NSBackingRect intersection(const NSBackingRect& other) const {
        return {std::max(left, other.left), std::max(top, other.top), std::min(right, other.right),
                std::min(bottom, other.bottom)};
    }
    // The box around both; an empty one adds nothing.
    constexpr NSBackingRect united(const NSBackingRect& other) const {
        if (isEmpty()) {
            return other;
        }
        if (other.isEmpty()) {
            return *this;
        }
        return {std::min(left, other.left), std::min(top, other.top), std::max(right, other.right),
                std::max(bottom, other.bottom)};
    }
    constexpr NSBackingRect movedBy(int dx, int dy) const {
        return {left + dx, top + dy, right + dx, bottom + dy};
    }
    friend constexpr bool operator==(const NSBackingRect&, const NSBackingRect&) = default;
};

}  // namespace orvane::platform
