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
using Segment = Text::Segment;

// Metrics of the test font at a size of 16: ascent 14.85, descent 3.77.
constexpr double kAscent = 16.0 * 1901 / 2048;
constexpr double kHeight = 16.0 * (1901 + 483) / 2048;
constexpr double kDescent = 4;  // rounded up

class TextTest : public testing::Test {
protected:
    void SetUp() override { platform::registerTestFonts(); }

    template <typename T>
    static std::shared_ptr<T> withFont(const std::shared_ptr<T>& text, const string& content) {
        text->setFont("DejaVuSans");
        text->setTextSize(16);
        text->setContent(content);
        return text;
    }
    static std::shared_ptr<Text> makeText(const string& content = "abc", bool multiline = false) {
        return withFont(DisplayFactory::createText(multiline), content);
    }
    static double widthOf(const string& content) {
        return makeText(content)->getTextBounds().width;
    }
    static Segment segment(const string& content, float size = 16) {
        Segment result;
        result.font = "DejaVuSans";
        result.content = content;
        result.textSize = size;
        return result;
    }
    // Whether the canvas calls of an object contain all of these parts.
    static testing::AssertionResult paints(DisplayObject& object, std::vector<string> parts) {
        const string calls = painted(object);
        for (const string& part : parts) {
            if (calls.find(part) == string::npos) {
                return testing::AssertionFailure() << part << " is not in " << calls;
            }
        }
        return testing::AssertionSuccess();
    }
};

template <typename... Parts>
string concat(const Parts&... parts) {
    std::ostringstream text;
    (text << ... << parts);
    return text.str();
}

TEST_F(TextTest, AlignmentAndBaselineDetermineThePosition) {
    const double width = widthOf("abc");
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
        const auto text = makeText();
        text->setTextAlign(each.align);
        text->setAlignmentBaseline(each.baseline);
        text->setX(100);
        text->setY(50);
        const double top = std::nearbyint(each.baselineY + kDescent - std::ceil(kHeight));
        EXPECT_EQ(text->getBounds(), Box(each.left, top, width, std::ceil(kHeight)));
        EXPECT_EQ(text->getFrame(), text->getBounds());
        EXPECT_TRUE(paints(*text, {concat("translateCTM(", each.left, ", ", each.baselineY, ")")}));
    }
}

TEST_F(TextTest, ContentDropsNewlinesAndEndsAtAZeroByte) {
    using namespace std::string_literals;
    EXPECT_EQ(widthOf("a\nb"), widthOf("ab"));
    EXPECT_EQ(widthOf("ab\0cdef"s), widthOf("ab"));
    EXPECT_EQ(makeText("")->getTextBounds(), geometry::Size<double>());
    EXPECT_GT(widthOf("\xff\xfe"), 10);
    quartz::TextWrapper wrapper;
    wrapper.setText("a\nb");
    EXPECT_EQ(wrapper.getText(), "a\nb");
}

TEST_F(TextTest, ColorsSetBeforeTheContentAreUsed) {
    const auto text = DisplayFactory::createText(false);
    text->setFillColor(0xFF0000FF);
    for (const char* const content : {"x", "", "y"}) {
        text->setContent(content);
        EXPECT_TRUE(*content == 0 || paints(*text, {"color 0.00390625 0.00390625 1 1"}));
    }
}

TEST_F(TextTest, AllSegmentsOfAPlainTextHaveTheStyleOfTheFirst) {
    Segment first = segment("on", 20);
    first.x = 7.0F;
    first.fillColor = {255, 0, 0, 255};
    first.decoration = 3;
    Segment second = segment("e", 99);
    second.x = 500.0F;
    const auto text = DisplayFactory::createText(false);
    text->setX(-50);
    text->setY(-50);
    text->setContent({first, second});
    EXPECT_EQ(text->getContent(), "one");
    EXPECT_TRUE(paints(*text, {"setRGBStrokeColor(1 0.00390625 0.00390625 1)\n",
                               "strokePath()\ntranslateCTM(7, 0)", "drawLine(\"one\"",
                               "size 20 color 1 0.00390625 0.00390625 1 underline]"}));
    const string calls = painted(*text);
    const double end = 7 + text->getTextBounds().width;
    EXPECT_NE(calls.find(concat("addLineToPoint(", end, " -7)")), string::npos) << calls;

    const auto alone = DisplayFactory::createText(false);
    first.font = "DejaVuSans-Bold";
    first.x.reset();
    alone->setContent({first});
    EXPECT_EQ(alone->getContent(), "on");
    EXPECT_TRUE(paints(*alone, {"translateCTM(0, 0)"}));
    const auto regular = makeText("on");
    regular->setTextSize(20);
    EXPECT_GT(alone->getTextBounds().width, regular->getTextBounds().width) << "it is bold";

    // An empty vector keeps every style.
    text->setContent(std::vector<Segment>());
    EXPECT_EQ(text->getTextBounds().width, 0);
    text->setContent("one");
    text->setX(7);  // an empty text has another rounded origin: set it again
    EXPECT_EQ(painted(*text), calls);
}

