// Whatever an application asks for, its object paints nothing or its nearest sensible form, and
// everything else on the canvas is painted as if it were not there.

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <functional>
#include <limits>
#include <vector>

#include "platform/coregraphics/CGBitmapContext.h"
#include "platform/coregraphics/CGGradient.h"
#include "platform/coregraphics/CGImage.h"
#include "platform/coregraphics/CGPath.h"
#include "tests/coregraphics/pixels.h"

namespace orvane::platform {
namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

// A neighbour: a circle with a frame, painted before and after the object in question.
void paintNeighbour(CGContext& canvas, double y) {
    CGPath circle;
    circle.addEllipseInRect({{40.3, y}, {15, 15}});
    canvas.saveGState();
    canvas.setLineWidth(1);
    canvas.addPath(circle);
    canvas.drawPath(CGPathDrawingMode::FillStroke);
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
        canvas.addPath(path);
        canvas.drawPath(CGPathDrawingMode::EOFillStroke);
        canvas.addRect(rect);
        canvas.drawPath(CGPathDrawingMode::FillStroke);
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

enum class Expected { Nothing, Something, Anything };

struct Case {
    const char* name;
    std::function<void(CGContext&)> draw;
    Expected expected;
};

void stroke(CGContext& canvas, double width, double phase, std::vector<double> dash) {
    CGPath path;
    path.addEllipseInRect({{10, 10}, {20, 20}});
    canvas.setLineWidth(width);
    canvas.setLineDash(phase, dash);
    canvas.addPath(path);
    canvas.drawPath(CGPathDrawingMode::Stroke);
}

void strokeRounded(CGContext& canvas, const CGRect& rect, double rx, double ry) {
    CGPath path;
    path.addRoundedRect(rect, rx, ry);
    canvas.addPath(path);
    canvas.drawPath(CGPathDrawingMode::FillStroke);
}

void under(CGContext& canvas, const CGAffineTransform& transform) {
    canvas.concatCTM(transform);
    paintEverything(canvas);
}

const Case kCases[] = {
    {"scale 0",
     [](CGContext& c) {
         under(c, {0, 0, 0, 0, 0, 0});
     },
     Expected::Nothing},
    {"scale 0 one way",
     [](CGContext& c) {
         under(c, {1, 0, 0, 0, 0, 0});
     },
     Expected::Nothing},
    {"both axes one",
     [](CGContext& c) {
         under(c, {1, 1, 1, 1, 0, 0});
     },
     Expected::Nothing},
    {"scale almost 0",
     [](CGContext& c) {
         under(c, {1e-300, 0, 0, 1, 0, 0});
     },
     Expected::Nothing},
    {"huge scale",
     [](CGContext& c) {
         under(c, {1e300, 0, 0, 1e300, 0, 0});
     },
     Expected::Nothing},
    {"NaN scale",
     [](CGContext& c) {
         under(c, {kNaN, 0, 0, 1, 0, 0});
     },
     Expected::Nothing},
    {"NaN translation",
     [](CGContext& c) {
         under(c, {1, 0, 0, 1, kNaN, 0});
     },
     Expected::Nothing},
    {"infinite translation",
     [](CGContext& c) {
         under(c, {1, 0, 0, 1, kInfinity, 0});
     },
     Expected::Nothing},
    {"huge translation",
     [](CGContext& c) {
         under(c, {1, 0, 0, 1, 1e25, -1e25});
     },
     Expected::Nothing},
    {"huge scale that still shows",
     [](CGContext& c) {
         under(c, {1e9, 0, 0, 1e9, -2e10, -2e10});
     },
     Expected::Anything},
    {"mirrored",
     [](CGContext& c) {
         under(c, {-1, 0, 0, 1, 40, 0});
     },
     Expected::Something},
    {"NaN rectangle",
     [](CGContext& c) {
         fillRect(c, {{kNaN, 0}, {20, 20}});
     },
     Expected::Nothing},
    {"infinite rectangle",
     [](CGContext& c) {
         fillRect(c, {{-kInfinity, 0}, {kInfinity, 20}});
     },
     Expected::Nothing},
    {"negative size",
     [](CGContext& c) {
         fillRect(c, {{30, 30}, {-20, -20}});
     },
     Expected::Something},
    {"NaN point",
     [](CGContext& c) {
         c.moveToPoint(10, 10);
         c.addLineToPoint(kNaN, 30);
         c.addLineToPoint(30, 30);
         c.drawPath(CGPathDrawingMode::FillStroke);
     },
     Expected::Nothing},
    {"radii beyond the sides",
     [](CGContext& c) {
         strokeRounded(c, {{10, 10}, {20, 20}}, 1e9, 1e300);
     },
     Expected::Something},
    {"negative radii",
     [](CGContext& c) {
         strokeRounded(c, {{10, 10}, {20, 20}}, -5, -5);
     },
     Expected::Something},
    {"negative circle",
     [](CGContext& c) {
         strokeRounded(c, {{30, 30}, {-20, -20}}, 10, 10);
     },
     Expected::Something},
    {"huge ellipse",
     [](CGContext& c) {
         CGPath path;
         path.addEllipseInRect({{-1e300, -1e300}, {1e301, 1e301}});
         c.addPath(path);
         c.drawPath(CGPathDrawingMode::FillStroke);
     },
     Expected::Nothing},
    {"line width 0", [](CGContext& c) { stroke(c, 0, 0, {}); }, Expected::Nothing},
    {"negative line width", [](CGContext& c) { stroke(c, -3, 0, {}); }, Expected::Nothing},
    {"NaN line width", [](CGContext& c) { stroke(c, kNaN, 0, {}); }, Expected::Nothing},
    {"dash of zeros",
     [](CGContext& c) {
         stroke(c, 2, 0, {0, 0});
     },
     Expected::Something},
    {"one zero", [](CGContext& c) { stroke(c, 2, 0, {0}); }, Expected::Something},
    {"zero lines, some gaps",
     [](CGContext& c) {
         stroke(c, 2, 0, {0, 5});
     },
     Expected::Anything},
    {"negative dash",
     [](CGContext& c) {
         stroke(c, 2, 0, {4, -2});
     },
     Expected::Something},
    {"NaN dash",
     [](CGContext& c) {
         stroke(c, 2, 0, {4, kNaN});
     },
     Expected::Something},
    {"infinite dash",
     [](CGContext& c) {
         stroke(c, 2, 0, {kInfinity, 1});
     },
     Expected::Something},
    {"dash too short to see",
     [](CGContext& c) {
         stroke(c, 2, 0, {1e-12, 1e-12});
     },
     Expected::Something},
    {"dash that overflows",
     [](CGContext& c) {
         stroke(c, 2, 0, {1e308, 1e308});
     },
     Expected::Something},
    {"NaN phase",
     [](CGContext& c) {
         stroke(c, 2, kNaN, {4, 2});
     },
     Expected::Something},
    {"huge phase",
     [](CGContext& c) {
         stroke(c, 2, -1e300, {4, 2});
     },
     Expected::Something},
    {"odd dash",
     [](CGContext& c) {
         stroke(c, 2, -7, {4, 2, 1});
     },
     Expected::Something},
    {"NaN clip",
     [](CGContext& c) {
         c.clipToRect({{kNaN, 0}, {40, 40}});
         paintEverything(c);
     },
     Expected::Nothing},
    {"colours out of range",
     [](CGContext& c) {
         c.setRGBFillColor(kNaN, -1, 1e30, 7);
         fillRect(c, {{10, 10}, {20, 20}});
     },
     Expected::Something},
    {"bitmap into a NaN rectangle",
     [](CGContext& c) {
         c.drawImage({{kNaN, 0}, {9, 9}}, *CGImage::createWithPixels(1, 1, {0xffffffff}));
     },
     Expected::Nothing},
    {"bitmap into no height",
     [](CGContext& c) {
         c.drawImage({{10, 10}, {9, 0}}, *CGImage::createWithPixels(1, 1, {0xffffffff}));
     },
     Expected::Nothing},
    {"bitmap enlarged beyond sense",
     [](CGContext& c) {
         c.drawImage({{-1e11, 0}, {2e11, 30}}, *CGImage::createWithPixels(1, 1, {0xffffffff}));
     },
     Expected::Anything},
    {"more restored than saved",
     [](CGContext& c) {
         c.restoreGState();
         c.saveGState();
     },
     Expected::Nothing},
};

TEST(HostileDrawing, LeavesTheNeighboursAlone) {
    constexpr int kSide = 60;
    CGBitmapContext alone(kSide, kSide);
    paintNeighbour(alone, 2);
    paintNeighbour(alone, 32);
    for (const Case& c : kCases) {
        CGBitmapContext canvas(kSide, kSide);
        paintNeighbour(canvas, 2);
        canvas.saveGState();
        canvas.clipToRect({{0, 0}, {38, kSide}});
        c.draw(canvas);
        canvas.restoreGState();
        paintNeighbour(canvas, 32);

        CGBitmapContext object(kSide, kSide);
        c.draw(object);
        object.clearRect({{38, 0}, {kSide, kSide}});
        const double area = coveredArea(object);
        if (c.expected != Expected::Anything) {
            EXPECT_EQ(area > 0, c.expected == Expected::Something) << c.name;
        }
        canvas.saveGState();
        canvas.clearRect({{0, 0}, {38, kSide}});
        canvas.restoreGState();
        EXPECT_EQ(largestDifference(canvas, alone), 0) << c.name;
    }
}

}  // namespace
}  // namespace orvane::platform
