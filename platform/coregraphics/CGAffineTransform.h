#pragma once

#include <optional>

#include "platform/coregraphics/CGGeometry.h"

namespace orvane::platform {

// x' = a x + c y + tx, y' = b x + d y + ty. The operations compose before the transform, as the
// drawing operations of the same name do: t.rotate(r) rotates first, then applies t.
struct CGAffineTransform {
    double a = 1, b = 0, c = 0, d = 1, tx = 0, ty = 0;

    static CGAffineTransform makeTranslation(double tx, double ty);
    static CGAffineTransform makeScale(double sx, double sy);
    static CGAffineTransform makeRotation(double radians);

    CGAffineTransform translate(double tx, double ty) const;
    CGAffineTransform scale(double sx, double sy) const;
    CGAffineTransform rotate(double radians) const;
    // This transform first, then `after`.
    CGAffineTransform concat(const CGAffineTransform& after) const;
    // None for one that cannot be undone: scale 0, or numbers that are not finite.
    std::optional<CGAffineTransform> invert() const;

    CGPoint apply(CGPoint point) const;
    // The box around the mapped corners.
    CGRect apply(const CGRect& rect) const;

    friend constexpr bool operator==(const CGAffineTransform&, const CGAffineTransform&) = default;
};

}  // namespace orvane::platform
