#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

#include "platform/coretext/CFMutableAttributedString.h"
#include "platform/coretext/CTFont.h"
#include "platform/coretext/CTFrame.h"
#include "platform/coretext/CTFramesetter.h"
#include "platform/coretext/CTLine.h"
#include "tests/coretext/registerTestFonts.h"
#include "tests/raster/pixels.h"

namespace orvane::platform {
namespace {

constexpr int kSide = 300;

class PaintTest : public testing::Test {
protected:
    void SetUp() override { registerTestFonts(); }

    static std::shared_ptr<const CTLine> line(const std::string& text, double size,
                                              const CGColor& color = {}, bool underline = false) {
        CFMutableAttributedString string;
        string.replaceString(text);
        string.setFont(string.range(), CTFont::createWithName("DejaVuSerif", size));
        string.setForegroundColor(string.range(), color);
        string.setUnderline(string.range(), underline);
        return CTLine::createWithAttributedString(string);
    }

    static void draw(CGContext& canvas, const CTLine& text, const CGAffineTransform& transform) {
        canvas.saveGState();
        canvas.concatCTM(transform);
        canvas.scaleCTM(1, -1);
        canvas.drawLine(text);
        canvas.restoreGState();
    }

    static std::unique_ptr<CGBitmapContext> drawn(const CTLine& text,
                                                  const CGAffineTransform& transform) {
        auto canvas = std::make_unique<CGBitmapContext>(kSide, kSide);
        draw(*canvas, text, transform);
        return canvas;
    }
    static double ink(const CTLine& text, const CGAffineTransform& transform) {
        return coveredArea(*drawn(text, transform));
    }
};

TEST_F(PaintTest, PaintingInPiecesEqualsPaintingAtOnce) {
    const double c = std::cos(0.4);
    const double s = std::sin(0.4);
    const std::pair<std::shared_ptr<const CTLine>, CGAffineTransform> scene[] = {
        {line("Quarter pixels, underlined", 13, {0.8, 0, 0, 0.7}, true), {1, 0, 0, 1, 10.3, 130.6}},
        {line("turned \U0001F600 text", 30), {c, s, -s, c, 20, 60}},
        {line("Bg", 250, {0, 0.4, 0, 0.5}), {1, 0, 0, 1, -20.4, 250.7}},
        {line("skewed", 20), {1.7, 0.2, 0.9, 2.1, 60, 200}},
        {line("\u05e9\u05dc\u05d5\u05dd \U0001F680 \u65e5\u672c", 22), {1, 0, 0, 1, 100, 280}},
    };
    const auto paint = [&](CGContext& canvas) {
        // At the edges of this clip, text is painted in another way.
        canvas.clipToRect({{14.4, 22.3}, {270.2, 260.5}});
        canvas.setRGBFillColor(0.3, 0.6, 0.9, 1);
        canvas.addRect({{0, 0}, {kSide, kSide}});
        canvas.drawPath(CGPathDrawingMode::Fill);
        for (const auto& [text, transform] : scene) {
            draw(canvas, *text, transform);
        }
    };
    CGBitmapContext whole(kSide, kSide);
    paint(whole);

    CGBitmapContext pieces(kSide, kSide);
    for (const CGRect& piece : randomPieces(11, kSide, kSide)) {
        pieces.saveGState();
        pieces.clipToRect(piece);
        paint(pieces);
        pieces.restoreGState();
    }
    EXPECT_EQ(picture(pieces), picture(whole));
}

TEST_F(PaintTest, TextScalesAndMovesSmoothly) {
    const auto text = line("Hamburgefons", 14);
    auto previous = drawn(*text, {1, 0, 0, 1, 20, 100});
    for (const double step : {0.25, 0.5, 0.75}) {
        auto moved = drawn(*text, {1, 0, 0, 1, 20 + step, 100});
        EXPECT_NE(picture(*moved), picture(*previous)) << step;
        EXPECT_NEAR(coveredArea(*moved) / coveredArea(*previous), 1, 0.02) << step;
        previous = std::move(moved);
    }
    // Larger letters are filled as outlines; their size must not jump there.
    const auto letter = line("R", 100);
    const double before = ink(*letter, {1.59, 0, 0, 1.59, 50, 200});
    const double after = ink(*letter, {1.61, 0, 0, 1.61, 50, 200});
    EXPECT_NEAR(after / before, 1.61 * 1.61 / (1.59 * 1.59), 0.01);
}

TEST_F(PaintTest, TextFollowsTheSettingsOfTheDesktop) {
    using HintStyle = CTFontSmoothing::HintStyle;
    const struct {
        double size;
        CTFontSmoothing smoothing;
        double partial;  // the least and the largest share of pixels that are covered in part
        double mostPartial;
    } cases[] = {{13.5, {}, 0, 0},
                 {13.5, {HintStyle::None, true}, 0, 0},
                 {13, {}, 0.8, 1},
                 {13, {{}, false}, 0, 0},
                 {12.5, {HintStyle::None, true}, 0.8, 1},
                 {12.5, {HintStyle::Full, true}, 0.1, 0.6}};
    for (const auto& [size, smoothing, least, most] : cases) {
        CTFontManager::setSmoothing(smoothing);
        const auto canvas = drawn(*line("======", size), {1, 0, 0, 1, 10, 30});
        int partial = 0;
        int full = 0;
        for (int i = 0; i < kSide * kSide; ++i) {
            const unsigned alpha = canvas->pixels()[i] >> 24;
            (alpha == 0xFF ? full : partial) += alpha != 0 ? 1 : 0;
        }
        EXPECT_GT(full + partial, 50) << size;
        const double share = double(partial) / (full + partial);
        EXPECT_TRUE(share >= least && share <= most) << size << ": " << share;
    }
    CTFontManager::setSmoothing({});
}

TEST_F(PaintTest, HugeTextAndCoordinatesDoNotBreakTheCanvas) {
    CGBitmapContext canvas(kSide, kSide);
    const auto text = line("neighbor", 20);
    const auto endless = line(std::string(1 << 20, 'x'), 13);
    draw(canvas, *endless, {1, 0, 0, 1, 0, 30});
    EXPECT_GT(coveredArea(canvas), 500) << "the part on the canvas shows";
    draw(canvas, *endless, {1, 0, 0, 1, -6e6, 60});
    canvas.clearRect({{0, 0}, {kSide, kSide}});
    const CGAffineTransform transforms[] = {
        {1e9, 0, 0, 1e9, 0, 0},    {1e-9, 0, 0, 1e-9, 10, 10}, {1, 0, 0, 1, 1e18, 1e18},
        {1, 0, 0, 1, NAN, 0},      {0, 0, 0, 0, 0, 0},         {1, 1, 1, 1, 0, 0},
        {INFINITY, 0, 0, 1, 0, 0}, {100, 0, 0, 1e-6, 5, 100},  {1000, 0, 0, 1000, -2000, 5000}};
    for (const CGAffineTransform& transform : transforms) {
        draw(canvas, *text, transform);
        draw(canvas, *line("\U0001F600", 20), transform);
    }
    draw(canvas, *text, {1, 0, 0, 1, 20, 290});
    EXPECT_EQ(picture(canvas), picture(*drawn(*text, {1, 0, 0, 1, 20, 290})));
}

}  // namespace
}  // namespace orvane::platform
