#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>

#include "platform/coregraphics/CGBitmapContext.h"
#include "platform/coretext/CFMutableAttributedString.h"
#include "platform/coretext/CTFont.h"
#include "platform/coretext/CTFrame.h"
#include "platform/coretext/CTFramesetter.h"
#include "platform/coretext/CTLine.h"
#include "tests/coretext/registerTestFonts.h"

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

    static std::vector<std::uint32_t> pixels(const CGBitmapContext& canvas) {
        return {canvas.pixels(), canvas.pixels() + canvas.width() * canvas.height()};
    }

    static std::vector<std::uint32_t> drawn(const CTLine& text,
                                            const CGAffineTransform& transform) {
        CGBitmapContext canvas(kSide, kSide);
        draw(canvas, text, transform);
        return pixels(canvas);
    }

    // Covered pixels, each by its share.
    static double ink(const std::vector<std::uint32_t>& picture) {
        double sum = 0;
        for (const std::uint32_t pixel : picture) {
            sum += double(pixel >> 24) / 255;
        }
        return sum;
    }
};

TEST_F(PaintTest, APictureInPiecesEqualsThePictureInOne) {
    struct Placed {
        std::shared_ptr<const CTLine> text;
        CGAffineTransform transform;
    };
    const double c = std::cos(0.4);
    const double s = std::sin(0.4);
    const Placed scene[] = {
        {line("Quarter pixels, underlined", 13, {0.8, 0, 0, 0.7}, true), {1, 0, 0, 1, 10.3, 30.6}},
        {line("turned \U0001F600 text", 30), {c, s, -s, c, 20, 60}},
        {line("Bg", 250, {0, 0.4, 0, 0.5}), {1, 0, 0, 1, -20.4, 250.7}},
        {line("skewed", 20), {1.7, 0.2, 0.9, 2.1, 60, 200}},
        {line("\u05e9\u05dc\u05d5\u05dd \U0001F680 \u65e5\u672c", 22), {1, 0, 0, 1, 100, 280}},
    };
    const auto paint = [&](CGContext& canvas) {
        for (const Placed& each : scene) {
            draw(canvas, *each.text, each.transform);
        }
    };
    CGBitmapContext whole(kSide, kSide);
    paint(whole);

    std::mt19937 random(11);
    for (int round = 0; round < 20; ++round) {
        CGBitmapContext pieces(kSide, kSide);
        const double across = 1 + double(random() % (kSide - 1));
        const double down = 1 + double(random() % (kSide - 1));
        for (const CGRect& piece :
             {CGRect{{0, 0}, {across, down}}, CGRect{{across, 0}, {kSide - across, down}},
              CGRect{{0, down}, {across, kSide - down}},
              CGRect{{across, down}, {kSide - across, kSide - down}}}) {
            pieces.saveGState();
            pieces.clipToRect(piece);
            paint(pieces);
            pieces.restoreGState();
        }
        ASSERT_EQ(pixels(pieces), pixels(whole)) << across << " " << down;
    }
}

TEST_F(PaintTest, TextKeepsItsPlaceAndWeightAtEveryScaleAndMovesSmoothly) {
    const auto text = line("Hamburgefons", 14);
    const double once = ink(drawn(*text, {1, 0, 0, 1, 20, 100}));
    EXPECT_GT(once, 100);
    EXPECT_NEAR(ink(drawn(*text, {2, 0, 0, 2, 20, 100})), 4 * once, 0.05 * once);
    EXPECT_NEAR(ink(drawn(*text, {0, 1, -1, 0, 100, 20})), once, 0.02 * once);

    auto previous = drawn(*text, {1, 0, 0, 1, 20, 100});
    for (const double step : {0.25, 0.5, 0.75}) {
        const auto moved = drawn(*text, {1, 0, 0, 1, 20 + step, 100});
        EXPECT_NE(moved, previous) << step;
        EXPECT_NEAR(ink(moved), once, 0.02 * once) << step;
        previous = moved;
    }
    // A whole pixel is the same picture elsewhere.
    const auto whole = drawn(*text, {1, 0, 0, 1, 21, 100});
    auto shifted = drawn(*text, {1, 0, 0, 1, 20, 100});
    std::rotate(shifted.begin(), shifted.end() - 1, shifted.end());
    EXPECT_EQ(whole, shifted);
}

TEST_F(PaintTest, LargeLettersJoinSmallOnes) {
    // From one size on letters are filled as outlines; nothing may jump there.
    const auto text = line("R", 100);
    const double before = ink(drawn(*text, {1.59, 0, 0, 1.59, 50, 200}));
    const double after = ink(drawn(*text, {1.61, 0, 0, 1.61, 50, 200}));
    EXPECT_NEAR(after / before, 1.61 * 1.61 / (1.59 * 1.59), 0.01);
}

