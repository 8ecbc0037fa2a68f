#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>

#include "platform/coregraphics/CGGeometry.h"

namespace orvane::platform {

// A rectangle of whole device pixels, from left/top up to but not including right/bottom. It is
// empty if an extent is zero or negative. A view may have more pixels in a row than 32 bits count.
struct NSBackingRect {
    std::int64_t left = 0;
    std::int64_t top = 0;
    std::int64_t right = 0;
    std::int64_t bottom = 0;

    // In pixels; the extents of an empty rectangle may be negative:
    constexpr std::int64_t width() const { return right - left; }
    constexpr std::int64_t height() const { return bottom - top; }
    // Whether there is no pixel in it.
    constexpr bool isEmpty() const { return right <= left || bottom <= top; }
    // The number of its pixels.
    constexpr std::int64_t area() const { return isEmpty() ? 0 : width() * height(); }
    // Whether all pixels of the other rectangle are in this one.
    constexpr bool contains(const NSBackingRect& other) const {
        return other.left >= left && other.top >= top && other.right <= right &&
               other.bottom <= bottom;
    }
    // Whether the two have a pixel in common; neither may be empty.
    constexpr bool intersects(const NSBackingRect& other) const {
        return left < other.right && other.left < right && top < other.bottom && other.top < bottom;
    }
    // The common pixels; an empty rectangle if there are none.
    constexpr NSBackingRect intersection(const NSBackingRect& other) const {
        return {std::max(left, other.left), std::max(top, other.top), std::min(right, other.right),
                std::min(bottom, other.bottom)};
    }
    // The bounding box of both; an empty rectangle adds nothing.
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
    // The rectangle at another place, in pixels.
    constexpr NSBackingRect movedBy(std::int64_t dx, std::int64_t dy) const {
        return {left + dx, top + dy, right + dx, bottom + dy};
    }
    // The whole pixels that a rectangle in points touches, at `scale` pixels per point. NaN and
    // coordinates beyond 1e12 pixels are clamped to that range.
    static NSBackingRect around(const CGRect& points, double scale) {
        return {floorPixel(points.origin.x * scale), floorPixel(points.origin.y * scale),
                -floorPixel(-(points.origin.x + points.size.width) * scale),
                -floorPixel(-(points.origin.y + points.size.height) * scale)};
    }
    // The rectangle in points, at `scale` pixels per point.
    constexpr CGRect toPoints(double scale) const {
        return {{static_cast<double>(left) / scale, static_cast<double>(top) / scale},
                {static_cast<double>(width()) / scale, static_cast<double>(height()) / scale}};
    }
    // Rounds down; NaN and coordinates beyond 1e12 pixels are clamped to that range.
    static std::int64_t floorPixel(double pixel) {
        constexpr double reach = 1e12;
        // The comparison is false for NaN.
        return static_cast<std::int64_t>(pixel > -reach ? std::floor(std::min(pixel, reach))
                                                        : -reach);
    }

    friend constexpr bool operator==(const NSBackingRect&, const NSBackingRect&) = default;
};

}  // namespace orvane::platform
