#include "platform/quartzcore/CATransform3D.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>
#include <string>

using namespace orvane::platform;

namespace {

constexpr double kPi = std::numbers::pi;

CATransform3D affine(const CGAffineTransform& t) {
    return CATransform3D::makeAffineTransform(t);
}
CATransform3D turn(double angle) {
    return affine(CGAffineTransform::makeRotation(angle));
}

}  // namespace

TEST(CATransform3D, IsInterpolatedByComponents) {
    const CGAffineTransform mirror{-1, 0, 0, 1, 0, 0};
    const struct {
        std::string what;
        CATransform3D from, to;
        double share;
        CATransform3D expected;
    } cases[] = {
        {"a rotation stays a rotation", turn(0), turn(1), 0.5, turn(0.5)},
        {"in the shorter direction", turn(3), turn(-3), 0.5, turn(kPi)},
        {"half a turn", turn(0), turn(kPi), 0.5, turn(kPi / 2)},
        {"translation, in depth too", CATransform3D::makeTranslation(10, 20, 1),
         CATransform3D::makeTranslation(30, 0, 1), 0.25, CATransform3D::makeTranslation(15, 15, 1)},
        {"a rotation with a scale", affine(CGAffineTransform::makeRotation(0.2).scale(1, 1)),
         affine(CGAffineTransform::makeRotation(0.6).scale(3, 2)), 0.5,
         affine(CGAffineTransform::makeRotation(0.4).scale(2, 1.5))},
        {"skew", affine({1, 0, 0, 1, 0, 0}), affine({1, 0, 2, 1, 0, 0}), 0.5,
         affine({1, 0, 1, 1, 0, 0})},
        {"mirrored without a rotation", CATransform3DIdentity, affine(mirror), 0.75,
         affine({-0.5, 0, 0, 1, 0, 0})},
        {"no components: element by element", CATransform3DIdentity, affine({0, 0, 0, 0, 8, 0}),
         0.5, affine({0.5, 0, 0, 0.5, 4, 0})},
        {"beyond the end", turn(0), turn(1), 1.25, turn(1.25)},
        {"before the beginning", CATransform3D::makeTranslation(10, 20, 1),
         CATransform3D::makeTranslation(20, 20, 1), -0.5, CATransform3D::makeTranslation(5, 20, 1)},
        {"the ends are exact", turn(0.1), turn(1), 1, turn(1)},
    };
    for (const auto& c : cases) {
        const CATransform3D shown = CATransform3D::interpolate(c.from, c.to, c.share);
        for (std::size_t i = 0; i < 16; ++i) {
            EXPECT_NEAR(shown.m[i / 4][i % 4], c.expected.m[i / 4][i % 4], 1e-12) << c.what;
        }
    }
}

// An animation of rotation uses it; CAAnimationTest shows the other replacements.
TEST(CATransform3D, ATransformWithoutComponentsKeepsItsRotation) {
    const CATransform3D flat = affine({0, 0, 0, 0, 1, 1});
    EXPECT_EQ(flat.withRotation(1), flat);
    for (const std::size_t i : {2U, 3U, 6U, 7U, 8U, 9U, 10U, 11U, 15U}) {
        CATransform3D inSpace;
        inSpace.m[i / 4][i % 4] += 0.5;
        EXPECT_EQ(inSpace.withRotation(1), inSpace) << i;
    }
}
