#include "platform/coregraphics/CGPath.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>

#include "platform/coregraphics/CGRecordingContext.h"
#include "tests/raster/paths.h"

namespace orvane::platform {
namespace {

using recorded::outlineOf;

TEST(Path, BoundingBoxIgnoresControlPoints) {
    CGPath path;
    EXPECT_EQ(path.getPathBoundingBox(), std::nullopt);
    path.moveToPoint(0, 0);
    path.addCurveToPoint(0, 100, 10, 100, 10, 0);
    path.addQuadCurveToPoint(20, -20, 30, 0);
    EXPECT_EQ(path.getPathBoundingBox(), (CGRect{{0, -10}, {30, 85}}));
    path.addRelativeArc({}, 0, 0, 5, 0, INFINITY);
    EXPECT_EQ(path.getPathBoundingBox(), std::nullopt);
    EXPECT_EQ(rectPath(NAN, 0, 1, 1).getPathBoundingBox(), std::nullopt);
    EXPECT_EQ(rectPath(4, 6, -3, -4).getPathBoundingBox(), (CGRect{{1, 2}, {3, 4}}));
}

TEST(Path, TheBoundingBoxOfACurveIsThatOfItsPoints) {
    const std::array<double, 4> x{3, -20, 60, 12};
    const std::array<double, 4> y{7, 90, -50, 11};
    const auto at = [](double t, std::array<double, 4> p) {
        for (std::size_t count = 3; count > 0; --count) {
            for (std::size_t i = 0; i < count; ++i) {
                p[i] = std::lerp(p[i], p[i + 1], t);
            }
        }
        return p[0];
    };
    CGPoint least{INFINITY, INFINITY};
    CGPoint most{-INFINITY, -INFINITY};
    for (int i = 0; i <= 10000; ++i) {
        const CGPoint point{at(i / 1e4, x), at(i / 1e4, y)};
        least = {std::min(least.x, point.x), std::min(least.y, point.y)};
        most = {std::max(most.x, point.x), std::max(most.y, point.y)};
    }
    CGPath path;
    path.moveToPoint(x[0], y[0]);
    path.addCurveToPoint(x[1], y[1], x[2], y[2], x[3], y[3]);
    const CGRect box = path.getPathBoundingBox().value();
    EXPECT_NEAR(box.origin.x, least.x, 1e-5);
    EXPECT_NEAR(box.origin.y, least.y, 1e-5);
    EXPECT_NEAR(box.size.width, most.x - least.x, 1e-5);
    EXPECT_NEAR(box.size.height, most.y - least.y, 1e-5);
}

TEST(Path, ContinuesSubpathsLikeTheInterface) {
    CGPath path;
    path.addLineToPoint(1, 1);  // without a current point, the subpath begins here
    path.addLineToPoint(2, 1);
    path.closeSubpath();
    path.closeSubpath();
    path.addLineToPoint(3, 3);  // continues at the start of the closed subpath
    EXPECT_EQ(outlineOf(path).segments, "M 1 1 L 1 1 L 2 1 Z M 1 1 L 3 3");

    CGPath mixed = rectPath(0, 0, 2, 1);
    mixed.addRelativeArc({}, 0, 0, 1, 0, 0);  // a line connects it to the start of the rectangle
    mixed.addRect({{5, 5}, {1, 1}});
    EXPECT_EQ(outlineOf(mixed).segments,
              "M 0 0 L 2 0 L 2 1 L 0 1 Z M 0 0 L 1 0 M 5 5 L 6 5 L 6 6 L 5 6 Z");
}

}  // namespace
}  // namespace orvane::platform
