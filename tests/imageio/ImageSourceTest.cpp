#include "platform/imageio/CGImageSource.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "platform/coregraphics/CGDataProvider.h"
#include "platform/coregraphics/CGImage.h"

namespace orvane::platform {
namespace {

std::shared_ptr<const CGDataProvider> file(const std::string& name) {
    return CGDataProvider::createWithFilename(ORVANE_TEST_CORPUS "/" + name);
}

std::vector<std::uint32_t> pixelsOf(CGImageSource& source, double scale = 1) {
    const auto image = source.image(scale);
    return {image->pixels().begin(), image->pixels().end()};
}

constexpr std::uint32_t kRed = 0xFFFF0000;
constexpr std::uint32_t kGreen = 0xFF00FF00;
constexpr std::uint32_t kBlue = 0xFF0000FF;

TEST(ImageSource, WebPIsPremultiplied) {
    const auto source = CGImageSource::create(*file("webp/pixels.webp"));
    ASSERT_TRUE(source);
    constexpr std::uint32_t kTranslucent = 0x80000080;
    EXPECT_EQ(pixelsOf(*source),
              std::vector<std::uint32_t>({kRed, kRed, kRed, kRed, kTranslucent, kTranslucent,
                                          kTranslucent, kTranslucent}));
}

// The second frame is taken back before the third one, which has a transparent color. The file
// plays once.
TEST(ImageSource, FramesOfAGIFAreDrawnOnWhatTheOnesBeforeLeave) {
    const auto source = CGImageSource::create(*file("gif/frames.gif"));
    ASSERT_TRUE(source);
    std::vector<std::uint32_t> expected(16, kRed);
    EXPECT_EQ(pixelsOf(*source), expected);
    EXPECT_EQ(source->delay(), 0.5);

    source->advance();
    auto second = expected;
    for (const std::size_t at : {5U, 6U, 9U, 10U}) {
        second[at] = kGreen;
    }
    EXPECT_EQ(pixelsOf(*source), second);
    EXPECT_EQ(source->delay(), 0.2);

    source->advance();
    expected[1] = expected[2] = kBlue;
    EXPECT_EQ(pixelsOf(*source), expected);
    EXPECT_EQ(source->delay(), 0.1) << "a delay that is too short to be meant";

    source->advance();
    EXPECT_EQ(pixelsOf(*source), expected);
    EXPECT_FALSE(source->delay());
}

TEST(ImageSource, ADrawingIsRenderedForTheScale) {
    const auto source = CGImageSource::create(*file("svg/square.svg"));
    ASSERT_TRUE(source);
    EXPECT_EQ(source->size(), (CGSize{8, 4}));
    for (const int scale : {1, 3}) {
        std::vector<std::uint32_t> expected;
        for (int i = 0; i < 32 * scale * scale; ++i) {
            expected.push_back(i % (8 * scale) < 4 * scale ? kRed : 0);
        }
        EXPECT_EQ(pixelsOf(*source, scale), expected) << scale;
    }
    EXPECT_LE(source->image(1e9)->width(), 32767);
}

// Every prefix of a file, and the file with any byte changed, gives a picture or none.
TEST(ImageSource, DamageIsHarmless) {
    for (const char* const name : {"webp/pixels.webp", "gif/frames.gif", "svg/square.svg"}) {
        const auto provider = file(name);
        const std::vector<unsigned char> whole(provider->bytes().begin(), provider->bytes().end());
        for (std::size_t at = 0; at < whole.size(); ++at) {
            auto changed = whole;
            changed[at] ^= 0xFFU;
            for (const std::size_t length : {at, whole.size()}) {
                const auto source = CGImageSource::create(*CGDataProvider::createWithData(
                    commons::ByteArray::createFromArray(changed.data(), length)));
                for (int i = 0; source && i < 5; ++i, source->advance()) {
                    EXPECT_TRUE(source->image(1)) << name << " " << at;
                }
            }
        }
    }
}

}  // namespace
}  // namespace orvane::platform
