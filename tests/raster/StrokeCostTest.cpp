#include <gtest/gtest.h>

#include <ctime>
#include <random>

#include "tests/raster/paths.h"
#include "tests/raster/pixels.h"

namespace orvane::platform {
namespace {

// The time for a stroke whose lines cover the canvas many times, in clock ticks.
double timeOfLines(int count) {
    std::mt19937 random(7);
    CGPath path;
    for (int i = 0; i < count; ++i) {
        path.addLineToPoint(random() % 800, random() % 600);
    }
    CGBitmapContext canvas(800, 600);
    canvas.setLineWidth(150);
    const std::clock_t begin = std::clock();
    draw(canvas, path, CGPathDrawingMode::Stroke);
    return static_cast<double>(std::clock() - begin);
}

TEST(StrokeCost, LinesInsideTheStrokeCostLittle) {
    timeOfLines(201);
    EXPECT_LT(timeOfLines(2000), 6 * timeOfLines(200) + 0.05 * CLOCKS_PER_SEC);
}

}  // namespace
}  // namespace orvane::platform
