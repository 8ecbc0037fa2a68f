#pragma once

#include <array>

#include "orvane/commons/Export.h"
#include "platform/coregraphics/CGAffineTransform.h"

namespace orvane::platform {

// Row vectors are multiplied from the left: m[row][column], translation in the last row.
struct ORVANE_EXPORT CATransform3D {
    std::array<std::array<double, 4>, 4> m{
        {{1, 0, 0, 0}, {0, 1, 0, 0}, {0, 0, 1, 0}, {0, 0, 0, 1}}};

    static CATransform3D makeTranslation(double tx, double ty, double tz);
    static CATransform3D makeAffineTransform(const CGAffineTransform& transform);
    // What is left of it on the plane of the screen, where the layers lie.
    CGAffineTransform affineTransform() const;

    // Between two transforms, `share` of the way from the first: their parts (translation, rotation
    // the shorter way round, scale, skew) are led over, so that a turn stays a turn. Two that have
    // no such parts (scale 0, not finite, out of the plane) are led over number by number.
    static CATransform3D interpolate(const CATransform3D& from, const CATransform3D& to,
                                     double share);
    // The same transform with one of its parts replaced. What cannot be taken apart stays as it is.
    CATransform3D withTranslationX(double tx) const;
    CATransform3D withTranslationY(double ty) const;
    CATransform3D withRotation(double radians) const;

    friend constexpr bool operator==(const CATransform3D&, const CATransform3D&) = default;
};

inline constexpr CATransform3D CATransform3DIdentity{};

}  // namespace orvane::platform