TEST_F(PaintTest, ColourComesFromTheTextAndPicturesKeepTheirOwn) {
    const auto picture = drawn(*line("\U0001F600", 60, {0, 0, 1, 1}), {1, 0, 0, 1, 20, 100});
    int yellow = 0;
    for (const std::uint32_t pixel : picture) {
        const auto red = pixel >> 16 & 255;
        const auto green = pixel >> 8 & 255;
        yellow += red > 200 && green > 150 && (pixel & 255) < 120;
    }
    EXPECT_GT(yellow, 500);
    const auto text = drawn(*line("text", 60, {0, 0, 1, 1}), {1, 0, 0, 1, 20, 100});
    EXPECT_EQ(std::count_if(text.begin(), text.end(),
                            [](std::uint32_t pixel) { return (pixel & 0xffff00) != 0; }),
              0);
}

TEST_F(PaintTest, TheUnderlineRunsUnderTheWholeText) {
    const auto plain = line("nnn", 20);
    const auto underlined = line("nnn", 20, {}, true);
    const auto before = drawn(*plain, {1, 0, 0, 1, 20, 100});
    const auto after = drawn(*underlined, {1, 0, 0, 1, 20, 100});
    const auto width = static_cast<int>(plain->typographicBounds().width);
    int row = -1;
    for (int y = 101; y < 110 && row < 0; ++y) {
        if (after[static_cast<std::size_t>(y * kSide + 25)] != 0) {
            row = y;
        }
    }
    ASSERT_GT(row, 0);
    for (int x = 20; x < 20 + width; ++x) {
        EXPECT_EQ(after[static_cast<std::size_t>(row * kSide + x)], 0xff000000u) << x;
        EXPECT_EQ(before[static_cast<std::size_t>(row * kSide + x)], 0u);
    }
}

TEST_F(PaintTest, HugeTextAndHugeCoordinatesLeaveTheCanvasAlive) {
    CGBitmapContext canvas(kSide, kSide);
    const auto text = line("neighbour", 20);
    const auto endless = line(std::string(1 << 20, 'x'), 13);
    draw(canvas, *endless, {1, 0, 0, 1, 0, 30});
    EXPECT_GT(ink(pixels(canvas)), 500) << "the part on the canvas shows";
    draw(canvas, *endless, {1, 0, 0, 1, -6e6, 60});
    for (const CGAffineTransform& transform :
         {CGAffineTransform{1e9, 0, 0, 1e9, 0, 0}, CGAffineTransform{1e-9, 0, 0, 1e-9, 10, 10},
          CGAffineTransform{1, 0, 0, 1, 1e18, 1e18}, CGAffineTransform{1, 0, 0, 1, NAN, 0},
          CGAffineTransform{0, 0, 0, 0, 0, 0}, CGAffineTransform{1, 1, 1, 1, 0, 0},
          CGAffineTransform{INFINITY, 0, 0, 1, 0, 0}, CGAffineTransform{100, 0, 0, 1e-6, 5, 100},
          CGAffineTransform{3000, 2000, -2000, 3000, 0, 0}}) {
        draw(canvas, *text, transform);
        draw(canvas, *line("\U0001F600", 20), transform);
    }
    const double before = ink(pixels(canvas));
    CGBitmapContext fresh(kSide, kSide);
    draw(canvas, *text, {1, 0, 0, 1, 20, 290});
    draw(fresh, *text, {1, 0, 0, 1, 20, 290});
    EXPECT_GE(ink(pixels(canvas)), before);
    EXPECT_GT(ink(pixels(fresh)), 100);
}

TEST_F(PaintTest, AFramePaintsItsLinesWhereTheyStand) {
    CFMutableAttributedString string;
    string.replaceString("first\nsecond");
    string.setFont(string.range(), CTFont::createWithName("DejaVuSans", 20));
    const CTFramesetter framesetter(string);
    const CGSize size = framesetter.suggestFrameSize(200);
    const auto frame = framesetter.createFrame({{10, 0}, {200, size.height}});
    CGBitmapContext canvas(kSide, kSide);
    canvas.translateCTM(0, size.height);
    canvas.scaleCTM(1, -1);
    canvas.drawFrame(*frame);

    CGBitmapContext lines(kSide, kSide);
    for (const auto& [text, origin, bottom] : frame->lines()) {
        draw(lines, *text, {1, 0, 0, 1, origin.x, size.height - origin.y});
    }
    EXPECT_EQ(pixels(canvas), pixels(lines));
}

}  // namespace
}  // namespace orvane::platform
