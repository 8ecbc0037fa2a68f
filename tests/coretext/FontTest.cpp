#include <gtest/gtest.h>

#include <cmath>
#include <fstream>
#include <iterator>

#include "platform/coretext/CTFont.h"
#include "tests/coretext/registerTestFonts.h"

namespace orvane::platform {
namespace {

class FontTest : public testing::Test {
protected:
    void SetUp() override { registerTestFonts(); }
};

TEST_F(FontTest, FindsFontsByPostScriptNameFullNameAndFamily) {
    const std::pair<const char*, const char*> cases[] = {
        {"DejaVuSans-Bold", "DejaVuSans-Bold"},
        {"dejavusans-bold", "DejaVuSans-Bold"},
        {"DejaVu Sans Bold", "DejaVuSans-Bold"},
        // A family gives its regular face, even if it is named "Book".
        {"DejaVu Sans", "DejaVuSans"},
        {"Noto Color Emoji Subset", "NotoColorEmoji-Subset"},
        // Families with a style, and generic families.
        {"DejaVu Sans, Bold", "DejaVuSans-Bold"},
        {"serif", "DejaVuSerif"},
        {"Monospace", "DejaVuSansMono"},
        {"Sans Bold", "DejaVuSans-Bold"},
        // Unknown names give the plainest registered font.
        {"No Such Font", "DejaVuSans"},
        {"", "DejaVuSans"},
        {"\xff\xfe,;:=", "DejaVuSans"},
    };
    for (const auto& [name, found] : cases) {
        EXPECT_EQ(CTFont::createWithName(name, 12)->postScriptName(), found) << name;
    }
}

TEST_F(FontTest, MetricsAreInUserUnits) {
    // From the font's hhea table: ascender 1901, descender -483 and line gap 0, in units of 1/2048.
    for (const double size : {1.0, 12.0, 13.5, 400.0}) {
        const auto font = CTFont::createWithName("DejaVuSans", size);
        EXPECT_NEAR(font->ascent(), size * 1901 / 2048, 0.01) << size;
        EXPECT_NEAR(font->descent(), size * 483 / 2048, 0.01) << size;
        EXPECT_EQ(font->leading(), 0) << size;
    }
}

TEST_F(FontTest, AnInvalidSizeIsTheDefaultAndDoesNotAffectOtherSizes) {
    const char* const name = "A name that no other test uses";
    const auto invalid = CTFont::createWithName(name, std::nan(""));
    EXPECT_EQ(invalid->size(), CTFont::kDefaultSize);
    EXPECT_EQ(CTFont::createWithName(name, 40)->size(), 40);
}

TEST_F(FontTest, RefusesIncompleteFonts) {
    std::ifstream in(testFont("DejaVuSerif.ttf"), std::ios::binary);
    const std::string good(std::istreambuf_iterator<char>(in), {});
    const std::pair<const char*, std::string> cases[] = {
        {"nothing", ""},
        {"text", "this is not a font"},
        {"tables at wrong offsets", good.substr(0, 12) + good},
        {"half a font", good.substr(0, good.size() / 2)},
        {"the last bytes missing", good.substr(0, good.size() - 100)},
    };
    for (const auto& [what, bytes] : cases) {
        const auto provider = CGDataProvider::createWithData(commons::ByteArray::createFromArray(
            reinterpret_cast<const unsigned char*>(bytes.data()), bytes.size()));
        EXPECT_EQ(CGFont::createWithDataProvider(*provider, what), nullptr) << what;
    }
}

TEST_F(FontTest, RegistersAFontOnce) {
    const auto provider = CGDataProvider::createWithFilename(testFont("DejaVuSans.ttf"));
    const auto font = CGFont::createWithDataProvider(*provider, testFont("DejaVuSans.ttf"));
    ASSERT_NE(font, nullptr);
    const auto error = CTFontManager::registerGraphicsFont(*font);
    ASSERT_TRUE(error);
    EXPECT_NE(error->find("DejaVuSans"), error->npos);

    // The same font under another file name counts as registered.
    const auto copy = CGFont::createWithDataProvider(*provider, "copy.ttf");
    EXPECT_TRUE(CTFontManager::registerGraphicsFont(*copy));
}

}  // namespace
}  // namespace orvane::platform
