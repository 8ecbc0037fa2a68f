#include "platform/coregraphics/CGBitmapContext.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <functional>
#include <numbers>
#include <vector>

#include "platform/coregraphics/CGGradient.h"
#include "platform/coregraphics/CGPath.h"
#include "tests/coregraphics/pixels.h"

namespace orvane::platform {
namespace {

constexpr std::uint32_t kRed = 0xffff0000u;
constexpr std::uint32_t kBlack = 0xff000000u;
constexpr double kPi = std::numbers::pi;

// Two squares, one in the other, running the same way around.
CGPath nestedSquares() {
    CGPath path;
    path.addRect({{5, 5}, {30, 30}});
    path.addRect({{15, 15}, {10, 10}});
    return path;
}

TEST(BitmapContext, PaintsByModeAndFillRule) {
    struct Case {
        CGPathDrawingMode mode;
        std::uint32_t inside, edge, middle;
    };
    const Case cases[] = {{CGPathDrawingMode::Fill, kRed, kRed, kRed},
                          {CGPathDrawingMode::EOFill, kRed, kRed, 0},
                          {CGPathDrawingMode::Stroke, 0, kBlack, 0},
                          {CGPathDrawingMode::FillStroke, kRed, kBlack, kRed},
                          {CGPathDrawingMode::EOFillStroke, kRed, kBlack, 0}};
    for (const Case& c : cases) {
        CGBitmapContext canvas(40, 40);
        canvas.setRGBFillColor(1, 0, 0, 1);
        canvas.setLineWidth(2);
        canvas.addPath(nestedSquares());
        canvas.drawPath(c.mode);
        const auto mode = static_cast<int>(c.mode);
        EXPECT_EQ(pixel(canvas, 10, 10), c.inside) << mode;
        EXPECT_EQ(pixel(canvas, 5, 10), c.edge) << mode;
        EXPECT_EQ(pixel(canvas, 20, 20), c.middle) << mode;
        EXPECT_EQ(pixel(canvas, 2, 2), 0u) << mode;
        // The path is used up.
        canvas.setRGBFillColor(0, 1, 0, 1);
        canvas.drawPath(CGPathDrawingMode::Fill);
        EXPECT_EQ(pixel(canvas, 10, 10), c.inside) << mode;
    }
}

// Shapes small and large, straight and turned, through every way that coverage is worked out: the
// paint they take is the area they have.
TEST(BitmapContext, CoversTheAreaThatAShapeHas) {
    struct Case {
        const char* name;
        std::function<void(CGContext&, CGPath&)> build;
        CGPathDrawingMode mode;
        double area;
    };
    const auto fill = CGPathDrawingMode::Fill;
    const auto stroke = CGPathDrawingMode::Stroke;
    const Case cases[] = {
        {"box",
         [](CGContext&, CGPath& p) {
             p.addRect({{10.3, 20.6}, {30.5, 7.25}});
         },
         fill, 30.5 * 7.25},
        {"frame",
         [](CGContext& c, CGPath& p) {
             c.setLineWidth(1.5);
             p.addRect({{10.3, 20.6}, {30.5, 7.25}});
         },
         stroke, 32 * 8.75 - 29 * 5.75},
        {"frame thicker than it is wide",
         [](CGContext& c, CGPath& p) {
             c.setLineWidth(10);
             p.addRect({{50, 50}, {4, 20}});
         },
         stroke, 14 * 30},
        {"level line",
         [](CGContext& c, CGPath& p) {
             c.setLineWidth(0.5);
             p.addLines(std::array{CGPoint{5, 5.2}, CGPoint{105, 5.2}});
         },
         stroke, 50},
        {"slanted line",
         [](CGContext& c, CGPath& p) {
             c.setLineWidth(2);
             p.addLines(std::array{CGPoint{50, 50}, CGPoint{80, 90}});
         },
         stroke, 100},
        {"dashed line",
         [](CGContext& c, CGPath& p) {
             c.setLineWidth(2);
             c.setLineDash(0, std::array{6.0, 4.0});
             p.addLines(std::array{CGPoint{50, 50}, CGPoint{450, 50}});
         },
         stroke, 400 * 2 * 0.6},
        {"turned box",
         [](CGContext& c, CGPath& p) {
             c.concatCTM(CGAffineTransform::makeTranslation(100, 100).rotate(0.3));
             p.addRect({{0, 0}, {40, 30}});
         },
         fill, 1200},
        {"small circle",
         [](CGContext&, CGPath& p) {
             p.addEllipseInRect({{9.7, 8.1}, {20, 20}});
         },
         fill, 100 * kPi},
        {"ring of a small circle",
         [](CGContext&, CGPath& p) {
             p.addEllipseInRect({{9.7, 8.1}, {20, 20}});
         },
         stroke, 20 * kPi},
        {"large circle",
         [](CGContext&, CGPath& p) {
             p.addEllipseInRect({{3.3, 4.4}, {480, 480}});
         },
         fill, 240 * 240 * kPi},
        {"ring of a large circle",
         [](CGContext& c, CGPath& p) {
             c.setLineWidth(3);
             p.addEllipseInRect({{3.3, 4.4}, {480, 480}});
         },
         stroke, 480 * kPi * 3},
        {"scaled circle",
         [](CGContext& c, CGPath& p) {
             c.scaleCTM(4, 2);
             p.addEllipseInRect({{10, 10}, {100, 100}});
         },
         fill, 2500 * kPi * 8},
        {"rounded box",
         [](CGContext&, CGPath& p) {
             p.addRoundedRect({{10, 10}, {90, 50}}, 10, 10);
         },
         fill, 90 * 50 - (400 - 100 * kPi)},
        {"half a circle, beyond the canvas",
         [](CGContext&, CGPath& p) {
             p.addEllipseInRect({{-100, 100}, {200, 200}});
         },
         fill, 100 * 100 * kPi / 2},
    };
    for (const Case& c : cases) {
        CGBitmapContext canvas(500, 500);
        CGPath path;
        c.build(canvas, path);
        canvas.addPath(path);
        canvas.drawPath(c.mode);
        EXPECT_NEAR(coveredArea(canvas), c.area, 0.3 + c.area * 0.007) << c.name;
    }
}

// What is far larger than the canvas is drawn as if it ended shortly beyond it.
TEST(BitmapContext, FarCoordinatesShowTheirPartOnTheCanvas) {
    struct Case {
        const char* name;
        std::function<void(CGContext&, double far)> draw;
        double near;
        double far;
    };
    const auto polygon = [](CGContext& c, std::initializer_list<CGPoint> points, bool closed,
                            CGPathDrawingMode mode) {
        CGPath path;
        path.addLines(std::vector<CGPoint>(points));
        if (closed) {
            path.closeSubpath();
        }
        c.addPath(path);
        c.drawPath(mode);
    };
    const Case cases[] = {
        {"rectangle",
         [](CGContext& c, double f) {
             fillRect(c, {{-f, 10.5}, {2 * f, 30}});
         },
         500, 1e30},
        {"half plane",
         [&](CGContext& c, double f) {
             polygon(c, {{50 - f, 50 - f}, {50 + f, 50 + f}, {50 - f, 50 + f}}, true,
                     CGPathDrawingMode::Fill);
         },
         500, 1e9},
        {"far end of a band",
         [&](CGContext& c, double f) {
             polygon(c, {{20, 50}, {60, 50}, {60 + f, 50 + f}, {20 + f, 50 + f}}, true,
                     CGPathDrawingMode::EOFill);
         },
         500, 1e8},
        {"diagonal line",
         [&](CGContext& c, double f) {
             c.setLineWidth(5);
             polygon(c, {{10 - f, 20 - f}, {10 + f, 20 + f}}, false, CGPathDrawingMode::Stroke);
         },
         500, 1e9},
        {"corner of a far frame",
         [&](CGContext& c, double f) {
             c.setLineWidth(9);
             polygon(c, {{30, 40}, {30 + f, 40 + f / 2}, {30 - f, 40 + 2 * f}}, true,
                     CGPathDrawingMode::Stroke);
         },
         500, 1e7},
        {"dashes of a far line",
         [&](CGContext& c, double f) {
             c.setLineWidth(3);
             c.setLineDash(2, std::array{8.0, 8.0});
             polygon(c, {{-f, 50}, {f, 50}}, false, CGPathDrawingMode::Stroke);
         },
         1600, 1.6e7},
        {"a pen wider than everything",
         [&](CGContext& c, double f) {
             c.setLineWidth(f);
             polygon(c, {{30, 40}, {60, 50}, {40, 80}}, true, CGPathDrawingMode::Stroke);
         },
         5000, 1e12},
    };
    for (const Case& c : cases) {
        CGBitmapContext near(100, 100), far(100, 100);
        c.draw(near, c.near);
        c.draw(far, c.far);
        EXPECT_LE(largestDifference(near, far), 3) << c.name;
        EXPECT_GT(coveredArea(far), 100) << c.name;
    }
}

TEST(BitmapContext, AHugeCircleHasAStraightEdge) {
    CGBitmapContext canvas(100, 100);
    CGPath path;
    constexpr double kRadius = 1e8;
    path.addEllipseInRect({{50, 50 - kRadius}, {2 * kRadius, 2 * kRadius}});
    canvas.addPath(path);
    canvas.drawPath(CGPathDrawingMode::Fill);
    EXPECT_NEAR(coveredArea(canvas), 5000, 20);
    EXPECT_EQ(pixel(canvas, 99, 0), kBlack);
    EXPECT_EQ(pixel(canvas, 45, 50), 0u);
}

TEST(BitmapContext, ClipsIntersectAndEndWithTheirState) {
    CGBitmapContext canvas(60, 60);
    canvas.setRGBFillColor(1, 0, 0, 1);
    canvas.saveGState();
    canvas.clipToRect({{10, 10}, {30.5, 40}});
    CGPath circle;
    circle.addEllipseInRect({{20, 10}, {40, 40}});
    canvas.addPath(circle);
    canvas.clip();
    fillRect(canvas, {{0, 0}, {60, 60}});
    EXPECT_EQ(pixel(canvas, 35, 30), kRed);
    EXPECT_EQ(pixel(canvas, 40, 30) >> 24, 128u);  // half a pixel of the first clip
    EXPECT_EQ(pixel(canvas, 41, 30), 0u);
    EXPECT_EQ(pixel(canvas, 15, 30), 0u);  // outside the circle
    EXPECT_EQ(pixel(canvas, 21, 12), 0u);
    canvas.clip();  // an empty path leaves nothing
    canvas.setRGBFillColor(0, 0, 0, 1);
    fillRect(canvas, {{0, 0}, {60, 60}});
    EXPECT_EQ(pixel(canvas, 35, 30), kRed);
    canvas.restoreGState();
    fillRect(canvas, {{0, 0}, {60, 60}});
    EXPECT_EQ(pixel(canvas, 35, 30), kRed);  // the fill colour is restored, too
    EXPECT_EQ(pixel(canvas, 0, 59), kRed);
}

TEST(BitmapContext, StatesNestDeeplyAndUnevenly) {
    CGBitmapContext canvas(20, 20);
    canvas.restoreGState();  // nothing was saved
    for (int i = 0; i < 10'000; ++i) {
        canvas.saveGState();
        canvas.translateCTM(0.001, 0);
        canvas.clipToRect({{-0.5, 0.5}, {30, 30}});
    }
    for (int i = 0; i < 10'001; ++i) {
        canvas.restoreGState();
    }
    fillRect(canvas, {{0, 0}, {1, 1}});
    EXPECT_EQ(pixel(canvas, 0, 0), kBlack);
    EXPECT_EQ(coveredArea(canvas), 1);
}

TEST(BitmapContext, APathIsTransformedWhenItIsAddedAndThePenWhenItDraws) {
    CGBitmapContext canvas(60, 60);
    canvas.saveGState();
    canvas.translateCTM(10, 10);
    canvas.moveToPoint(0, 0);
    canvas.addLineToPoint(20, 0);
    canvas.restoreGState();
    canvas.scaleCTM(1, 8);
    canvas.strokePath();
    EXPECT_EQ(pixel(canvas, 15, 6), kBlack);
    EXPECT_EQ(pixel(canvas, 15, 13), kBlack);
    EXPECT_EQ(coveredArea(canvas), 20 * 8);
}

TEST(BitmapContext, GradientsRunAlongTheirAxis) {
    const std::array<double, 12> components = {1, 0, 0, 1, 0, 1, 0, 1, 0, 0, 1, 1};
    const auto even = CGGradient::createWithColorComponents(components, {});
    const auto hard = CGGradient::createWithColorComponents(components, std::array{0.0, 0.5, 0.5});
    const auto none = CGGradient::createWithColorComponents({}, {});
    struct Case {
        const char* name;
        const CGGradient& gradient;
        CGPoint start, end;
        unsigned options;
        std::uint32_t at5, at30, at50, at95;
    };
    const Case cases[] = {
        {"both ends", *even, {20, 0}, {80, 0}, 3, 0xffff0000, 0xffa65900, 0xff00ff00, 0xff0000ff},
        {"no ends", *even, {20, 0}, {80, 0}, 0, 0, 0xffa65900, 0xff00ff00, 0},
        {"start only", *even, {20, 0}, {80, 0}, 1, 0xffff0000, 0xffa65900, 0xff00ff00, 0},
        {"hard edge", *hard, {0, 0}, {60, 0}, 3, 0xffd12e00, 0xff0000ff, 0xff0000ff, 0xff0000ff},
        {"no length", *even, {20, 0}, {20, 0}, 3, 0xff0000ff, 0xff0000ff, 0xff0000ff, 0xff0000ff},
        {"no length, no ends", *even, {20, 0}, {20, 0}, 0, 0, 0, 0, 0},
        {"no colours", *none, {20, 0}, {80, 0}, 3, 0, 0, 0, 0},
        {"no numbers", *even, {NAN, 0}, {80, INFINITY}, 0, 0, 0, 0, 0},
    };
    const auto near = [](std::uint32_t a, std::uint32_t b) {
        for (int shift = 0; shift < 32; shift += 8) {
            if (std::abs(static_cast<int>(a >> shift & 255) - static_cast<int>(b >> shift & 255)) >
                5) {
                return false;
            }
        }
        return true;
    };
    for (const Case& c : cases) {
        CGBitmapContext canvas(100, 4);
        canvas.drawLinearGradient(c.gradient, c.start, c.end, c.options);
        EXPECT_TRUE(near(pixel(canvas, 5, 2), c.at5)) << c.name;
        EXPECT_TRUE(near(pixel(canvas, 30, 2), c.at30)) << c.name;
        EXPECT_TRUE(near(pixel(canvas, 50, 2), c.at50)) << c.name;
        EXPECT_TRUE(near(pixel(canvas, 95, 2), c.at95)) << c.name;
    }
}

TEST(BitmapContext, AnEmptyCanvasTakesEveryCall) {
    std::uint32_t pixels[4] = {};
    CGBitmapContext canvases[] = {
        {0, 10},           {-5, 10},         {100'000, 100'000}, {nullptr, 2, 2, 8},
        {pixels, 2, 2, 7}, {pixels, 2, 2, 4}};
    for (CGBitmapContext& canvas : canvases) {
        EXPECT_EQ(canvas.width(), 0);
        fillRect(canvas, {{0, 0}, {1000, 1000}});
        canvas.clearRect({{0, 0}, {1000, 1000}});
        EXPECT_EQ(canvas.createImage(), nullptr);
    }
}

}  // namespace
}  // namespace orvane::platform