// Setters called between two paintings have the same effect as those before the first.
TEST_F(TextTest, ASetterIsVisibleInTheNextPainting) {
    const std::function<void(Text&)> setters[] = {
        [](Text& text) { text.setContent(string("other words")); },
        [](Text& text) { text.setTextSize(31); },
        [](Text& text) { text.setFont("DejaVuSerif"); },
        [](Text& text) { text.setFillColor(0xFF102030); },
        [](Text& text) { text.setDecoration(true, true); },
        [](Text& text) { text.setTextAlign(TextAlign::End); },
        [](Text& text) { text.setAlignmentBaseline(AlignmentBaseline::Top); },
        [](Text& text) { text.setX(33); },
        [](Text& text) { text.setY(44); },
    };
    const auto paintedOften = makeText();
    const auto paintedOnce = makeText();
    string before = painted(*paintedOften);
    for (const auto& set : setters) {
        set(*paintedOften);
        set(*paintedOnce);
        const string calls = painted(*paintedOften);
        EXPECT_NE(calls, before) << &set - setters;
        before = calls;
    }
    EXPECT_EQ(before, painted(*paintedOnce));
}

TEST_F(TextTest, IgnoresSizesThatAreZeroOrNotFinite) {
    const double width = widthOf("abc");
    for (const float size : {0.F, 1e-39F, std::nanf(""), INFINITY, -INFINITY}) {
        const auto text = makeText();
        text->setTextSize(size);
        EXPECT_EQ(text->getTextBounds().width, width) << size;
        const auto attributed = withFont(DisplayFactory::createAttributedText(), "");
        attributed->setContent({segment("abc", size)});
        EXPECT_EQ(attributed->getBounds().width, width) << size;
    }
}

TEST_F(TextTest, WrapsAtItsWidthBelowItsPosition) {
    const auto text = makeText("aaa bbb\nccc", true);  // the newline is dropped: "aaa bbbccc"
    text->setWidth(70);
    text->setX(5.5F);
    text->setY(9.25F);
    EXPECT_NEAR(text->getBounds().height, 2 * kHeight, 0.01);
    const Box bounds(5.5, 9.25, 70, text->getBounds().height);  // not rounded
    EXPECT_EQ(text->getBounds(), bounds);
    // The alignments of texts of one line have no effect.
    text->setTextAlign(TextAlign::End);
    text->setAlignmentBaseline(AlignmentBaseline::Top);
    EXPECT_EQ(text->getBounds(), bounds);
    EXPECT_TRUE(paints(*text, {"setRGBStrokeColor(1 0 0 1)\n", "drawFrame(5.5 "}));
    text->setAlignment(TextAlign::End);
    EXPECT_FALSE(paints(*text, {"drawFrame(5.5 "}));
    text->setWidth(0);
    EXPECT_EQ(text->getTextBounds(), geometry::Size<double>());
}

TEST_F(TextTest, AWrappedTextMayKeepItsLineBreaks) {
    const auto text = makeText("aaa bbb\nccc", true);
    text->setWidth(200);
    EXPECT_NEAR(text->getTextBounds().height, kHeight, 0.01);
    text->setLineBreaks(LineBreaks::Keep);
    EXPECT_NEAR(text->getTextBounds().height, 2 * kHeight, 0.01);
    text->setContent("a\n\nb\n");
    EXPECT_NEAR(text->getTextBounds().height, 4 * kHeight, 0.01);
    text->setLineBreaks(LineBreaks::Drop);
    EXPECT_NEAR(text->getTextBounds().height, kHeight, 0.01);

    const auto line = makeText("a\nb");
    line->setLineBreaks(LineBreaks::Keep);
    EXPECT_EQ(line->getTextBounds().width, widthOf("ab"));
}

TEST_F(TextTest, MeasuringWithoutAnObjectAgreesWithAnObject) {
    const FontStyle font{"DejaVuSans", 16};
    for (const string content : {"", "abc", "aaa bbb\nccc", "aaa bbb ccc ddd"}) {
        SCOPED_TRACE(content);
        EXPECT_EQ(measureText(content, font), makeText(content)->getTextBounds());
        for (const LineBreaks breaks : {LineBreaks::Drop, LineBreaks::Keep}) {
            const auto text = makeText(content, true);
            text->setWidth(70);
            text->setLineBreaks(breaks);
            EXPECT_EQ(measureText(content, font, 70, breaks), text->getTextBounds());
        }
    }
    EXPECT_EQ(measureText("abc", font, -1).height, 0);
    EXPECT_EQ(measureText("abc", {"DejaVuSans", 0}), measureText("abc", {"DejaVuSans", 12}));
}

