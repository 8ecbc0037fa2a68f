#include <gtest/gtest.h>

#include <cmath>
#include <functional>

#include "orvane/display/graphics/quartz/TextWrapper.h"
#include "orvane/orvane.h"
#include "tests/coretext/registerTestFonts.h"
#include "tests/graphics/painted.h"

namespace orvane::display::graphics {
namespace {

using Box = geometry::Rect<double>;
using std::string;

bool has(const string& calls, const string& call) {
    return calls.find(call) != calls.npos;
}

// What the font says of "abc" at 16 units: an advance of 30.0 or so, ascent 14.85, descent 3.77.
constexpr double kHeight = 16.0 * (1901 + 483) / 2048;
constexpr double kDescent = 4;  // rounded up

class TextTest : public testing::Test {
protected:
    void SetUp() override { platform::registerTestFonts(); }

    static std::shared_ptr<Text> makeText(bool multiline, const string& content = "abc") {
        const auto text = DisplayFactory::createText(multiline);
        text->setFont("DejaVuSans");
        text->setTextSize(16);
        text->setContent(content);
        return text;
    }
};

TEST_F(TextTest, StandsAtItsPointByAlignmentAndBaseline) {
    const double width = makeText(false)->getTextBounds().width;
    ASSERT_GT(width, 20);
    const struct {
        TextAlign align;
        AlignmentBaseline baseline;
        double left, baselineY;
    } cases[] = {
        {TextAlign::Start, AlignmentBaseline::Baseline, 100, 50},
        {TextAlign::Center, AlignmentBaseline::Baseline, std::ceil(100 - width / 2), 50},
        {TextAlign::End, AlignmentBaseline::Baseline, 100 - width, 50},
        {TextAlign::Start, AlignmentBaseline::Middle, 100, std::ceil(50 + kHeight / 2 - kDescent)},
        {TextAlign::Start, AlignmentBaseline::Top, 100, 50 + 16 - kDescent},
    };
    for (const auto& each : cases) {
        const auto text = makeText(false);
        text->setTextAlign(each.align);
        text->setAlignmentBaseline(each.baseline);
        text->setX(100);
        text->setY(50);
        const double top = std::nearbyint(each.baselineY + kDescent - std::ceil(kHeight));
        EXPECT_EQ(text->getBounds(), Box(each.left, top, width, std::ceil(kHeight)));
        EXPECT_EQ(text->getFrame(), text->getBounds());
        std::ostringstream translate;
        translate << "translateCTM(" << each.left << ", " << each.baselineY << ")";
        EXPECT_TRUE(has(painted(*text), translate.str())) << painted(*text);
    }
}

TEST_F(TextTest, OriginIsRoundedUp) {
    quartz::TextWrapper wrapper;
    wrapper.setFontName("DejaVuSans");
    wrapper.setFontSize(16);
    wrapper.setText("abc");
    wrapper.setX(-0.75F);
    wrapper.setY(20.25F);
    EXPECT_EQ(wrapper.getBounds().x, 0);
    EXPECT_EQ(wrapper.getBounds().y, std::nearbyint(21 + kDescent - kHeight));
}

TEST_F(TextTest, PaintsTheSameCallsInTheSameOrder) {
    const auto text = makeText(false, "a\nb");
    text->setX(3);
    text->setY(20);
    text->setFillColor(255, 127, 0, 255);
    const string line = "drawLine(\"ab\" [0+19.9609 size 16 color 1 0.5 0.00390625 1])\n";
    const string placed =
        "translateCTM(3, 20)\nscaleCTM(1, -1)\nsetTextMatrix(1 0 0 1 0 0)\n" + line;
    const string open = "saveGState()\nconcatCTM(1 0 0 1 0 0)\n";
    EXPECT_EQ(painted(*text), open + placed + "restoreGState()\n");

    text->setDecoration(true, true);
    const Box bounds = text->getBounds();
    std::ostringstream strike;
    strike << "setRGBStrokeColor(1 0.5 0.00390625 1)\nmoveToPoint(" << bounds.x << " "
           << bounds.y + bounds.height / 2 << ")\naddLineToPoint(" << bounds.x + bounds.width << " "
           << bounds.y + bounds.height / 2 << ")\nstrokePath()\n";
    EXPECT_TRUE(has(painted(*text), open + strike.str() + "translateCTM")) << painted(*text);
    EXPECT_TRUE(has(painted(*text), " underline]"));
}

TEST_F(TextTest, ContentDropsNewlinesAndEndsAtAZero) {
    using namespace std::string_literals;
    EXPECT_EQ(makeText(false, "a\nb")->getTextBounds(), makeText(false, "ab")->getTextBounds());
    EXPECT_EQ(makeText(false, "ab\0cdef"s)->getTextBounds(),
              makeText(false, "ab")->getTextBounds());
    quartz::TextWrapper wrapper;
    wrapper.setText("a\nb");
    EXPECT_EQ(wrapper.getText(), "a\nb");
    const auto empty = makeText(false, "");
    EXPECT_EQ(empty->getTextBounds(), geometry::Size<double>());
    EXPECT_GT(makeText(false, "\xff\xfe")->getTextBounds().width, 10);
}

TEST_F(TextTest, ColoursSetBeforeTheContentShow) {
    const auto text = DisplayFactory::createText(false);
    text->setFillColor(0xFF0000FF);
    text->setContent("x");
    EXPECT_TRUE(has(painted(*text), "color 0.00390625 0.00390625 1 1")) << painted(*text);
    text->setContent("");
    text->setContent("y");
    EXPECT_TRUE(has(painted(*text), "color 0.00390625 0.00390625 1 1")) << painted(*text);
}

TEST_F(TextTest, ASizeOfZeroLeavesTheSize) {
    const auto text = makeText(false);
    const Box before = text->getBounds();
    text->setTextSize(0);
    EXPECT_EQ(text->getBounds(), before);
    text->setTextSize(32);
    EXPECT_NEAR(text->getBounds().width, 2 * before.width, 2);
    for (const float nonsense : {-5.0F, std::nanf(""), INFINITY, 1e30F}) {
        text->setTextSize(nonsense);
        painted(*text);
    }
}

TEST_F(TextTest, SegmentsOfAPlainTextShareTheStyleOfTheFirst) {
    Text::Segment first;
    first.content = "on";
    first.font = "DejaVuSans";
    first.textSize = 20;
    first.x = 7.0F;
    first.fillColor = {255, 0, 0, 255};
    first.decoration = 3;
    Text::Segment second;
    second.content = "e";
    second.textSize = 99;
    second.x = 500.0F;
    const auto text = DisplayFactory::createText(false);
    text->setX(-50);
    text->setY(-50);
    text->setContent({first, second});
    const string calls = painted(*text);
    EXPECT_TRUE(has(calls, "drawLine(\"one\"")) << calls;
    EXPECT_TRUE(has(calls, "size 20 color 1 0.00390625 0.00390625 1 underline]")) << calls;
    EXPECT_TRUE(has(calls, "translateCTM(7, 0)")) << calls;
    EXPECT_TRUE(has(calls, "strokePath()")) << calls;

    // Nothing at all keeps every style.
    text->setContent(std::vector<Text::Segment>());
    EXPECT_EQ(text->getTextBounds().width, 0);
    text->setContent("one");
    text->setX(7);  // the place of a measured text comes from its rounded extent
    EXPECT_EQ(painted(*text), calls);
}

TEST_F(TextTest, WrapsAtItsWidthBelowItsPoint) {
    const auto text = DisplayFactory::createText(true);
    text->setFont("DejaVuSans");
    text->setTextSize(16);
    text->setWidth(70);
    text->setContent("aaa bbb\nccc");  // the newline is dropped: "aaa bbbccc"
    text->setX(5.5F);
    text->setY(9.25F);
    EXPECT_EQ(text->getBounds().width, 70);
    EXPECT_NEAR(text->getBounds().height, 2 * kHeight, 0.01);
    EXPECT_EQ(text->getBounds().position(), geometry::Point<double>(5.5, 9.25)) << "not rounded";
    // The alignments of one line play no part.
    text->setTextAlign(TextAlign::End);
    text->setAlignmentBaseline(AlignmentBaseline::Top);
    EXPECT_EQ(text->getBounds().position(), geometry::Point<double>(5.5, 9.25));

    const string calls = painted(*text);
    std::ostringstream order;
    order << "setRGBStrokeColor(1 0 0 1)\nsetTextMatrix(1 0 0 1 0 0)\ntranslateCTM(0, "
          << text->getBounds().height + 2 * 9.25 << ")\nscaleCTM(1, -1)\ndrawFrame(5.5 ";
    EXPECT_TRUE(has(calls, order.str())) << calls;
    EXPECT_TRUE(has(calls, "\"aaa \"") && has(calls, "\"bbbccc\"")) << calls;

    text->setAlignment(TextAlign::End);
    EXPECT_FALSE(has(painted(*text), "drawFrame(5.5 ")) << painted(*text);
    text->setWidth(0);
    EXPECT_EQ(text->getTextBounds(), geometry::Size<double>());
}

TEST_F(TextTest, ParagraphAlignmentIsLostOnAnEmptyText) {
    const auto late = makeText(true);
    late->setWidth(200);
    late->setAlignment(TextAlign::End);
    const auto early = DisplayFactory::createText(true);
    early->setWidth(200);
    early->setAlignment(TextAlign::End);
    early->setFont("DejaVuSans");
    early->setTextSize(16);
    early->setContent("abc");
    EXPECT_TRUE(has(painted(*early), "drawFrame(0 ")) << painted(*early);
    EXPECT_FALSE(has(painted(*late), "drawFrame(0 ")) << painted(*late);
}

TEST_F(TextTest, WhatATextCannotDoThrowsAString) {
    const auto text = makeText(false);
    const std::pair<std::function<void()>, string> cases[] = {
        {[&] { text->setFillColor(LinearGradient()); },
         "QuartzText::setFillColor(const LinearGradient& gradient) not implemented"},
        {[&] { text->setPattern(Pattern()); }, "QuartzText::setPattern not implemented"},
        {[&] { text->setStrokeColor(LinearGradient()); },
         "QuartzText::setStrokeColor(const LinearGradient& gradient) not implemented"},
        {[&] { text->setItalicStyle(true); },
         "QuartzTextStyleable::setItalicStyle not implemented"},
    };
    for (const auto& [call, message] : cases) {
        try {
            call();
            ADD_FAILURE() << message;
        } catch (const char* thrown) {
            EXPECT_EQ(thrown, message);
        }
    }
    // And these are accepted and change nothing.
    const string before = painted(*text);
    const Box bounds = text->getBounds();
    text->setStrokeWidth(10);
    text->setFontWeight(900);
    text->setAlignment(TextAlign::End);
    text->setMultiline(true);
    text->setWidth(5);
    EXPECT_EQ(painted(*text), before);
    EXPECT_EQ(text->getBounds(), bounds);
    EXPECT_EQ(text->getStrokeWidth(), 0);
    EXPECT_EQ(text->getIndexByPoint({1, 1}), 0u);
    EXPECT_EQ(text->getDescription(), "QuartzText");
}

}  // namespace
}  // namespace orvane::display::graphics
