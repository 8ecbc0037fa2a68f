#pragma once

#include <array>

#include "orvane/commons/Export.h"
#include "platform/coregraphics/CGAffineTransform.h"

namespace orvane::platform {

// A transform for row vectors: m[row][column], with the translation in the last row.
struct ORVANE_EXPORT CATransform3D {
    std::array<std::array<double, 4>, 4> m{
        {{1, 0, 0, 0}, {0, 1, 0, 0}, {0, 0, 1, 0}, {0, 0, 0, 1}}};

    // A translation by lengths in the layer's units.
    static CATransform3D makeTranslation(double tx, double ty, double tz);
    // The same transformation in the plane of the screen.
    static CATransform3D makeAffineTransform(const CGAffineTransform& transform);
    // The transform's effect in the plane of the screen; the third dimension is dropped.
    CGAffineTransform affineTransform() const;

    // Interpolates between two transforms; `share` is 0 for the first and 1 for the second, and
    // extrapolates outside this range. The
    // components (translation, rotation in the shorter direction, scale, skew) are interpolated
    // separately, so that a rotation stays a rotation. If a transform has no such components (scale
    // 0, not finite, out of the plane), the elements of the matrices are interpolated.
    static CATransform3D interpolate(const CATransform3D& from, const CATransform3D& to,
                                     double share);
    // The rotation in the plane of the screen, in radians, from -pi to pi; 0 for a transform that
    // has no components.
    double rotation() const;
    // Return the transform with one component replaced; the angle is in radians. withRotation
    // returns a transform that has no components unchanged:
    CATransform3D withTranslationX(double tx) const;
    CATransform3D withTranslationY(double ty) const;
    CATransform3D withRotation(double radians) const;

    friend constexpr bool operator==(const CATransform3D&, const CATransform3D&) = default;
};

inline constexpr CATransform3D CATransform3DIdentity{};

}  // namespace orvane::platform
