#include "platform/raster/CGBitmapContext.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <numbers>
#include <vector>

#include "platform/coregraphics/CGGradient.h"
#include "tests/raster/paths.h"
#include "tests/raster/pixels.h"

namespace orvane::platform {
namespace {

using enum CGPathDrawingMode;

constexpr std::uint32_t kRed = 0xffff0000u;
constexpr std::uint32_t kBlack = 0xff000000u;
constexpr double kPi = std::numbers::pi;

TEST(BitmapContext, PaintsByModeAndFillRule) {
    const struct {
        CGPathDrawingMode mode;
        std::uint32_t inside, edge, middle;
    } cases[] = {{Fill, kRed, kRed, kRed},
                 {EOFill, kRed, kRed, 0},
                 {Stroke, 0, kBlack, 0},
                 {FillStroke, kRed, kBlack, kRed},
                 {EOFillStroke, kRed, kBlack, 0}};
    for (const auto& c : cases) {
        SCOPED_TRACE(static_cast<int>(c.mode));
        CGBitmapContext canvas(40, 40);
        canvas.setRGBFillColor(1, 0, 0, 1);
        canvas.setLineWidth(2);
        // Two nested squares with the same direction.
        canvas.addPath(rectPath(5, 5, 30, 30));
        canvas.addPath(rectPath(15, 15, 10, 10));
        canvas.drawPath(c.mode);
        EXPECT_EQ(pixel(canvas, 10, 10), c.inside);
        EXPECT_EQ(pixel(canvas, 5, 10), c.edge);
        EXPECT_EQ(pixel(canvas, 20, 20), c.middle);
        EXPECT_EQ(pixel(canvas, 2, 2), 0u);
        // drawPath emptied the path.
        canvas.setRGBFillColor(0, 1, 0, 1);
        canvas.drawPath(Fill);
        EXPECT_EQ(pixel(canvas, 10, 10), c.inside);
    }
}

// A regular polygon around the middle of a canvas of 500 pixels.
CGPath polygonWithCorners(int count, double radius) {
    CGPath path;
    for (int i = 0; i < count; ++i) {
        const double angle = 2 * kPi * i / count;
        path.addLineToPoint(250 + radius * std::cos(angle), 250 + radius * std::sin(angle));
    }
    path.closeSubpath();
    return path;
}

// Small and large shapes, aligned and turned, so that every method of computing coverage is used.
// The painted coverage equals the area of the shape.
TEST(BitmapContext, CoverageEqualsTheAreaOfTheShape) {
    const auto turned = CGAffineTransform::makeTranslation(100, 100).rotate(0.3);
    const auto stretched = CGAffineTransform().scale(4, 2);
    const struct {
        const char* name;
        CGPath path;
        CGPathDrawingMode mode;
        double area;
        double lineWidth = 1;
        std::vector<double> dash = {};
        CGAffineTransform transform = {};
    } cases[] = {
        {"box", rectPath(10.3, 20.6, 30.5, 7.25), Fill, 30.5 * 7.25},
        {"frame", rectPath(10.3, 20.6, 30.5, 7.25), Stroke, 32 * 8.75 - 29 * 5.75, 1.5},
        {"stroke wider than the box", rectPath(50, 50, 4, 20), Stroke, 14 * 30, 10},
        {"sharp corner", linePath({{100, 100}, {200, 120}, {100, 140}}), Stroke, 2039.6, 10},
        {"dashed line", linePath({{50, 50}, {450, 50}}), Stroke, 400 * 2 * 0.6, 2, {6, 4}},
        {"turned box", rectPath(0, 0, 40, 30), Fill, 1200, 1, {}, turned},
        {"small circle", ellipsePath(9.7, 8.1, 20, 20), Fill, 100 * kPi},
        {"ring of a small circle", ellipsePath(9.7, 8.1, 20, 20), Stroke, 20 * kPi},
        {"large circle", ellipsePath(3.3, 4.4, 480, 480), Fill, 240 * 240 * kPi},
        {"ring of a large circle", ellipsePath(3.3, 4.4, 480, 480), Stroke, 480 * kPi * 3, 3},
        {"rounded box", roundedPath(10, 10, 90, 50, 10, 10), Fill, 90 * 50 - (400 - 100 * kPi)},
        {"radii larger than the box", roundedPath(10, 10, 90, 50, 1e9, 1e300), Fill, 45 * 25 * kPi},
        {"half a circle", ellipsePath(-100, 100, 200, 200), Fill, 100 * 100 * kPi / 2},
        {"tiny dashes", linePath({{50, 50}, {450, 50}}), Stroke, 200, 2, {0.05, 0.15}},
        {"four tiny dashes", linePath({{50, 50}, {450, 50}}), Stroke, 240, 2, {.01, .03, .02, .04}},
        {"sheared box", rectPath(0, 0, 20, 20), Fill, 400, 1, {}, {0, 1, 1, 1, 100, 100}},
        {"turned flat box", rectPath(0, 0, 40, 0), Stroke, 50 * 10, 10, {}, turned},
        {"stretched pen", linePath({{5, 20}, {55, 20}}), Stroke, 200 * 4, 2, {}, stretched},
        // Of shapes much larger than the canvas, the part on the canvas is painted.
        {"huge band", rectPath(-1e30, 10.5, 2e30, 30), Fill, 500 * 30},
        {"huge half plane", polygonPath({{-1e9, -1e9}, {1e9, 1e9}, {-1e9, 1e9}}), Fill, 125'000},
        {"huge line", linePath({{-1e9, 250}, {1e9, 250}}), Stroke, 500 * 5, 5},
        {"huge dashes", linePath({{-1.6e7, 50}, {1.6e7, 50}}), Stroke, 252 * 3, 3, {8, 8, 8}},
        {"huge circle", ellipsePath(250, 250 - 1e8, 2e8, 2e8), Fill, 250 * 500},
        {"wide ring of many lines", polygonWithCorners(2000, 150), Stroke, 2 * kPi * 150 * 200,
         200},
        {"huge pen", polygonPath({{30, 40}, {60, 50}, {40, 80}}), Stroke, 250'000, 1e12},
    };
    for (const auto& c : cases) {
        CGBitmapContext canvas(500, 500);
        canvas.concatCTM(c.transform);
        canvas.setLineWidth(c.lineWidth);
        canvas.setLineDash(0, c.dash);
        draw(canvas, c.path, c.mode);
        EXPECT_NEAR(coveredArea(canvas), c.area, 0.3 + c.area * 0.007) << c.name;
    }
}

TEST(BitmapContext, DashesOfLargeClosedOutlinesMeetAtTheCorner) {
    for (const double side : {100.0, 800.0}) {
        CGBitmapContext canvas(400, 400);
        canvas.setLineWidth(20);
        // The dash is painted at both ends of the outline.
        canvas.setLineDash(0, std::array{side, 10.0, 1e4, 1.0});
        const double end = 30 + side;
        draw(canvas, polygonPath({{30, 30}, {end, 30}, {end, end}, {30, end}}), Stroke);
        EXPECT_EQ(pixel(canvas, 22, 22), kBlack) << side;
    }
}

TEST(BitmapContext, StrokesOfThinShapesDoNotReachTheNextMask) {
    const struct {
        CGPath path;
        double lineWidth;
        double angle;
    } cases[] = {
        {ellipsePath(0, 0, 1, 0.0034), 8, 0.4658},
        {rectPath(0, 0, 7, 0.0012), 2, 13.8233},
        {ellipsePath(0, 0, 15, 0.0071), 7, 14.6316},
        {rectPath(0, 0, 4, 0.0016), 7, 68.5137},
    };
    double side = 61;
    for (const auto& c : cases) {
        CGBitmapContext thin(100, 100), canvas(100, 100);
        thin.translateCTM(30, 30);
        thin.concatCTM(CGAffineTransform::makeRotation(c.angle));
        thin.setLineWidth(c.lineWidth);
        draw(thin, c.path, Stroke);
        side += 0.25;  // so that the mask is a new one
        draw(canvas, ellipsePath(5, 5, side, side));
        EXPECT_NEAR(coveredArea(canvas), side * side * kPi / 4, 1) << c.angle;
    }
}

TEST(BitmapContext, ClipsIntersectAndEndWithTheirState) {
    CGBitmapContext canvas(60, 60);
    canvas.saveGState();
    canvas.setRGBFillColor(1, 0, 0, 1);
    canvas.clipToRect({{10, 10}, {30.5, 40}});
    canvas.addPath(ellipsePath(20, 10, 40, 40));
    canvas.clip();
    draw(canvas, rectPath(0, 0, 60, 60));
    EXPECT_EQ(pixel(canvas, 35, 30), kRed);
    EXPECT_EQ(pixel(canvas, 40, 30) >> 24, 128u);  // half a pixel of the first clip
    EXPECT_EQ(pixel(canvas, 41, 30), 0u);
    EXPECT_EQ(pixel(canvas, 15, 30), 0u);  // outside the circle
    canvas.restoreGState();
    canvas.restoreGState();  // one more than was saved
    draw(canvas, rectPath(0, 0, 60, 60));
    EXPECT_EQ(pixel(canvas, 35, 30), kBlack);  // the fill color is restored, too
}

// The slope between the first two colors and the place of a pixel on the focus are not finite.
TEST(BitmapContext, GradientsWithoutAFiniteSlopeAreEdges) {
    const std::array components = {0.0, 0.0, 1.0, 1.0, 1.0, 0.0, 0.0, 1.0, 1.0, 0.0, 0.0, 1.0};
    const auto gradient =
        CGGradient::createWithColorComponents(components, std::array{0.0, 1e-40, 1.0});
    constexpr unsigned bothEnds =
        kCGGradientDrawsBeforeStartLocation | kCGGradientDrawsAfterEndLocation;
    CGBitmapContext canvas(30, 30);
    canvas.drawRadialGradient(*gradient, {0.5, 10.5}, 0, {10.5, 10.5}, 10, bothEnds);
    EXPECT_EQ(pixel(canvas, 0, 3), kRed);
    canvas.drawLinearGradient(*gradient, {10.5, 0}, {20, 0}, bothEnds);
    EXPECT_EQ(pixel(canvas, 10, 3), 0xff0000ffu);
    EXPECT_EQ(pixel(canvas, 11, 3), kRed);
}

TEST(BitmapContext, GradientsRunAlongTheirAxis) {
    const std::array<double, 12> components = {1, 0, 0, 1, 0, 1, 0, 1, 0, 0, 1, 1};
    const auto even = CGGradient::createWithColorComponents(components, {});
    const auto hard = CGGradient::createWithColorComponents(components, std::array{0.0, 0.5, 0.5});
    const auto none = CGGradient::createWithColorComponents({}, {});
    const struct {
        const char* name;
        const CGGradient& gradient;
        CGPoint start, end;
        unsigned options;
        std::array<std::uint32_t, 4> pixels;
    } cases[] = {
        {"both ends", *even, {20, 0}, {80, 0}, 3, {0xffff0000, 0xffa65900, 0xff00ff00, 0xff0000ff}},
        {"no ends", *even, {20, 0}, {80, 0}, 0, {0, 0xffa65900, 0xff00ff00, 0}},
        {"hard edge", *hard, {0, 0}, {60, 0}, 3, {0xffd12e00, 0xff0000ff, 0xff0000ff, 0xff0000ff}},
        {"no length", *even, {20, 0}, {20, 0}, 3, {0xff0000ff, 0xff0000ff, 0xff0000ff, 0xff0000ff}},
        {"no colors", *none, {20, 0}, {80, 0}, 3, {}},
        {"not finite", *even, {NAN, 0}, {80, INFINITY}, 0, {}},
    };
    for (const auto& c : cases) {
        CGBitmapContext canvas(100, 4);
        canvas.drawLinearGradient(c.gradient, c.start, c.end, c.options);
        for (std::size_t i = 0; i < 4; ++i) {
            const int x = std::array{5, 30, 50, 95}[i];
            EXPECT_LE(difference(pixel(canvas, x, 2), c.pixels[i]), 5) << c.name << " at " << x;
        }
    }
}

TEST(BitmapContext, EmptyCanvasAcceptsEveryCall) {
    std::uint32_t pixels[4] = {};
    CGBitmapContext canvases[] = {
        {0, 10},           {-5, 10},         {100'000, 100'000}, {nullptr, 2, 2, 8},
        {pixels, 2, 2, 7}, {pixels, 2, 2, 4}};
    for (CGBitmapContext& canvas : canvases) {
        EXPECT_EQ(canvas.width(), 0);
        draw(canvas, rectPath(0, 0, 1000, 1000));
        canvas.clearRect({{0, 0}, {1000, 1000}});
        EXPECT_EQ(canvas.createImage(), nullptr);
    }
}

}  // namespace
}  // namespace orvane::platform
