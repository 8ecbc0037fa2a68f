#include "platform/coregraphics/CGPath.h"

#include <gtest/gtest.h>

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
