#include "platform/coregraphics/CGPath.h"

#include <gtest/gtest.h>

#include <cmath>
#include <functional>
#include <limits>
#include <numbers>

#include "platform/coregraphics/CGRecordingContext.h"

namespace orvane::platform {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kPi = std::numbers::pi;

std::string segmentsOf(const CGPath& path) {
    return recorded::outlineOf(path).segments;
}

TEST(Path, BoxesGoAroundTheCurvesThemselves) {
    struct Case {
        const char* name;
        std::function<void(CGPath&)> build;
        std::optional<CGRect> box;
    };
    const Case cases[] = {
        {"empty", [](CGPath&) {}, std::nullopt},
        {"rectangle",
         [](CGPath& p) {
             p.addRect({{1, 2}, {3, 4}});
         },
         CGRect{{1, 2}, {3, 4}}},
        {"negative size",
         [](CGPath& p) {
             p.addRect({{4, 6}, {-3, -4}});
         },
         CGRect{{1, 2}, {3, 4}}},
        {"ellipse",
         [](CGPath& p) {
             p.addEllipseInRect({{-1, 0}, {8, 2}});
         },
         CGRect{{-1, 0}, {8, 2}}},
        {"flat cubic",
         [](CGPath& p) {
             p.moveToPoint(0, 0);
             p.addCurveToPoint(0, 100, 10, 100, 10, 0);
         },
         CGRect{{0, 0}, {10, 75}}},
        {"quadratic",
         [](CGPath& p) {
             p.moveToPoint(0, 0);
             p.addQuadCurveToPoint(10, 20, 20, 0);
         },
         CGRect{{0, 0}, {20, 10}}},
        {"half a circle, turned",
         [](CGPath& p) {
             p.addRelativeArc(CGAffineTransform::makeTranslation(10, 10).rotate(kPi / 2), 0, 0, 5,
                              0, kPi);
         },
         CGRect{{5, 5}, {5, 10}}},
        {"a hundred turns and a quarter",
         [](CGPath& p) { p.addRelativeArc({}, 0, 0, 1, 0, 200 * kPi + kPi / 2); },
         CGRect{{-1, -1}, {2, 2}}},
        {"a number that is none",
         [](CGPath& p) {
             p.addRect({{kNaN, 0}, {1, 1}});
         },
         std::nullopt},
        {"an infinite side",
         [](CGPath& p) {
             p.addEllipseInRect({{0, 0}, {kInfinity, 1}});
         },
         std::nullopt},
        {"an infinite point",
         [](CGPath& p) {
             p.moveToPoint(0, 0);
             p.addLineToPoint(kInfinity, 0);
         },
         std::nullopt},
        {"an endless arc", [](CGPath& p) { p.addRelativeArc({}, 0, 0, 1, 0, kInfinity); },
         std::nullopt},
        {"a corner that is none",
         [](CGPath& p) {
             p.addRoundedRect({{0, 0}, {9, 9}}, kNaN, 1);
         },
         std::nullopt},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        CGPath path;
        c.build(path);
        const std::optional<CGRect> box = path.getPathBoundingBox();
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

    CGPath mixed;
    mixed.addRect({{0, 0}, {2, 1}});
    mixed.addRelativeArc({}, 0, 0, 1, 0, 0);  // joined by a line to the rectangle's start
    EXPECT_EQ(segmentsOf(mixed), "M 0 0 L 2 0 L 2 1 L 0 1 Z M 0 0 L 1 0");
}

TEST(Path, CutsCornersToHalfTheSides) {
    struct Case {
        double cornerWidth, cornerHeight;
        double keptWidth, keptHeight;
    };
    const Case cases[] = {{2, 1, 2, 1}, {100, 100, 5, 2}, {-2, -1, 2, 1}};
    for (const Case& c : cases) {
        CGPath path, expected;
        path.addRoundedRect({{0, 0}, {10, 4}}, c.cornerWidth, c.cornerHeight);
        expected.addRoundedRect({{0, 0}, {10, 4}}, c.keptWidth, c.keptHeight);
        EXPECT_EQ(segmentsOf(path), segmentsOf(expected));
    }
    CGPath square;
    square.addRoundedRect({{0, 0}, {10, 4}}, 0, 5);
    EXPECT_EQ(segmentsOf(square), "M 0 0 L 10 0 L 10 4 L 0 4 Z");
}

TEST(Path, AnOutlineDoesNotChangeUnderWhoeverTookIt) {
    CGPath path;
    path.addRect({{0, 0}, {1, 1}});
    CGPath copy;
    copy.addRect({{0, 0}, {1, 1}});
    const auto taken = path.outline();
    path.addLineToPoint(5, 5);
    EXPECT_NE(path.outline(), taken);
    EXPECT_NE(segmentsOf(path), segmentsOf(copy));
    path = std::move(copy);
    EXPECT_EQ(segmentsOf(path), "M 0 0 L 1 0 L 1 1 L 0 1 Z");
}

}  // namespace
}  // namespace orvane::platform
