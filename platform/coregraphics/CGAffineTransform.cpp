#include "platform/coregraphics/CGAffineTransform.h"

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

}  // namespace orvane::platform
