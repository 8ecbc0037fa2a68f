#include <gtest/gtest.h>

#include <cmath>

#include "orvane/display/geometry/Matrix.h"
#include "orvane/display/geometry/rounding.h"
#include "platform/coregraphics/CGAffineTransform.h"

namespace orvane::display::geometry {
namespace {

using Box = Rect<double>;

TEST(Geometry, ConversionsFromAndToThePlatformKeepAllNumbers) {
    const auto rect = static_cast<platform::CGRect>(Box(1, 2, -3, 4));
    EXPECT_EQ(rect, (platform::CGRect{{1, 2}, {-3, 4}}));
    EXPECT_EQ(Box(rect), Box(1, 2, -3, 4));
    const Matrix matrix(1, 2, 3, 4, 5, 6);
    const auto transform = static_cast<platform::CGAffineTransform>(matrix);
    EXPECT_EQ(transform, (platform::CGAffineTransform{1, 4, 2, 5, 3, 6}));
    EXPECT_EQ(Matrix(transform), matrix);
}

TEST(Geometry, RoundsPositionsToNearestAndSizesUp) {
    EXPECT_EQ(toInt(Point<double>(2.5, 3.5)), Point<double>(2, 4));
    EXPECT_EQ(toInt(Size<double>(2.1, 3.0)), Size<double>(3, 3));
    EXPECT_TRUE(std::signbit(toInt(Size<double>(-0.5, 0)).width));
    EXPECT_EQ(toInt(Box(10.4, 10.6, -3.2, 5.0)), Box(7, 11, 3, 5));
    // The right edge is short: position and size are rounded separately.
    EXPECT_EQ(toInt(Box(0.4, 0, 2, 1)), Box(0, 0, 2, 1));
}

TEST(Geometry, AProductAppliesTheRightFactorFirst) {
    Matrix move(9, 9, 9, 9, 9, 9), stretch(9, 9, 9, 9, 9, 9);
    move.setTranslate(10, 0);  // replaces all elements
    stretch.setScale(2, 3);
    EXPECT_EQ((move * stretch).mapPoint({1, 1}), Point<double>(12, 3));
    EXPECT_EQ((stretch * move).mapPoint({1, 1}), Point<double>(22, 3));

    // A product with the identity is an exact copy, even of infinite elements.
    const Matrix wild(INFINITY, 0, INFINITY, 0, 1, 0);
    EXPECT_EQ(wild * Matrix::s_identity, wild);
    EXPECT_EQ(Matrix::s_identity * wild, wild);

    // A rectangle is mapped to the box around its image.
    EXPECT_EQ(Matrix(1, -1, 0, 1, 1, 0).mapRect({0, 0, 10, 2}), Box(-2, 0, 12, 12));
}

TEST(Geometry, TheInverseUndoesAndThatOfASingularMatrixIsTheIdentity) {
    const Matrix matrix(2, 1, 5, -1, 3, 7);
    const Point<double> point = (matrix.inverse() * matrix).mapPoint({3, 4});
    EXPECT_NEAR(point.x, 3, 1e-12);
    EXPECT_NEAR(point.y, 4, 1e-12);
    EXPECT_TRUE(Matrix(0, 0, 0, 0, 1, 0).inverse().isIdentity());
    const Matrix broken(NAN, 0, 0, 0, 1, 0);
    EXPECT_NE(broken, broken);
}

TEST(Geometry, AUnionSkipsEmptyAndInvalidRectangles) {
    const struct {
        Box sum, added, expected;
    } cases[] = {
        {{}, {5, 5, 0, 0}, {5, 5, 0, 0}},      // the union is still empty
        {{}, {10, 10, 0, 4}, {10, 10, 0, 4}},  // not empty: it has a height
        {{10, 10, 0, 4}, {0, 12, 2, 4}, {0, 10, 10, 6}},
        {{0, 10, 10, 6}, {-100, -100, 0, 0}, {0, 10, 10, 6}},
        {{0, 0, 10, 10}, {NAN, 0, 5, 5}, {0, 0, 10, 10}},
        {{0, 0, 10, 10}, {0, 0, INFINITY, 5}, {0, 0, Box::kReach, 10}},
        {{}, {-1e300, 0, 2e300, 1}, {-Box::kReach, 0, 2 * Box::kReach, 1}},
    };
    for (auto [sum, added, expected] : cases) {
        sum.unite(added);
        EXPECT_EQ(sum, expected) << added.x << " " << added.width;
        EXPECT_EQ(sum.isEmpty(), expected.width == 0 && expected.height == 0);
    }
}

TEST(Geometry, RectanglesWithACommonEdgeTouch) {
    const Box box(0, 0, 10, 10);
    EXPECT_EQ(box.intersection({10, 2, 5, 5}), Box(10, 2, 0, 5));
    EXPECT_FALSE(box.intersection({10, 2, 5, 5}).isEmpty());
    EXPECT_TRUE(box.intersection({10, 10, 5, 5}).isEmpty());
    EXPECT_EQ(box.intersection({11, 0, 5, 5}), Box());
    EXPECT_TRUE(box.contains({10, 10}));
    EXPECT_FALSE(box.contains({10.001, 10}));
}

}  // namespace
}  // namespace orvane::display::geometry
