#include "platform/coregraphics/CGBitmapContext.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <limits>
#include <numbers>
#include <vector>

#include "platform/coregraphics/CGGradient.h"
#include "platform/coregraphics/CGPath.h"

namespace orvane::platform {
namespace {

constexpr std::uint32_t kRed = 0xffff0000u;
constexpr std::uint32_t kBlack = 0xff000000u;

std::uint32_t at(const CGBitmapContext& canvas, int x, int y) {
    return canvas.pixels()[static_cast<std::size_t>(y) * (canvas.bytesPerRow() / 4) +
                           static_cast<std::size_t>(x)];
}

TEST(BitmapContext, FillsAndStrokesWhatThePathSays) {
    CGBitmapContext canvas(40, 40);
    canvas.setRGBFillColor(1, 0, 0, 1);
    canvas.setLineWidth(2);
    CGPath circle;
    circle.addEllipseInRect({{10, 10}, {20, 20}});
    canvas.addPath(circle);
    canvas.drawPath(CGPathDrawingMode::FillStroke);
    EXPECT_EQ(at(canvas, 20, 20), kRed);
    EXPECT_GT(at(canvas, 20, 9) >> 24, 0xf0u);
    EXPECT_EQ(at(canvas, 20, 10), kBlack);
    EXPECT_EQ(at(canvas, 11, 11), 0u);
}

}  // namespace
}  // namespace orvane::platform
