#include "platform/coregraphics/CGAffineTransform.h"

#include <algorithm>
#include <cmath>

namespace orvane::platform {

CGAffineTransform CGAffineTransform::makeTranslation(double tx, double ty) {
    return {1, 0, 0, 1, tx, ty};
}

CGAffineTransform CGAffineTransform::makeScale(double sx, double sy) {
    return {sx, 0, 0, sy, 0, 0};
}

CGAffineTransform CGAffineTransform::makeRotation(double radians) {
    const double sine = std::sin(radians);
    const double cosine = std::cos(radians);
    return {cosine, sine, -sine, cosine, 0, 0};
}

CGAffineTransform CGAffineTransform::translate(double dx, double dy) const {
    return {a, b, c, d, a * dx + c * dy + tx, b * dx + d * dy + ty};
}

CGAffineTransform CGAffineTransform::scale(double sx, double sy) const {
    return {a * sx, b * sx, c * sy, d * sy, tx, ty};
}

CGAffineTransform CGAffineTransform::rotate(double radians) const {
    return makeRotation(radians).concat(*this);
}

CGAffineTransform CGAffineTransform::concat(const CGAffineTransform& after) const {
    return {a * after.a + b * after.c,
            a * after.b + b * after.d,
            c * after.a + d * after.c,
            c * after.b + d * after.d,
            tx * after.a + ty * after.c + after.tx,
            tx * after.b + ty * after.d + after.ty};
}

bool CGAffineTransform::isDrawable() const {
    constexpr double kSmallest = 1e-12;
    constexpr double kLargest = 1e12;
    constexpr double kFlattest = 1e-12;  // the ratio of the two axes
    const double size = norm();
    // These comparisons are false for NaN.
    return size >= kSmallest && size <= kLargest &&
           std::abs(determinant()) >= size * size * kFlattest && std::isfinite(tx) &&
           std::isfinite(ty);
}

std::optional<CGAffineTransform> CGAffineTransform::invert() const {
    if (!isDrawable()) {
        return std::nullopt;
    }
    const double area = determinant();
    const CGAffineTransform inverse{d / area,
                                    -b / area,
                                    -c / area,
                                    a / area,
                                    (c * ty - d * tx) / area,
                                    (b * tx - a * ty) / area};
    if (!std::isfinite(inverse.tx) || !std::isfinite(inverse.ty)) {
        return std::nullopt;
    }
    return inverse;
}

CGRect CGAffineTransform::apply(const CGRect& rect) const {
    const CGPoint origin = apply(rect.origin);
    // Each side of the rectangle extends from the mapped origin in one direction or the other.
    const double acrossX = a * rect.size.width;
    const double acrossY = b * rect.size.width;
    const double downX = c * rect.size.height;
    const double downY = d * rect.size.height;
    return {{origin.x + std::min(acrossX, 0.0) + std::min(downX, 0.0),
             origin.y + std::min(acrossY, 0.0) + std::min(downY, 0.0)},
            {std::abs(acrossX) + std::abs(downX), std::abs(acrossY) + std::abs(downY)}};
}

}  // namespace orvane::platform
