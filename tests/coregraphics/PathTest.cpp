#include "platform/coregraphics/CGPath.h"

#include <gtest/gtest.h>

#include <cmath>

#include "platform/coregraphics/CGRecordingContext.h"
#include "tests/raster/paths.h"

namespace orvane::platform {
namespace {

std::string segmentsOf(const CGPath& path) {
    return recorded::outlineOf(path).segments;
}

TEST(Path, TheBoxGoesAroundTheCurvesThemselves) {
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

TEST(Path, KeepsSubpathsWhole) {
    CGPath path;
    path.addLineToPoint(1, 1);  // nothing to come from: it begins there
    path.addLineToPoint(2, 1);
    path.closeSubpath();
    path.closeSubpath();
    path.addLineToPoint(3, 3);  // goes on where the closed one began
    EXPECT_EQ(segmentsOf(path), "M 1 1 L 1 1 L 2 1 Z M 1 1 L 3 3");

    CGPath mixed = rectPath(0, 0, 2, 1);
    mixed.addRelativeArc({}, 0, 0, 1, 0, 0);  // joined by a line to the rectangle's start
    mixed.addRect({{5, 5}, {1, 1}});
    EXPECT_EQ(segmentsOf(mixed), "M 0 0 L 2 0 L 2 1 L 0 1 Z M 0 0 L 1 0 M 5 5 L 6 5 L 6 6 L 5 6 Z");
}

}  // namespace
}  // namespace orvane::platform
