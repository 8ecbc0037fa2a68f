#include <gtest/gtest.h>

#include <cmath>

#include "orvane/display/geometry/Matrix.h"
#include "orvane/display/geometry/rounding.h"

namespace orvane::display::geometry {
namespace {

using R = Rect<double>;

struct PlatformRect {
    struct {
        double x, y;
    } origin;
    struct {
        double width, height;
    } size;
};
struct PlatformTransform {
    double a, b, c, d, tx, ty;
};

TEST(Geometry, PlatformShapesKeepTheirNumbers) {
    const auto rect = static_cast<PlatformRect>(R(1, 2, -3, 4));
    EXPECT_EQ(rect.size.width, -3);
    EXPECT_EQ(R(rect), R(1, 2, -3, 4));

    const Matrix matrix(1, 2, 3, 4, 5, 6);
    const auto transform = static_cast<PlatformTransform>(matrix);
    EXPECT_EQ(transform.a, 1);
    EXPECT_EQ(transform.b, 4);
    EXPECT_EQ(transform.c, 2);
    EXPECT_EQ(transform.tx, 3);
    EXPECT_EQ(Matrix(transform), matrix);
}

TEST(Geometry, RoundingOfEachKind) {
    EXPECT_EQ(toInt(Point<double>(2.5, 3.5)), Point<double>(2, 4));
    EXPECT_EQ(toInt(Size<double>(2.1, 3.0)), Size<double>(3, 3));
    EXPECT_TRUE(std::signbit(toInt(Size<double>(-0.5, 0)).width));
    EXPECT_EQ(toInt(R(10.4, 10.6, -3.2, 5.0)), R(7, 11, 3, 5));
    // The far edge falls short: position and size are rounded on their own.
    EXPECT_EQ(toInt(R(0.4, 0, 2, 1)), R(0, 0, 2, 1));
    EXPECT_DOUBLE_EQ(toRadians(180), 3.141592653589793);
}

TEST(Geometry, ProductAppliesTheRightFactorFirst) {
    Matrix move(9, 9, 9, 9, 9, 9), stretch(9, 9, 9, 9, 9, 9);
    move.setTranslate(10, 0);  // what was there is replaced
    stretch.setScale(2, 3);
    EXPECT_EQ((move * stretch).mapPoint({1, 1}), Point<double>(12, 3));
    EXPECT_EQ((stretch * move).mapPoint({1, 1}), Point<double>(22, 3));

    // Identity factors give bit-for-bit copies, whatever the other holds.
    const Matrix wild(INFINITY, 0, INFINITY, 0, 1, 0);
    EXPECT_EQ(wild * Matrix::s_identity, wild);
    EXPECT_EQ(Matrix::s_identity * wild, wild);

    Matrix none(9, 9, 9, 9, 9, 9);
    none.setScale(1, 1);
    EXPECT_TRUE(none.isIdentity());
    // A rectangle becomes the box around it.
    EXPECT_EQ(Matrix(0, -1, 0, 1, 0, 0).mapRect({0, 0, 10, 2}), R(-2, 0, 2, 10));
    EXPECT_EQ(Matrix(1, -1, 0, 1, 1, 0).mapRect({0, 0, 10, 2}), R(-2, 0, 12, 12));
}

TEST(Geometry, InverseUndoesAndASingularMatrixHasTheIdentity) {
    const Matrix matrix(2, 1, 5, -1, 3, 7);
    const Point<double> point = (matrix.inverse() * matrix).mapPoint({3, 4});
    EXPECT_NEAR(point.x, 3, 1e-12);
    EXPECT_NEAR(point.y, 4, 1e-12);
    EXPECT_TRUE(Matrix(0, 0, 0, 0, 1, 0).inverse().isIdentity());
    const Matrix broken(NAN, 0, 0, 0, 1, 0);
    EXPECT_NE(broken, broken);
}

TEST(Geometry, UnionTakesEveryRectangleThatHasAnExtentAndIsOne) {
    const struct {
        R sum, added, expected;
    } cases[] = {
        {{}, {5, 5, 0, 0}, {5, 5, 0, 0}},      // still empty
        {{}, {10, 10, 0, 4}, {10, 10, 0, 4}},  // one side is enough
        {{10, 10, 0, 4}, {0, 12, 2, 4}, {0, 10, 10, 6}},
        {{0, 10, 10, 6}, {-100, -100, 0, 0}, {0, 10, 10, 6}},
        {{0, 0, 10, 10}, {NAN, 0, 5, 5}, {0, 0, 10, 10}},
        {{0, 0, 10, 10}, {0, 0, INFINITY, 5}, {0, 0, R::reach, 10}},
        {{}, {-1e300, 0, 2e300, 1}, {-R::reach, 0, 2 * R::reach, 1}},
    };
    for (auto [sum, added, expected] : cases) {
        sum.unite(added);
        EXPECT_EQ(sum, expected) << added.x << " " << added.width;
        EXPECT_EQ(sum.isEmpty(), expected.width == 0 && expected.height == 0);
    }
}

TEST(Geometry, RectanglesThatShareAnEdgeTouch) {
    const R box(0, 0, 10, 10);
    EXPECT_EQ(box.intersection({10, 2, 5, 5}), R(10, 2, 0, 5));
    EXPECT_FALSE(box.intersection({10, 2, 5, 5}).isEmpty());
    EXPECT_TRUE(box.intersection({10, 10, 5, 5}).isEmpty());
    EXPECT_EQ(box.intersection({11, 0, 5, 5}), R());
    EXPECT_TRUE(box.contains({10, 10}));
    EXPECT_FALSE(box.contains({10.001, 10}));
}

}  // namespace
}  // namespace orvane::display::geometry
