#include <gtest/gtest.h>

#include <cmath>

#include "orvane/orvane.h"
#include "tests/coretext/registerTestFonts.h"
#include "tests/graphics/painted.h"

namespace orvane::display::graphics {
namespace {

using Box = geometry::Rect<double>;
using std::string;

class AttributedTextTest : public testing::Test {
protected:
    void SetUp() override {
        platform::registerTestFonts();
        text_ = DisplayFactory::createAttributedText();
        text_->setFont("DejaVuSans");
        text_->setTextSize(16);
    }

    static Text::Segment segment(const string& content, float size = 16) {
        Text::Segment result;
        result.font = "DejaVuSans";
        result.content = content;
        result.textSize = size;
        return result;
    }
    bool paints(const string& part) const { return painted(*text_).find(part) != string::npos; }
    double widthOf(const string& content) const {
        const auto text = DisplayFactory::createText(false);
        text->setFont("DejaVuSans");
        text->setTextSize(16);
        text->setContent(content);
        return text->getTextBounds().width;
    }

    std::shared_ptr<AttributedText> text_;
};

TEST_F(AttributedTextTest, EachSegmentKeepsItsStyleInOneLine) {
    auto red = segment("red ");
    red.fillColor = {255, 0, 0, 255};
    auto large = segment("large", 32);
    large.font = "DejaVuSerif";
    large.decoration = 1;
    auto struck = segment("struck");
    struck.decoration = 2;
    auto plain = segment("own");
    plain.font.clear();
    plain.textSize = 0;
    text_->setContent({red, large, struck, plain});
    EXPECT_TRUE(paints("\"red largestruckown\"")) << painted(*text_);
    EXPECT_TRUE(paints("size 16 color 1 0.00390625 0.00390625 1]")) << painted(*text_);
    EXPECT_TRUE(paints("size 32 color 0.00390625 0.00390625 0.00390625 1 underline]"));
    EXPECT_TRUE(paints("size 16 color 0.00390625 0.00390625 0.00390625 1 strikethrough]"));
    // The line is as high as its largest font.
    EXPECT_GT(text_->getBounds().height, 32);
    EXPECT_LT(text_->getBounds().height, 45);
}

TEST_F(AttributedTextTest, WrapsAsOneTextAndBreaksAtNewlines) {
    text_->setContent({segment("aaa b"), segment("bb ccc\n"), segment("ddd")});
    EXPECT_TRUE(paints("\"aaa bbb ccc\"") && paints("\"ddd\"")) << painted(*text_);
    text_->setWidth(70);
    EXPECT_TRUE(paints("\"aaa bbb \"") && paints("\"ccc\"") && paints("\"ddd\""))
        << painted(*text_);
    EXPECT_EQ(text_->getBounds().width, 70);
    text_->setWidth(-1);
    EXPECT_TRUE(paints("\"aaa bbb ccc\""));
}

TEST_F(AttributedTextTest, ASegmentWithAPositionBeginsABlockThere) {
    auto second = segment("second");
    second.x = 40.0F;
    second.y = 60.0F;
    auto third = segment("third");
    third.y = 90.0F;
    third.alignmentBaseline = AlignmentBaseline::Top;
    text_->setX(5);
    text_->setY(7);
    text_->setContent({segment("first "), segment("goes on"), second, third});
    EXPECT_TRUE(paints("\"first goes on\""));
    const double ascent = 16.0 * 1901 / 2048;
    const double height = 16.0 * (1901 + 483) / 2048;
    const Box bounds = text_->getBounds();
    EXPECT_EQ(bounds.y, std::floor(7 - ascent)) << "the first baseline stands at y";
    EXPECT_EQ(bounds.y + bounds.height, std::ceil(7 + 90 + height)) << "the third hangs from y";
    std::ostringstream origin;
    origin << "translateCTM(45, " << 7 + 60 - ascent + height << ")";
    EXPECT_TRUE(paints(origin.str())) << origin.str() << painted(*text_);
}

TEST_F(AttributedTextTest, AlignsInItsWidthOrAtItsX) {
    const double width = widthOf("abc");
    for (const auto& [align, share] :
         {std::pair{TextAlign::Start, 0.0}, {TextAlign::Center, 0.5}, {TextAlign::End, 1.0}}) {
        auto aligned = segment("abc");
        aligned.textAlign = align;
        aligned.x = 100.0F;
        text_->setWidth(0);
        text_->setContent({aligned});
        EXPECT_NEAR(text_->getBounds().x, 100 - share * width, 1) << share;
        text_->setWidth(300);
        EXPECT_EQ(text_->getBounds().x, 100);
        EXPECT_EQ(text_->getIndexByPoint({100 + share * (300 - width) + width - 2, 0}), 2u);
    }
}

TEST_F(AttributedTextTest, FindsTheCharacterUnderAPoint) {
    EXPECT_EQ(text_->getIndexByPoint({0, 0}), 0u) << "empty";
    auto below = segment("\u05d0\u05d1");
    below.y = 50.0F;
    text_->setX(10);
    text_->setY(20);
    text_->setContent({segment("a\u00e4"), segment("\u65e5", 32), segment("\nz"), below});
    const double a = widthOf("a");
    const double b = widthOf("\u00e4");
    const struct {
        double x, y;
        unsigned long index;
    } cases[] = {
        {1, -2, 0},
        {a + 1, -2, 1},
        {a + b + 5, -2, 2},
        {500, -2, 2},
        {-50, -2, 0},
        {2, 14, 4},
        {2, 50, 6},  // read from the right
        {widthOf("\u05d0\u05d1") - 2, 50, 5},
        {0, 500, 6},
    };
    for (const auto& each : cases) {
        EXPECT_EQ(text_->getIndexByPoint({10 + each.x, 20 + each.y}), each.index)
            << each.x << " " << each.y;
    }
}

TEST_F(AttributedTextTest, PlainContentTakesTheTextsOwnStyle) {
    text_->setContent("plain");
    text_->setFillColor(0xFFFF0000);
    text_->setDecoration(true, false);
    text_->setTextSize(20);
    EXPECT_TRUE(paints("\"plain\"") && paints("size 20 color 1 0.00390625 0.00390625 1 underline"))
        << painted(*text_);
    text_->setContent(std::vector<Text::Segment>());
    EXPECT_EQ(text_->getTextBounds(), geometry::Size<double>());
    EXPECT_THROW(text_->setFillColor(LinearGradient()), const char*);
}

}  // namespace
}  // namespace orvane::display::graphics
