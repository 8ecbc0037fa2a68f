#include "platform/quartzcore/CATransform3D.h"

#include <cmath>
#include <numbers>
#include <optional>

namespace orvane::platform {

namespace {

// The components of a transform of the plane, in the order of application: scale, skew of the y
// axis along the x axis, rotation, translation.
struct Components {
    double scaleX;
    double scaleY;
    double skew;
    double rotation;
    double tx, ty, tz;
};

bool liesInPlane(const CATransform3D& t) {
    return t.m[0][2] == 0 && t.m[0][3] == 0 && t.m[1][2] == 0 && t.m[1][3] == 0 && t.m[2][0] == 0 &&
           t.m[2][1] == 0 && t.m[2][2] == 1 && t.m[2][3] == 0 && t.m[3][3] == 1;
}

std::optional<Components> decompose(const CATransform3D& t) {
    const double a = t.m[0][0];
    const double b = t.m[0][1];
    const double c = t.m[1][0];
    const double d = t.m[1][1];
    const double determinant = a * d - b * c;
    if (!liesInPlane(t) || !std::isfinite(determinant) || determinant == 0) {
        return std::nullopt;
    }
    // For a mirrored transform, the axis that already points backward gets the negative scale, so
    // that mirroring left to right is not also a rotation.
    const double sign = determinant < 0 && a < d ? -1 : 1;
    const double scaleX = sign * std::hypot(a, b);
    const double cosine = a / scaleX;
    const double sine = b / scaleX;
    return Components{scaleX,
                      d * cosine - c * sine,
                      c * cosine + d * sine,
                      std::atan2(sine, cosine),
                      t.m[3][0],
                      t.m[3][1],
                      t.m[3][2]};
}

CATransform3D compose(const Components& parts) {
    const double cosine = std::cos(parts.rotation);
    const double sine = std::sin(parts.rotation);
    CATransform3D t;
    t.m[0][0] = parts.scaleX * cosine;
    t.m[0][1] = parts.scaleX * sine;
    t.m[1][0] = parts.skew * cosine - parts.scaleY * sine;
    t.m[1][1] = parts.skew * sine + parts.scaleY * cosine;
    t.m[3] = {parts.tx, parts.ty, parts.tz, 1};
    return t;
}

}  // namespace

CATransform3D CATransform3D::makeTranslation(double tx, double ty, double tz) {
    CATransform3D t;
    t.m[3] = {tx, ty, tz, 1};
    return t;
}

CATransform3D CATransform3D::makeAffineTransform(const CGAffineTransform& transform) {
    CATransform3D t;
    t.m[0] = {transform.a, transform.b, 0, 0};
    t.m[1] = {transform.c, transform.d, 0, 0};
    t.m[3] = {transform.tx, transform.ty, 0, 1};
    return t;
}

CGAffineTransform CATransform3D::affineTransform() const {
    return {m[0][0], m[0][1], m[1][0], m[1][1], m[3][0], m[3][1]};
}

CATransform3D CATransform3D::interpolate(const CATransform3D& from, const CATransform3D& to,
                                         double share) {
    // At the ends, the result equals the argument exactly.
    if (share == 0 || from == to) {
        return from;
    }
    if (share == 1) {
        return to;
    }
    const std::optional<Components> first = decompose(from);
    const std::optional<Components> last = decompose(to);
    if (!first || !last) {
        CATransform3D t;
        for (std::size_t row = 0; row < 4; ++row) {
            for (std::size_t column = 0; column < 4; ++column) {
                t.m[row][column] = std::lerp(from.m[row][column], to.m[row][column], share);
            }
        }
        return t;
    }
    const double turn = std::remainder(last->rotation - first->rotation, 2 * std::numbers::pi);
    return compose({std::lerp(first->scaleX, last->scaleX, share),
                    std::lerp(first->scaleY, last->scaleY, share),
                    std::lerp(first->skew, last->skew, share), first->rotation + turn * share,
                    std::lerp(first->tx, last->tx, share), std::lerp(first->ty, last->ty, share),
                    std::lerp(first->tz, last->tz, share)});
}

double CATransform3D::rotation() const {
    const std::optional<Components> parts = decompose(*this);
    return parts ? parts->rotation : 0;
}

CATransform3D CATransform3D::withTranslationX(double tx) const {
    CATransform3D t = *this;
    t.m[3][0] = tx;
    return t;
}

CATransform3D CATransform3D::withTranslationY(double ty) const {
    CATransform3D t = *this;
    t.m[3][1] = ty;
    return t;
}

CATransform3D CATransform3D::withRotation(double radians) const {
    std::optional<Components> parts = decompose(*this);
    if (!parts) {
        return *this;
    }
    parts->rotation = radians;
    return compose(*parts);
}

}  // namespace orvane::platform
