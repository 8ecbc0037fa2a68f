#include "orvane/display/geometry/Matrix.h"

#include <algorithm>
#include <cstdio>

namespace orvane::display::geometry {

Matrix Matrix::operator*(const Matrix& b) const {
    // Return an exact copy when either factor is the identity: a multiplication would turn an
    // infinite translation into NaN.
    if (isIdentity()) {
        return b;
    }
    if (b.isIdentity()) {
        return *this;
    }
    return {m00 * b.m00 + m01 * b.m10, m00 * b.m01 + m01 * b.m11, m00 * b.m02 + m01 * b.m12 + m02,
            m10 * b.m00 + m11 * b.m10, m10 * b.m01 + m11 * b.m11, m10 * b.m02 + m11 * b.m12 + m12};
}

Matrix Matrix::inverse() const {
    const double det = m00 * m11 - m01 * m10;
    if (isZero(det)) {
        return s_identity;
    }
    return {m11 / det,  -m01 / det, (m01 * m12 - m11 * m02) / det,
            -m10 / det, m00 / det,  (m10 * m02 - m00 * m12) / det};
}

Rect<double> Matrix::mapRect(const Rect<double>& r) const {
    const double right = r.x + r.width;
    const double bottom = r.y + r.height;
    const Point<double> corners[] = {mapPoint({r.x, r.y}), mapPoint({right, r.y}),
                                     mapPoint({r.x, bottom}), mapPoint({right, bottom})};
    Point<double> low = corners[0];
    Point<double> high = corners[0];
    for (const Point<double>& corner : corners) {
        low = {std::min(low.x, corner.x), std::min(low.y, corner.y)};
        high = {std::max(high.x, corner.x), std::max(high.y, corner.y)};
    }
    return {low.x, low.y, high.x - low.x, high.y - low.y};
}

void Matrix::print() const {
    std::printf("%4.2f %4.2f %4.2f\n", m00, m01, m02);
    std::printf("%4.2f %4.2f %4.2f\n", m10, m11, m12);
    std::printf("%4.2f %4.2f %4.2f\n", 0.0, 0.0, 1.0);
    std::printf("\n");
}

}  // namespace orvane::display::geometry
