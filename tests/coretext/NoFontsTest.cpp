// A machine without any font. A process of its own, because fonts cannot be removed from a process.

#include <gtest/gtest.h>

#include <cstdlib>

#include "platform/coretext/CFMutableAttributedString.h"
#include "platform/coretext/CTFont.h"
#include "platform/coretext/CTFrame.h"
#include "platform/coretext/CTFramesetter.h"
#include "platform/coretext/CTLine.h"
#include "tests/raster/pixels.h"

namespace orvane::platform {
namespace {

TEST(NoFonts, TextHasNoInk) {
    setenv("FONTCONFIG_FILE", ORVANE_TEST_NO_FONTS, 1);
    CFMutableAttributedString string;
    string.replaceString("text \u65e5 \U0001F600\nof two lines");
    string.setFont(string.range(), CTFont::createWithName("DejaVu Sans", 20));
    string.setUnderline(string.range(), true);
    CGBitmapContext canvas(100, 100);
    canvas.translateCTM(20, 50);
    canvas.drawLine(*CTLine::createWithAttributedString(string));
    const CTFramesetter framesetter(string);
    EXPECT_EQ(framesetter.suggestFrameSize(10), CGSize{});
    const auto frame = framesetter.createFrame({{0, 0}, {10, 100}});
    EXPECT_TRUE(frame->stringIndexForPosition({5, 50}));
    canvas.drawFrame(*frame);
    EXPECT_EQ(coveredArea(canvas), 0);
}

}  // namespace
}  // namespace orvane::platform
