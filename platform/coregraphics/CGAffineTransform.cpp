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

std::optional<CGAffineTransform> CGAffineTransform::invert() const {
    const double determinant = a * d - b * c;
    const CGAffineTransform inverse{d / determinant,
                                    -b / determinant,
                                    -c / determinant,
                                    a / determinant,
                                    (c * ty - d * tx) / determinant,
                                    (b * tx - a * ty) / determinant};
    // Division by next to nothing overflows, and so does everything computed from it.
    const double size = std::abs(inverse.a) + std::abs(inverse.b) + std::abs(inverse.c) +
                        std::abs(inverse.d) + std::abs(inverse.tx) + std::abs(inverse.ty);
    if (!std::isfinite(size) || !std::isfinite(determinant)) {
        return std::nullopt;
    }
    return inverse;
}

CGPoint CGAffineTransform::apply(CGPoint point) const {
    return {a * point.x + c * point.y + tx, b * point.x + d * point.y + ty};
}

CGRect CGAffineTransform::apply(const CGRect& rect) const {
    const CGPoint origin = apply(rect.origin);
    // Each axis of the rectangle reaches from the mapped origin to one side or the other.
    const double acrossX = a * rect.size.width;
    const double acrossY = b * rect.size.width;
    const double downX = c * rect.size.height;
    const double downY = d * rect.size.height;
    return {{origin.x + std::min(acrossX, 0.0) + std::min(downX, 0.0),
             origin.y + std::min(acrossY, 0.0) + std::min(downY, 0.0)},
            {std::abs(acrossX) + std::abs(downX), std::abs(acrossY) + std::abs(downY)}};
}

}  // namespace orvane::platform
