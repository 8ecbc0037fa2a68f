#include "platform/coregraphics/CGPath.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

#include "platform/coregraphics/CGRecordingContext.h"
#include "tests/coregraphics/paths.h"

namespace orvane::platform {
namespace {

constexpr double kPi = std::numbers::pi;

std::string segmentsOf(const CGPath& path) {
    return recorded::outlineOf(path).segments;
}

CGPath arcPath(const CGAffineTransform& transform, double radius, double delta) {
    CGPath path;
    path.addRelativeArc(transform, 0, 0, radius, 0, delta);
    return path;
}

TEST(Path, BoxesGoAroundTheCurvesThemselves) {
    CGPath cubic, quadratic;
    cubic.moveToPoint(0, 0);
    cubic.addCurveToPoint(0, 100, 10, 100, 10, 0);
    quadratic.moveToPoint(0, 0);
    quadratic.addQuadCurveToPoint(10, 20, 20, 0);
    const auto turned = CGAffineTransform::makeTranslation(10, 10).rotate(kPi / 2);
    const struct {
        const char* name;
        CGPath path;
        std::optional<CGRect> box;
    } cases[] = {
        {"empty", CGPath(), {}},
        {"rectangle", rectPath(1, 2, 3, 4), {{{1, 2}, {3, 4}}}},
        {"negative size", rectPath(4, 6, -3, -4), {{{1, 2}, {3, 4}}}},
        {"ellipse", ellipsePath(-1, 0, 8, 2), {{{-1, 0}, {8, 2}}}},
        {"flat cubic", std::move(cubic), {{{0, 0}, {10, 75}}}},
        {"quadratic", std::move(quadratic), {{{0, 0}, {20, 10}}}},
        {"half a circle, turned", arcPath(turned, 5, kPi), {{{5, 5}, {5, 10}}}},
        {"many turns and a quarter", arcPath({}, 1, 200.5 * kPi), {{{-1, -1}, {2, 2}}}},
        {"a number that is none", rectPath(NAN, 0, 1, 1), {}},
        {"an infinite side", ellipsePath(0, 0, INFINITY, 1), {}},
        {"an infinite point", linePath({{0, 0}, {INFINITY, 0}}), {}},
        {"an endless arc", arcPath({}, 1, INFINITY), {}},
        {"a corner that is none", roundedPath(0, 0, 9, 9, NAN, 1), {}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        const std::optional<CGRect> box = c.path.getPathBoundingBox();
        ASSERT_EQ(box.has_value(), c.box.has_value());
        if (box) {
            EXPECT_NEAR(box->origin.x, c.box->origin.x, 1e-2);
            EXPECT_NEAR(box->origin.y, c.box->origin.y, 1e-2);
            EXPECT_NEAR(box->size.width, c.box->size.width, 1e-2);
            EXPECT_NEAR(box->size.height, c.box->size.height, 1e-2);
        }
    }
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

TEST(Path, CutsCornersToHalfTheSides) {
    const auto outline = [](double cornerWidth, double cornerHeight) {
        return segmentsOf(roundedPath(0, 0, 10, 4, cornerWidth, cornerHeight));
    };
    EXPECT_EQ(outline(100, 100), outline(5, 2));
    EXPECT_EQ(outline(-2, -1), outline(2, 1));
    EXPECT_NE(outline(2, 1), outline(5, 2));
    EXPECT_EQ(outline(0, 5), "M 0 0 L 10 0 L 10 4 L 0 4 Z");
}

TEST(Path, AnOutlineDoesNotChangeUnderWhoeverTookIt) {
    CGPath path = rectPath(0, 0, 1, 1);
    const auto taken = path.outline();
    path.addLineToPoint(5, 5);
    EXPECT_NE(path.outline(), taken);
    EXPECT_EQ(segmentsOf(path), "M 0 0 L 1 0 L 1 1 L 0 1 Z M 0 0 L 5 5");
    path = rectPath(0, 0, 1, 1);
    EXPECT_EQ(segmentsOf(path), "M 0 0 L 1 0 L 1 1 L 0 1 Z");
}

}  // namespace
}  // namespace orvane::platform
