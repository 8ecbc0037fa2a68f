#include "platform/gtk/toGskTransform.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <optional>

#include "platform/coregraphics/CGAffineTransform.h"

namespace orvane::platform {

namespace {

float toDegrees(double radians) {
    return static_cast<float>(radians * 180 / std::numbers::pi);
}

}  // namespace

bool canShow(const CGAffineTransform& t) {
    constexpr double largest = 1e6;
    const std::optional<CGAffineTransform> inverse = t.invert();
    return inverse &&
           std::max({t.norm(), std::abs(t.tx), std::abs(t.ty), inverse->norm()}) <= largest;
}

// GTK's renderers draw faster when they know that a transform is two-dimensional, which a matrix
// does not tell them. So the transform is decomposed into a translation, a rotation, a skew and a
// scale.
GskTransform* toGskTransform(const CGAffineTransform& t) {
    const graphene_point_t offset = {static_cast<float>(t.tx), static_cast<float>(t.ty)};
    GskTransform* transform = gsk_transform_translate(nullptr, &offset);
    const double scaleX = std::hypot(t.a, t.b);
    const double scaleY = (t.a * t.d - t.b * t.c) / scaleX;
    const double skew = (t.a * t.c + t.b * t.d) / (scaleX * scaleY);
    if (t.b != 0 || t.a < 0) {
        transform = gsk_transform_rotate(transform, toDegrees(std::atan2(t.b, t.a)));
    }
    if (skew != 0) {
        transform = gsk_transform_skew(transform, toDegrees(std::atan(skew)), 0);
    }
    if (scaleX != 1 || scaleY != 1) {
        transform =
            gsk_transform_scale(transform, static_cast<float>(scaleX), static_cast<float>(scaleY));
    }
    return transform;
}

}  // namespace orvane::platform