TEST_F(TextTest, ShortensATextToAWidth) {
    const FontStyle font{"DejaVuSans", 16};
    const auto width = [&](const string& text) {
        return static_cast<float>(measureText(text, font).width);
    };
    const struct {
        string content;
        float width;
        string expected;
    } cases[] = {
        {"abcdef", width("abcdef"), "abcdef"},
        {"abcdef", width("abcdef") - 1, "abc…"},
        {"ääääää", width("äää…"), "äää…"},
        {"ab cdef", width("ab c…") - 1, "ab…"},
        {"ab\ncd", 500, "ab…"},
        {"abcdef", width("…"), "…"},
        {"abcdef", width("…") - 1, ""},
        {"", 5, ""},
        {"\nb", 500, "…"},
        {"abc", std::nanf(""), ""},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(shortenText(c.content, font, c.width), c.expected) << c.content << c.width;
    }
}

TEST_F(TextTest, UnsupportedStylesThrowAString) {
    const auto text = makeText();
    EXPECT_THROW(text->setFillColor(LinearGradient()), const char*);
    EXPECT_THROW(text->setPattern(Pattern()), const char*);
    EXPECT_THROW(text->setStrokeColor(LinearGradient()), const char*);
    EXPECT_THROW(text->setItalicStyle(true), const char*);
    // Other styles are accepted and change nothing.
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
}

class AttributedTextTest : public TextTest {
protected:
    const std::shared_ptr<AttributedText> text_ =
        (platform::registerTestFonts(), withFont(DisplayFactory::createAttributedText(), ""));
};

TEST_F(AttributedTextTest, ASegmentWithAPositionBeginsABlock) {
    auto second = segment("second");
    second.x = 40.0F;
    second.y = 60.0F;
    auto third = segment("third");
    third.y = 90.0F;
    third.alignmentBaseline = AlignmentBaseline::Top;
    text_->setX(5);
    text_->setY(7);
    text_->setContent({segment("first "), segment("goes on"), second, third});
    EXPECT_EQ(text_->getContent(), "first goes on" + second.content + "third");
    const Box bounds = text_->getBounds();
    EXPECT_EQ(bounds.y, std::floor(7 - kAscent)) << "the first baseline lies at y";
    EXPECT_EQ(bounds.y + bounds.height, std::ceil(7 + 90 + kHeight))
        << "the top of the third block lies at y";
    EXPECT_TRUE(paints(*text_, {"\"first goes on\"",
                                concat("translateCTM(45, ", 7 + 60 - kAscent + kHeight, ")")}));
    third.alignmentBaseline = AlignmentBaseline::Middle;
    text_->setContent({third});
    EXPECT_EQ(text_->getBounds().y, std::floor(7 + 90 - kHeight / 2));
}

TEST_F(AttributedTextTest, AlignsWithinItsWidthOrAtItsX) {
    const double width = widthOf("abc");
    for (const auto& [align, share] :
         {std::pair{TextAlign::Start, 0.0}, {TextAlign::Center, 0.5}, {TextAlign::End, 1.0}}) {
        auto aligned = segment("abc");
        aligned.textAlign = align;
        aligned.x = 100.0F;
        text_->setWidth(-1);
        text_->setContent({aligned});
        EXPECT_NEAR(text_->getBounds().x, 100 - share * width, 1) << share;
        text_->setWidth(300);
        EXPECT_EQ(text_->getBounds().x, 100);
        EXPECT_EQ(text_->getIndexByPoint({100 + share * (300 - width) + width - 2, 0}), 2u);
    }
}

TEST_F(AttributedTextTest, FindsTheCharacterUnderAPoint) {
    EXPECT_EQ(text_->getIndexByPoint({0, 0}), 0u) << "empty";
    text_->setContent({segment("abc")});
    EXPECT_EQ(text_->getBounds().x, 0) << "a segment without a position is at 0";
    auto below = segment("\u05d0\u05d1");  // written from right to left
    below.y = 50.0F;
    text_->setX(10);
    text_->setY(20);
    text_->setContent({segment("a\u00e4"), segment("\u65e5", 32), segment("\nz"), below});
    const double a = widthOf("a");
    const double ab = a + widthOf("\u00e4");
    const struct {
        double x, y;
        unsigned long index;
    } cases[] = {
        {1, -2, 0},   {a + 1, -2, 1}, {ab + 5, -2, 2}, {500, -2, 2},
        {-50, -2, 0}, {2, 14, 4},     {2, 50, 6},      {widthOf("\u05d0\u05d1") - 2, 50, 5},
        {0, 500, 6}};
    for (const auto& each : cases) {
        EXPECT_EQ(text_->getIndexByPoint({10 + each.x, 20 + each.y}), each.index)
            << each.x << " " << each.y;
    }
}

}  // namespace
}  // namespace orvane::display::graphics
