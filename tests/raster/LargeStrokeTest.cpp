// Large strokes are made tile by tile, and wide ones of many lines without Cairo.

#include <cairo.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <numbers>
#include <random>
#include <vector>

#include "platform/coregraphics/CairoHandles.h"
#include "platform/raster/OutlineClipper.h"
#include "tests/raster/paths.h"
#include "tests/raster/pixels.h"

namespace orvane::platform {
namespace {

constexpr double kPi = std::numbers::pi;

// Points on a circle around the origin.
std::vector<CGPoint> circle(double radius, int count) {
    std::vector<CGPoint> points;
    for (int i = 0; i < count; ++i) {
        const double angle = 2 * kPi * i / count;
        points.push_back({radius * std::cos(angle), radius * std::sin(angle)});
    }
    return points;
}

class RandomPolyline : public testing::TestWithParam<unsigned> {};

TEST_P(RandomPolyline, EqualsTheStrokeOfCairo) {
    constexpr int kWidth = 700;
    constexpr int kHeight = 500;
    std::mt19937 random(GetParam());
    const auto number = [&](double from, double to) {
        return std::uniform_real_distribution<double>(from, to)(random);
    };
    const bool dense = GetParam() % 2 == 0;
    const bool closed = GetParam() % 3 == 0;
    const double step = dense ? 60 : 300;
    std::vector<CGPoint> points(1);
    for (int i = dense ? 250 : 12; i > 0; --i) {
        const CGPoint last = points.back();
        const double angle = number(-kPi, kPi);
        const double length = number(step / 2, step);
        points.push_back(
            {std::clamp(last.x + length * std::cos(angle), -50.0, closed ? 200.0 : 450.0),
             std::clamp(last.y + length * std::sin(angle), -50.0, closed ? 100.0 : 350.0)});
    }
    const double scale = number(0.7, 1.2);
    const auto transform = CGAffineTransform::makeTranslation(number(100, 200), number(50, 100))
                               .rotate(number(-0.3, 0.3))
                               .scale(scale, scale);
    const double width = dense ? number(20, 60) : number(1, 160);

    CGBitmapContext canvas(kWidth, kHeight);
    canvas.concatCTM(transform);
    canvas.setLineWidth(width);
    CGPath path;
    path.addLines(points);
    if (closed) {
        path.closeSubpath();
    }
    draw(canvas, path, CGPathDrawingMode::Stroke);

    const CairoSurface surface(cairo_image_surface_create(CAIRO_FORMAT_ARGB32, kWidth, kHeight));
    const CairoContext cairo(cairo_create(surface.get()));
    const cairo_matrix_t matrix{transform.a, transform.b,  transform.c,
                                transform.d, transform.tx, transform.ty};
    cairo_set_matrix(cairo.get(), &matrix);
    for (const CGPoint& p : points) {
        cairo_line_to(cairo.get(), p.x, p.y);
    }
    if (closed) {
        cairo_close_path(cairo.get());
    }
    cairo_set_line_width(cairo.get(), width);
    cairo_stroke(cairo.get());
    cairo_surface_flush(surface.get());
    int different = 0;
    for (int y = 0; y < kHeight; ++y) {
        const unsigned char* const row = cairo_image_surface_get_data(surface.get()) +
                                         y * cairo_image_surface_get_stride(surface.get());
        for (int x = 0; x < kWidth; ++x) {
            const int expected = row[4 * x + 3];
            different += std::abs(static_cast<int>(pixel(canvas, x, y) >> 24) - expected) > 48;
        }
    }
    EXPECT_LE(different, 3);
}

INSTANTIATE_TEST_SUITE_P(Seeds, RandomPolyline, testing::Range(13U, 25U));

TEST(LargeStroke, ATileStrokesOnlyTheLinesThatReachIt) {
    const double width = 200;
    const double reach = 10 * width / 2;
    OutlineClipper clipper(CGAffineTransform::makeTranslation(900, 128), 256, 256, reach, false);
    clipper.moveTo({1000, 0});
    for (const CGPoint& p : circle(1000, 2000)) {
        clipper.lineTo(p);
    }
    clipper.close();
    std::size_t lines = 0;
    for (const auto& run : clipper.strokedRuns({{}, width / 2, reach})) {
        lines += run.points.size() - 1;
    }
    EXPECT_LT(lines, 200U);
}

}  // namespace
}  // namespace orvane::platform
