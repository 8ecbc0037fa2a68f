#pragma once

#include <algorithm>
#include <cmath>
#include <optional>

#include "orvane/commons/Export.h"
#include "platform/coregraphics/CGGeometry.h"

namespace orvane::platform {

// An affine transformation: x' = a x + c y + tx, y' = b x + d y + ty.
//
// translate, scale and rotate return a transformation that applies the named operation first and
// this transformation second, like the drawing operations of the same name.
struct ORVANE_EXPORT CGAffineTransform {
    double a = 1, b = 0, c = 0, d = 1, tx = 0, ty = 0;

    // Return a transformation that does one thing; the angle is in radians:
    static CGAffineTransform makeTranslation(double tx, double ty);
    static CGAffineTransform makeScale(double sx, double sy);
    static CGAffineTransform makeRotation(double radians);

    // Return this transformation with an operation before it; see above:
    CGAffineTransform translate(double tx, double ty) const;
    CGAffineTransform scale(double sx, double sy) const;
    CGAffineTransform rotate(double radians) const;
    // Applies this transformation first, then `after`.
    CGAffineTransform concat(const CGAffineTransform& after) const;

    // The largest absolute value among a, b, c and d.
    double norm() const { return std::max({std::abs(a), std::abs(b), std::abs(c), std::abs(d)}); }
    // The factor by which areas grow, negative if the transformation mirrors.
    double determinant() const { return a * d - b * c; }
    // Without the translation.
    CGAffineTransform linear() const { return {a, b, c, d, 0, 0}; }

    // Whether content can be drawn under this transformation: all numbers are finite, and the
    // result is neither singular nor so close to singular that nothing visible remains. Every
    // canvas and window draws nothing under any other transformation.
    bool isDrawable() const;
    // The inverse; none unless the transformation is drawable.
    std::optional<CGAffineTransform> invert() const;

    // Maps a point.
    constexpr CGPoint apply(CGPoint point) const {
        return {a * point.x + c * point.y + tx, b * point.x + d * point.y + ty};
    }
    // The smallest axis-aligned box around the mapped rectangle.
    CGRect apply(const CGRect& rect) const;

    friend constexpr bool operator==(const CGAffineTransform&, const CGAffineTransform&) = default;
};

}  // namespace orvane::platform
