#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <random>
#include <sstream>

#include "platform/coretext/CFMutableAttributedString.h"
#include "platform/coretext/CTFont.h"
#include "platform/coretext/CTFrame.h"
#include "platform/coretext/CTFramesetter.h"
#include "platform/coretext/CTLine.h"
#include "tests/coretext/registerTestFonts.h"

namespace orvane::platform {
namespace {

constexpr double kUnlimited = std::numeric_limits<double>::max();

class LayoutTest : public testing::Test {
protected:
    void SetUp() override { registerTestFonts(); }

    static CFMutableAttributedString styled(const std::string& text, double size = 16) {
        CFMutableAttributedString string;
        string.replaceString(text);
        string.setFont(string.range(), CTFont::createWithName("DejaVuSans", size));
        return string;
    }
    static double widthOf(const std::string& text) {
        return CTLine::createWithAttributedString(styled(text))->typographicBounds().width;
    }
    // All lines of the text at a width.
    static std::shared_ptr<const CTFrame> frameOf(const CFMutableAttributedString& string,
                                                  double width) {
        const CTFramesetter framesetter(string);
        const double height = framesetter.suggestFrameSize(width).height;
        return framesetter.createFrame({{0, 0}, {width, height}});
    }
};

TEST_F(LayoutTest, ShapesClustersAndFallbackFonts) {
    const double gap = 0.01;
    EXPECT_LT(widthOf("AV"), widthOf("A") + widthOf("V") - 0.5) << "kerning";
    EXPECT_NEAR(widthOf("e\u0301"), widthOf("e"), gap) << "a combining mark";
    EXPECT_NEAR(widthOf("\U0001F468\u200D\U0001F469\u200D\U0001F467"), widthOf("\U0001F468"), gap)
        << "one picture of several characters";
    EXPECT_NEAR(widthOf("a\x01\x02\x7f"
                        "b\u2028"),
                widthOf("ab"), gap)
        << "control characters";
    EXPECT_NEAR(widthOf("a\tb"), 28 + widthOf("b"), gap) << "a tab stop";
    EXPECT_GT(widthOf("\U000F0000"), 1) << "a box for what no font has";
}

TEST_F(LayoutTest, FindsTheCharacterUnderAPoint) {
    const auto indexAt = [](const std::string& text, const std::string& before) {
        const auto line = CTLine::createWithAttributedString(styled(text));
        return line->stringIndexForPosition(widthOf(before) + 2).value();
    };
    EXPECT_EQ(indexAt("abc", ""), 0u);
    EXPECT_EQ(indexAt("abc", "ab"), 2u);
    EXPECT_EQ(indexAt("abc", "abcdef"), 2u) << "right of the line";
    EXPECT_EQ(indexAt(std::string(2000, 'i'), std::string(1500, 'i')), 1500u);
    EXPECT_EQ(indexAt("\u00e4\u00f6x", "\u00e4\u00f6"), 4u) << "bytes";
    EXPECT_EQ(indexAt("e\u0301x", "e"), 3u) << "behind a combining mark";
    // Right to left: the first character of the text is at the right end.
    const auto hebrew = CTLine::createWithAttributedString(styled("\u05d0\u05d1\u05d2"));
    const double width = hebrew->typographicBounds().width;
    EXPECT_EQ(hebrew->stringIndexForPosition(width - 1), 0u);
    EXPECT_EQ(hebrew->stringIndexForPosition(1), 4u);
    EXPECT_EQ(hebrew->stringIndexForPosition(-50), 4u);
    const CFMutableAttributedString empty;
    EXPECT_EQ(CTLine::createWithAttributedString(empty)->stringIndexForPosition(0), std::nullopt);
    EXPECT_EQ(CTLine::createForPainting(styled("abc"))->stringIndexForPosition(0), std::nullopt);
    // Lam and alef share one glyph.
    const auto ligature = CTLine::createWithAttributedString(styled("\u0644\u0627"));
    const double shared = ligature->typographicBounds().width;
    EXPECT_EQ(ligature->stringIndexForPosition(shared * 0.75), 0u);
    EXPECT_EQ(ligature->stringIndexForPosition(shared * 0.25), 2u);
}

TEST_F(LayoutTest, LinesContainEveryCharacterOnceAndFitTheWidth) {
    std::mt19937 random(7);
    std::istringstream list(
        "the x incomprehensibilities \u05e9\u05dc\u05d5\u05dd \u0645\u0631\u062d\u0628\u0627 "
        "\u65e5\u672c\u8a9e\u6587 \U0001F600\U0001F680 e\u0301e\u0301 a-b-c");
    const std::vector<std::string> words(std::istream_iterator<std::string>(list), {});
    const std::vector<std::string> gaps = {" ", " ", " ", "\t", "\n", "\r\n", "\u2028", ""};
    for (int round = 0; round < 60; ++round) {
        std::string text;
        for (unsigned count = random() % 60; count > 0; --count) {
            text += words[random() % words.size()] + gaps[random() % gaps.size()];
        }
        const CFMutableAttributedString string = styled(text);
        const double width = 30 + double(random() % 300);
        const auto frame = frameOf(string, width);
        std::size_t at = 0;
        double bottom = std::numeric_limits<double>::infinity();
        for (const auto& [line, origin, lineBottom] : frame->lines()) {
            const CFRange range = line->stringRange();
            const auto between = text.substr(at, range.location - at);
            EXPECT_TRUE(between.empty() || between == "\n" || between == "\r\n") << between;
            EXPECT_LT(origin.y, bottom);
            EXPECT_LT(lineBottom, origin.y);
            bottom = lineBottom;
            at = range.end();
            // Trailing white space may extend beyond the width.
            const std::string content = text.substr(range.location, range.length);
            if (content.find_last_not_of(" \t") + 1 == content.size()) {
                EXPECT_LE(line->typographicBounds().width, width + 0.01) << content;
            }
        }
        EXPECT_LE(text.size() - at, 2u) << "all but the last separator is in a line";
    }
}

TEST_F(LayoutTest, BreaksWhereTheScriptAllows) {
    const struct {
        const char* text;
        double width;
        std::vector<std::string> lines;
    } cases[] = {
        {"aaa bbb ccc", 70, {"aaa bbb ", "ccc"}},
        {"aaaaaaaaaa", 45, {"aaaa", "aaaa", "aa"}},
        {"ab", 1, {"a", "b"}},
        {"\u65e5\u672c\u8a9e", 40, {"\u65e5\u672c", "\u8a9e"}},
        {"one\n\ntwo\n", 1000, {"one", "", "two", ""}},
        {"one\u2028two", 1000, {"one\u2028", "two"}},
        {"", 1000, {}},
        {"abc", -5, {}},
    };
    for (const auto& each : cases) {
        std::vector<std::string> lines;
        const auto frame = frameOf(styled(each.text), each.width);
        for (const auto& placed : frame->lines()) {
            const CFRange range = placed.line->stringRange();
            lines.push_back(std::string(each.text).substr(range.location, range.length));
        }
        EXPECT_EQ(lines, each.lines) << each.text;
    }
}

TEST_F(LayoutTest, NaturalAlignmentFollowsTheScript) {
    for (const auto& [text, x] : {std::pair{"abc", 7.0}, {"\u05d0", 207 - widthOf("\u05d0")}}) {
        const auto frame = CTFramesetter(styled(text)).createFrame({{7, 3}, {200, 50}});
        ASSERT_EQ(frame->lines().size(), 1u);
        EXPECT_NEAR(frame->lines()[0].origin.x, x, 0.01) << text;
    }
}

// The fuzzers' corpus of texts, at widths that cause every kind of line break.
TEST_F(LayoutTest, LaysOutHostileTexts) {
    for (const auto& entry :
         std::filesystem::directory_iterator(std::string(ORVANE_TEST_CORPUS) + "/text")) {
        std::ifstream in(entry.path(), std::ios::binary);
        const std::string text(std::istreambuf_iterator<char>(in), {});
        const CFMutableAttributedString string = styled(text.substr(1));
        for (const double width : {1.0, 20.0, 75.0, kUnlimited}) {
            const auto frame = frameOf(string, width);
            ASSERT_FALSE(frame->lines().empty()) << entry.path();
            for (const auto& [line, origin, bottom] : frame->lines()) {
                const CFRange range = line->stringRange();
                for (const double x : {-10.0, 0.0, 3.0, 11.0, 40.0, 1000.0}) {
                    const auto index = line->stringIndexForPosition(x);
                    EXPECT_TRUE(!index || (*index >= range.location && *index < range.end()))
                        << entry.path();
                }
            }
        }
    }
}

TEST_F(LayoutTest, LaysOutAMegabyteAtAnyWidth) {
    constexpr std::size_t kSize = 1 << 20;
    std::string mixed;
    while (mixed.size() < kSize) {
        mixed += "word \u05e9\u05dc\u05d5\u05dd 12 \u65e5\u672c, ";
    }
    // Texts with a character or a line per byte need less than a megabyte.
    const std::string texts[] = {std::string(kSize, 'x'), mixed, std::string(kSize, ' '),
                                 std::string(kSize / 8, '\xff'), std::string(kSize / 8, '\n')};
    for (const std::string& text : texts) {
        const CFMutableAttributedString string = styled(text, 13);
        const auto frame = frameOf(string, 400);
        ASSERT_FALSE(frame->lines().empty());
        EXPECT_GE(frame->lines().back().line->stringRange().end() + 1, string.length());
        const auto line = CTLine::createWithAttributedString(string);
        EXPECT_EQ(line->stringRange(), string.range());
    }
}

}  // namespace
}  // namespace orvane::platform
