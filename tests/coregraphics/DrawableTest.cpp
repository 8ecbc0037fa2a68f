#include "platform/coregraphics/CGDrawable.h"

#include <gtest/gtest.h>

#include <cmath>

#include "platform/coregraphics/CGBitmapContext.h"
#include "platform/coregraphics/CGPath.h"
#include "platform/coregraphics/CairoCanvas.h"
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

void drawAt(CGContext& canvas, const CGDrawable& drawable, double x, double y) {
    canvas.saveGState();
    canvas.translateCTM(x, y);
    canvas.scaleCTM(1, -1);
    canvas.drawLine(drawable);
    canvas.restoreGState();
}

TEST(Drawable, StandsUprightAfterAFlipInTheFillColour) {
    CGBitmapContext canvas(40, 40);
    canvas.setRGBFillColor(0, 0, 1, 1);
    drawAt(canvas, Bar(), 5, 20);
    EXPECT_EQ(pixel(canvas, 5, 19), kBlue);
    EXPECT_EQ(pixel(canvas, 14, 16), kBlue);
    EXPECT_EQ(pixel(canvas, 5, 20), 0u);
    EXPECT_EQ(coveredArea(canvas), 40);

    canvas.clearRect({{0, 0}, {40, 40}});
    canvas.setTextMatrix(CGAffineTransform::makeTranslation(3, 1));
    drawAt(canvas, Bar(), 5, 20);
    EXPECT_EQ(pixel(canvas, 8, 15), kBlue);
    EXPECT_EQ(pixel(canvas, 8, 19), 0u);
}

TEST(Drawable, IsCutByTheClip) {
    CGBitmapContext canvas(40, 40);
    canvas.setRGBFillColor(0, 0, 1, 1);
    canvas.saveGState();
    canvas.clipToRect({{8, 0}, {4.5, 40}});
    drawAt(canvas, Bar(), 5, 20);
    canvas.restoreGState();
    EXPECT_EQ(pixel(canvas, 7, 18), 0u);
    EXPECT_EQ(pixel(canvas, 8, 18), kBlue);
    EXPECT_EQ(pixel(canvas, 12, 18) >> 24, 128u);
    EXPECT_EQ(pixel(canvas, 13, 18), 0u);
}

TEST(Drawable, IsNotAskedWhereItCannotBeSeen) {
    CGBitmapContext canvas(40, 40);
    const Bar bar;
    drawAt(canvas, bar, 500, 20);
    drawAt(canvas, bar, NAN, 20);
    canvas.saveGState();
    canvas.scaleCTM(0, 1);
    drawAt(canvas, bar, 5, 20);
    canvas.restoreGState();
    EXPECT_EQ(bar.painted, 0);
}

TEST(Drawable, OneThatBreaksTheLibrarysContextHarmsNoOther) {
    CGBitmapContext canvas(40, 40);
    Bar broken;
    broken.breaks = true;
    drawAt(canvas, broken, 5, 10);
    drawAt(canvas, Bar(), 5, 20);
    EXPECT_EQ(broken.painted, 1);
    EXPECT_EQ(pixel(canvas, 5, 19), 0xff000000u);
}

}  // namespace
}  // namespace orvane::platform
