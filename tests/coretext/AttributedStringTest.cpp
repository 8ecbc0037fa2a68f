#include <gtest/gtest.h>

#include "platform/coretext/CFMutableAttributedString.h"
#include "platform/coretext/CTFont.h"
#include "tests/coretext/registerTestFonts.h"

namespace orvane::platform {
namespace {

constexpr CGColor kRed{1, 0, 0, 1};
constexpr CGColor kBlue{0, 0, 1, 1};

TEST(AttributedStringTest, AttributesBelongToCharacters) {
    CFMutableAttributedString string;
    string.setForegroundColor(string.range(), kRed);
    string.replaceString("abc");
    ASSERT_EQ(string.runs().size(), 1u);
    EXPECT_FALSE(string.runs()[0].attributes.foregroundColor) << "set on an empty string";

    string.setForegroundColor(string.range(), kRed);
    string.setForegroundColor({1, 2}, kBlue);
    string.replaceString("another");
    ASSERT_EQ(string.runs().size(), 1u);
    EXPECT_EQ(string.runs()[0].attributes.foregroundColor, kRed) << "of the first character";

    string.replaceString("");
    EXPECT_TRUE(string.runs().empty());
    string.replaceString("again");
    EXPECT_FALSE(string.runs()[0].attributes.foregroundColor) << "left with the text";
}

TEST(AttributedStringTest, RunsCoverTheTextAndAdjacentRunsDiffer) {
    CFMutableAttributedString string;
    string.replaceString("0123456789");
    string.setForegroundColor({2, 3}, kRed);
    string.setUnderline({4, 4}, true);
    string.setForegroundColor({8, 1000}, kBlue);
    string.setForegroundColor({50, 5}, kBlue);
    std::size_t at = 0;
    for (const auto& run : string.runs()) {
        EXPECT_EQ(run.range.location, at);
        at = run.range.end();
    }
    EXPECT_EQ(at, string.length());
    EXPECT_EQ(string.runs().size(), 5u);
    EXPECT_EQ(string.runAt(4)->attributes.foregroundColor, kRed);
    EXPECT_TRUE(string.runAt(4)->attributes.underline);
    EXPECT_FALSE(string.runAt(8)->attributes.underline);
    EXPECT_EQ(string.runAt(10)->attributes.foregroundColor, kBlue);

    string.setForegroundColor(string.range(), kBlue);
    string.setUnderline(string.range(), false);
    EXPECT_EQ(string.runs().size(), 1u);

    // Runs never end inside a character.
    string.replaceString("a\u65e5b");
    string.setUnderline({2, 1}, true);
    EXPECT_EQ(string.runs().size(), 1u);
    string.setUnderline({3, 2}, true);
    EXPECT_EQ(string.runs().front().range, (CFRange{0, 1}));
}

TEST(AttributedStringTest, ReplacesInvalidUtf8) {
    using namespace std::string_literals;
    const std::string box = "\xEF\xBF\xBD";
    const std::pair<std::string, std::string> cases[] = {
        {"plain \u00e4\u65e5", "plain \u00e4\u65e5"},
        {"a\xc3", "a" + box},
        {"a\xc3(b", "a" + box + "(b"},
        {"\xed\xa0\x80", box + box + box},                   // a surrogate
        {"\xc0\xaf", box + box},                             // an overlong form
        {"\xf4\x90\x80\x80x", box + box + box + box + "x"},  // beyond Unicode
        {"a\0b"s, "a" + box + "b"},
    };
    for (const auto& [bytes, expected] : cases) {
        CFMutableAttributedString string;
        string.replaceString(bytes);
        EXPECT_EQ(string.string(), expected);
        string.append(bytes, {});
        EXPECT_EQ(string.string(), expected + expected);
    }
}

TEST(AttributedStringTest, ShapesAgainOnlyAfterAChangeOfTextOrFont) {
    registerTestFonts();
    CFMutableAttributedString string;
    string.replaceString("text");
    const auto font = CTFont::createWithName("DejaVuSans", 13);
    string.setFont(string.range(), font);
    const auto shaped = string.shapedText();
    string.setForegroundColor(string.range(), kRed);
    string.setUnderline(string.range(), true);
    string.setFont(string.range(), CTFont::createWithName("DejaVuSans", 13));
    EXPECT_EQ(string.shapedText(), shaped);
    string.setFont(string.range(), CTFont::createWithName("DejaVuSans", 14));
    EXPECT_NE(string.shapedText(), shaped);
}

}  // namespace
}  // namespace orvane::platform
