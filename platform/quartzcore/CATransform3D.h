#pragma once

#include <array>

#include "platform/coregraphics/CGAffineTransform.h"

namespace orvane::platform {

// Row vectors are multiplied from the left: m[row][column], translation in the last row.
struct CATransform3D {
    std::array<std::array<double, 4>, 4> m{
        {{1, 0, 0, 0}, {0, 1, 0, 0}, {0, 0, 1, 0}, {0, 0, 0, 1}}};

    static CATransform3D makeTranslation(double tx, double ty, double tz);
    static CATransform3D makeAffineTransform(const CGAffineTransform& transform);
    // What is left of it on the plane of the screen, where the layers lie.
    CGAffineTransform affineTransform() const;

    friend constexpr bool operator==(const CATransform3D&, const CATransform3D&) = default;
};

inline constexpr CATransform3D CATransform3DIdentity{};

}  // namespace orvane::platform
