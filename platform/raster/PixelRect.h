#pragma once

#include <algorithm>

namespace orvane::platform {

// A rectangle of whole pixels. The right column and the bottom row are excluded.
struct PixelRect {
    int left = 0;
    int top = 0;
    int right = 0;
    int bottom = 0;

    bool isEmpty() const { return left >= right || top >= bottom; }
    int width() const { return right - left; }
    int height() const { return bottom - top; }
    bool contains(const PixelRect& r) const {
        return left <= r.left && top <= r.top && right >= r.right && bottom >= r.bottom;
    }
    PixelRect intersected(const PixelRect& r) const {
        return {std::max(left, r.left), std::max(top, r.top), std::min(right, r.right),
                std::min(bottom, r.bottom)};
    }
    friend constexpr bool operator==(const PixelRect&, const PixelRect&) = default;
};

}  // namespace orvane::platform
