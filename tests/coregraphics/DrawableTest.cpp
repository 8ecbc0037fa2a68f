#include "platform/coregraphics/CGDrawable.h"

#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <sstream>

#include "platform/coregraphics/CGRecordingContext.h"
#include "platform/coregraphics/CairoCanvas.h"
#include "tests/coregraphics/paths.h"
#include "tests/coregraphics/pixels.h"

namespace orvane::platform {
namespace {

constexpr std::uint32_t kBlue = 0xff0000ffu;

// A bar of ten by four that stands on the base line, as text does: above it, y up.
class Bar final : public CGDrawable {
public:
    void paint(CairoCanvas& canvas) const override {
        if (breaks) {
            const double senseless = -1;
            cairo_set_dash(canvas.cairo, &senseless, 1, 0);
        }
        cairo_rectangle(canvas.cairo, 0, 0, 10, 4);
        cairo_fill(canvas.cairo);
        ++painted;
    }
    CGRect inkBounds() const override { return {{0, 0}, {10, 4}}; }
    std::string description() const override { return "bar"; }

    bool breaks = false;
    mutable int painted = 0;
};

class Drawable : public testing::Test {
protected:
    void drawAt(double x, double y, const CGDrawable& drawable = Bar()) {
        canvas_.setRGBFillColor(0, 0, 1, 1);
        canvas_.saveGState();
        canvas_.translateCTM(x, y);
        canvas_.scaleCTM(1, -1);
        canvas_.drawLine(drawable);
        canvas_.restoreGState();
    }

    CGBitmapContext canvas_{40, 40};
};

TEST_F(Drawable, StandsUprightAfterAFlipInTheFillColour) {
    drawAt(5, 20);
    EXPECT_EQ(pixel(canvas_, 5, 19), kBlue);
    EXPECT_EQ(pixel(canvas_, 14, 16), kBlue);
    EXPECT_EQ(pixel(canvas_, 5, 20), 0u);
    EXPECT_EQ(coveredArea(canvas_), 40);

    canvas_.clearRect({{0, 0}, {40, 40}});
    canvas_.setTextMatrix(CGAffineTransform::makeTranslation(3, 1));
    drawAt(5, 20);
    EXPECT_EQ(pixel(canvas_, 8, 15), kBlue);
    EXPECT_EQ(pixel(canvas_, 8, 19), 0u);
}

TEST_F(Drawable, IsCutByTheClip) {
    canvas_.clipToRect({{8, 0}, {4.5, 40}});
    drawAt(5, 20);
    EXPECT_EQ(pixel(canvas_, 7, 18), 0u);
    EXPECT_EQ(pixel(canvas_, 8, 18), kBlue);
    EXPECT_EQ(pixel(canvas_, 12, 18) >> 24, 128u);
    EXPECT_EQ(pixel(canvas_, 13, 18), 0u);
}

TEST_F(Drawable, IsNotAskedWhereItCannotBeSeen) {
    const Bar bar;
    drawAt(500, 20, bar);
    drawAt(NAN, 20, bar);
    canvas_.scaleCTM(0, 1);
    drawAt(5, 20, bar);
    EXPECT_EQ(bar.painted, 0);
}

TEST_F(Drawable, OneThatBreaksTheLibrarysContextHarmsNoOther) {
    Bar broken;
    broken.breaks = true;
    drawAt(5, 10, broken);
    drawAt(5, 20);
    EXPECT_EQ(broken.painted, 1);
    EXPECT_EQ(pixel(canvas_, 5, 19), kBlue);
}

TEST(RecordingContext, KeepsCallsAsValuesInOrder) {
    CGRecordingContext canvas;
    CGPath path = rectPath(1, 2, 3, 4);
    canvas.clipToRect({{1, 2}, {3.5, 4}});
    canvas.setLineDash(1, std::array{2.0, 3.0});
    canvas.addPath(path);
    path.closeSubpath();  // what was recorded stays as it was
    canvas.drawPath(CGPathDrawingMode::EOFill);
    canvas.drawLine(Bar());
    canvas.drawFrame(Bar());
    canvas.clip();

    std::ostringstream text;
    const auto calls = canvas.calls();
    for (const auto& call : canvas.takeCalls()) {
        text << call << '\n';
    }
    EXPECT_EQ(text.str(),
              "clipToRect(1 2 3.5x4)\nsetLineDash(1, [2; 3])\n"
              "addPath(M 1 2 L 4 2 L 4 6 L 1 6 Z)\ndrawPath(1)\n"
              "drawLine(bar)\ndrawFrame(bar)\nclip()\n");
    EXPECT_TRUE(canvas.calls().empty());
    canvas.clip();
    EXPECT_EQ(canvas.calls().front(), calls.back());
    EXPECT_NE(canvas.calls().front(), calls.front());
}

}  // namespace
}  // namespace orvane::platform
