// Whatever an application asks for, its object paints nothing or its nearest sensible form, and
// everything else on the canvas is painted as if it were not there.

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <functional>
#include <vector>

#include "platform/coregraphics/CGGradient.h"
#include "platform/coregraphics/CGImage.h"
#include "tests/coregraphics/paths.h"
#include "tests/coregraphics/pixels.h"

namespace orvane::platform {
namespace {

using enum CGPathDrawingMode;
enum Expected { Nothing, Something, Anything };

// A neighbour: a circle with a frame, painted before and after the object in question.
void paintNeighbour(CGContext& canvas, double y) {
    canvas.saveGState();
    canvas.setLineWidth(1);
    draw(canvas, ellipsePath(40.3, y, 15, 15), FillStroke);
    canvas.restoreGState();
}

// Everything that can be drawn, around 10, 10 to 30, 30.
void paintEverything(CGContext& canvas) {
    const CGRect rect{{10, 10}, {20, 20}};
    CGPath path;
    path.addRect(rect);
    path.addEllipseInRect(rect);
    for (const bool dashed : {false, true}) {
        if (dashed) {
            canvas.setLineDash(1, std::array{3.0, 2.0});
        }
        draw(canvas, path, EOFillStroke);
        canvas.addRect(rect);
        canvas.drawPath(FillStroke);
        canvas.moveToPoint(10, 10);
        canvas.addLineToPoint(30, 30);
        canvas.strokePath();
    }
    const std::array<double, 8> components = {1, 0, 0, 1, 0, 1, 0, 1};
    canvas.addPath(path);
    canvas.clip();
    canvas.drawLinearGradient(*CGGradient::createWithColorComponents(components, {}), {10, 10},
                              {30, 30}, 0);
    canvas.drawImage(rect, *CGImage::createWithPixels(2, 2, {1u << 24, 2u << 24, 3u << 24, 0}));
}

void expectHarmless(const char* name, Expected expected,
                    const std::function<void(CGContext&)>& drawObject) {
    constexpr int kSide = 60;
    CGBitmapContext alone(kSide, kSide), object(kSide, kSide), canvas(kSide, kSide);
    paintNeighbour(alone, 2);
    paintNeighbour(alone, 32);

    drawObject(object);
    object.clearRect({{38, 0}, {kSide, kSide}});
    if (expected != Anything) {
        EXPECT_EQ(coveredArea(object) > 0, expected == Something) << name;
    }
    paintNeighbour(canvas, 2);
    canvas.saveGState();
    canvas.clipToRect({{0, 0}, {38, kSide}});
    drawObject(canvas);
    canvas.restoreGState();
    paintNeighbour(canvas, 32);
    canvas.clearRect({{0, 0}, {38, kSide}});
    EXPECT_EQ(largestDifference(canvas, alone), 0) << name;
}

TEST(HostileDrawing, Transformations) {
    const struct {
        const char* name;
        CGAffineTransform transform;
        Expected expected;
    } rows[] = {
        {"scale 0", {0, 0, 0, 0, 0, 0}, Nothing},
        {"scale 0 one way", {1, 0, 0, 0, 0, 0}, Nothing},
        {"both axes one", {1, 1, 1, 1, 0, 0}, Nothing},
        {"scale almost 0", {1e-300, 0, 0, 1, 0, 0}, Nothing},
        {"huge scale", {1e300, 0, 0, 1e300, 0, 0}, Nothing},
        {"NaN scale", {NAN, 0, 0, 1, 0, 0}, Nothing},
        {"NaN translation", {1, 0, 0, 1, NAN, 0}, Nothing},
        {"infinite translation", {1, 0, 0, 1, INFINITY, 0}, Nothing},
        {"huge translation", {1, 0, 0, 1, 1e25, -1e25}, Nothing},
        {"huge scale that still shows", {1e9, 0, 0, 1e9, -2e10, -2e10}, Anything},
        {"mirrored", {-1, 0, 0, 1, 40, 0}, Something},
    };
    for (const auto& row : rows) {
        expectHarmless(row.name, row.expected, [&](CGContext& canvas) {
            canvas.concatCTM(row.transform);
            paintEverything(canvas);
        });
    }
}

TEST(HostileDrawing, Outlines) {
    const struct {
        const char* name;
        CGPath path;
        Expected expected;
    } rows[] = {
        {"NaN rectangle", rectPath(NAN, 0, 20, 20), Nothing},
        {"infinite rectangle", rectPath(-INFINITY, 0, INFINITY, 20), Nothing},
        {"negative size", rectPath(30, 30, -20, -20), Something},
        {"NaN point", linePath({{10, 10}, {NAN, 30}, {30, 30}}), Nothing},
        {"radii beyond the sides", roundedPath(10, 10, 20, 20, 1e9, 1e300), Something},
        {"negative radii", roundedPath(10, 10, 20, 20, -5, -5), Something},
        {"negative circle", roundedPath(30, 30, -20, -20, 10, 10), Something},
        {"huge ellipse", ellipsePath(-1e300, -1e300, 1e301, 1e301), Nothing},
    };
    for (const auto& row : rows) {
        for (const auto mode : {Fill, FillStroke}) {
            expectHarmless(row.name, row.expected,
                           [&](CGContext& canvas) { draw(canvas, row.path, mode); });
        }
    }
}

TEST(HostileDrawing, Strokes) {
    const struct {
        const char* name;
        double width;
        double phase;
        std::vector<double> dash;
        Expected expected;
    } rows[] = {
        {"line width 0", 0, 0, {}, Nothing},
        {"negative line width", -3, 0, {}, Nothing},
        {"NaN line width", NAN, 0, {}, Nothing},
        {"dash of zeros", 2, 0, {0, 0}, Something},
        {"one zero", 2, 0, {0}, Something},
        {"zero lines, some gaps", 2, 0, {0, 5}, Anything},
        {"negative dash", 2, 0, {4, -2}, Something},
        {"NaN dash", 2, 0, {4, NAN}, Something},
        {"infinite dash", 2, 0, {INFINITY, 1}, Something},
        {"dash too short to see", 2, 0, {1e-12, 1e-12}, Something},
        {"dash that overflows", 2, 0, {1e308, 1e308}, Something},
        {"NaN phase", 2, NAN, {4, 2}, Something},
        {"huge phase", 2, -1e300, {4, 2}, Something},
        {"odd dash", 2, -7, {4, 2, 1}, Something},
    };
    for (const auto& row : rows) {
        expectHarmless(row.name, row.expected, [&](CGContext& canvas) {
            canvas.setLineWidth(row.width);
            canvas.setLineDash(row.phase, row.dash);
            draw(canvas, ellipsePath(10, 10, 20, 20), Stroke);
        });
    }
}

TEST(HostileDrawing, Bitmaps) {
    const struct {
        const char* name;
        CGRect rect;
        Expected expected;
    } rows[] = {
        {"NaN rectangle", {{NAN, 0}, {9, 9}}, Nothing},
        {"no height", {{10, 10}, {9, 0}}, Nothing},
        {"enlarged beyond sense", {{-1e11, 0}, {2e11, 30}}, Anything},
    };
    for (const auto& row : rows) {
        expectHarmless(row.name, row.expected, [&](CGContext& canvas) {
            canvas.drawImage(row.rect, *CGImage::createWithPixels(1, 1, {0xffffffff}));
        });
    }
}

TEST(HostileDrawing, States) {
    expectHarmless("NaN clip", Nothing, [](CGContext& canvas) {
        canvas.clipToRect({{NAN, 0}, {40, 40}});
        paintEverything(canvas);
    });
    expectHarmless("colours out of range", Something, [](CGContext& canvas) {
        canvas.setRGBFillColor(NAN, -1, 1e30, 7);
        fillRect(canvas, {{10, 10}, {20, 20}});
    });
    expectHarmless("more restored than saved", Nothing, [](CGContext& canvas) {
        canvas.restoreGState();
        canvas.saveGState();
    });
}

}  // namespace
}  // namespace orvane::platform
