// An object with invalid properties paints nothing or its nearest sensible form, and everything
// else on the canvas is painted as usual.

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <functional>
#include <vector>

#include "platform/coregraphics/CGDrawable.h"
#include "platform/coregraphics/CGGradient.h"
#include "platform/coregraphics/CGImage.h"
#include "platform/coregraphics/CairoCanvas.h"
#include "tests/raster/paths.h"
#include "tests/raster/pixels.h"

namespace orvane::platform {
namespace {

using enum CGPathDrawingMode;
enum Expected { Nothing, Something, Anything };

// A square with sides of 10 that is painted through Cairo, unless the Cairo context is in an error
// state.
class Square final : public CGDrawable {
public:
    explicit Square(bool breaks) : breaks_(breaks) {}

    void paint(CairoCanvas& canvas) const override {
        if (breaks_) {
            const double invalid = -1;
            cairo_set_dash(canvas.cairo, &invalid, 1, 0);
        }
        cairo_rectangle(canvas.cairo, 0, 0, 10, 10);
        cairo_fill(canvas.cairo);
    }
    CGRect inkBounds() const override { return {{0, 0}, {10, 10}}; }
    std::string description() const override { return "square"; }

private:
    const bool breaks_;
};

// Another object, painted before and after the object under test: a circle with an outline, and a
// square.
void paintNeighbor(CGContext& canvas, double y) {
    canvas.saveGState();
    canvas.setLineWidth(1);
    draw(canvas, ellipsePath(40.3, y, 15, 15), FillStroke);
    canvas.translateCTM(45, y + 15);
    canvas.drawLine(Square(false));
    canvas.restoreGState();
}

// Draws every kind of content between (10, 10) and (30, 30).
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
        draw(canvas, linePath({{10, 10}, {30, 30}}), Stroke);
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
    CGBitmapContext alone(kSide, kSide), canvas(kSide, kSide);
    paintNeighbor(alone, 2);
    paintNeighbor(alone, 32);

    paintNeighbor(canvas, 2);
    canvas.saveGState();
    canvas.clipToRect({{0, 0}, {38, kSide}});
    drawObject(canvas);
    canvas.restoreGState();
    paintNeighbor(canvas, 32);
    if (expected != Anything) {
        EXPECT_EQ(coveredArea(canvas) > coveredArea(alone), expected == Something) << name;
    }
    canvas.clearRect({{0, 0}, {38, kSide}});
    EXPECT_EQ(picture(canvas), picture(alone)) << name;
}

TEST(HostileDrawing, TransformationsAndStates) {
    using Prepare = std::function<void(CGContext&)>;
    const auto under = [](const CGAffineTransform& transform) -> Prepare {
        return [transform](CGContext& canvas) { canvas.concatCTM(transform); };
    };
    const auto edgeOn = [](double scale) -> Prepare {
        return [scale](CGContext& canvas) {
            canvas.concatCTM(CGAffineTransform::makeRotation(0.3).scale(1, scale));
            canvas.setLineDash(0, std::array{4.0, 4.0});
            draw(canvas, ellipsePath(0, 0, 100, 100), Stroke);
        };
    };
    const struct {
        const char* name;
        Expected expected;
        Prepare prepare;
    } rows[] = {
        {"scale 0 in one direction", Nothing, under({1, 0, 0, 0, 0, 0})},
        {"scale almost 0", Nothing, under({1e-300, 0, 0, 1, 0, 0})},
        {"huge scale", Nothing, under({1e300, 0, 0, 1e300, 0, 0})},
        {"NaN scale", Nothing, under({NAN, 0, 0, 1, 0, 0})},
        {"infinite translation", Nothing, under({1, 0, 0, 1, INFINITY, 0})},
        {"huge visible scale", Anything, under({1e9, 0, 0, 1e9, -2e10, -2e10})},
        {"dashed and almost edge-on", Anything, edgeOn(1e-9)},
        {"dashed and closer to edge-on", Anything, edgeOn(1e-11)},
        {"NaN clip", Nothing,
         [](auto& canvas) {
             canvas.clipToRect({{NAN, 0}, {40, 40}});
         }},
        {"clip without a path", Nothing, [](auto& canvas) { canvas.clip(); }},
        {"colors", Something, [](auto& canvas) { canvas.setRGBFillColor(NAN, -1, 1e30, 7); }},
        {"Cairo error", Something, [](auto& canvas) { canvas.drawLine(Square(true)); }},
    };
    for (const auto& row : rows) {
        expectHarmless(row.name, row.expected, [&](CGContext& canvas) {
            row.prepare(canvas);
            paintEverything(canvas);
        });
    }
}

TEST(HostileDrawing, OutlinesAndStrokes) {
    const struct {
        const char* name;
        Expected expected;
        double width;
        double phase;
        std::vector<double> dash;
        CGPath path = ellipsePath(10, 10, 20, 20);
    } rows[] = {
        {"infinite rectangle", Nothing, 1, 0, {}, rectPath(-INFINITY, 0, INFINITY, 20)},
        {"NaN point", Nothing, 1, 0, {}, linePath({{10, 10}, {NAN, 30}, {30, 30}})},
        {"negative radii", Something, 1, 0, {}, roundedPath(10, 10, 20, 20, -5, -5)},
        {"huge ellipse", Nothing, 1, 0, {}, ellipsePath(-1e300, -1e300, 1e301, 1e301)},
        {"negative line width", Nothing, -3, 0, {}},
        {"NaN line width", Nothing, NAN, 0, {}},
        {"dash of zeros", Something, 2, 0, {0, 0}},
        {"negative dash", Something, 2, 0, {4, -2}},
        {"NaN dash", Something, 2, 0, {4, NAN}},
        {"dash too short to see", Something, 2, 0, {1e-12, 1e-12}},
        {"dash that overflows", Something, 2, 0, {1e308, 1e308}},
        {"huge phase", Something, 2, -1e300, {4, 2}},
    };
    for (const auto& row : rows) {
        expectHarmless(row.name, row.expected, [&](CGContext& canvas) {
            canvas.setLineWidth(row.width);
            canvas.setLineDash(row.phase, row.dash);
            draw(canvas, row.path, Stroke);
        });
    }
}

}  // namespace
}  // namespace orvane::platform
