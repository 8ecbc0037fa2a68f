#include "platform/imageio/CGImageSource.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "platform/coregraphics/CGDataProvider.h"
#include "platform/coregraphics/CGImage.h"

namespace orvane::platform {
namespace {

std::shared_ptr<const CGDataProvider> file(const std::string& name) {
    return CGDataProvider::createWithFilename(ORVANE_TEST_CORPUS "/" + name);
}

std::shared_ptr<CGImageSource> sourceOf(const std::string& bytes) {
    return CGImageSource::create(
        *CGDataProvider::createWithData(commons::ByteArray::createFromArray(
            reinterpret_cast<const unsigned char*>(bytes.data()), bytes.size())));
}

std::vector<std::uint32_t> pixelsOf(CGImageSource& source, double scale = 1) {
    const auto image = source.image(scale);
    EXPECT_EQ(image->width(), source.size().width * scale);
    EXPECT_EQ(image->height(), source.size().height * scale);
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

// The third frame has a transparent color. The file plays once.
TEST(ImageSource, FramesOfAGIFAreDrawnOnWhatTheOnesBeforeLeave) {
    const auto provider = file("gif/frames.gif");
    std::string bytes(provider->bytes().begin(), provider->bytes().end());
    const std::pair<char, std::uint32_t> disposals[] = {
        {'\x04', kGreen}, {'\x08', 0}, {'\x0C', kRed}};
    for (const auto& [disposal, left] : disposals) {
        bytes[0x35] = disposal;  // of the second frame
        const auto source = sourceOf(bytes);
        ASSERT_TRUE(source);
        std::vector<std::uint32_t> expected(16, kRed);
        EXPECT_EQ(pixelsOf(*source), expected);
        EXPECT_EQ(source->delay(), 0.5);

        source->advance();
        for (const std::size_t at : {5U, 6U, 9U, 10U}) {
            expected[at] = kGreen;
        }
        EXPECT_EQ(pixelsOf(*source), expected);
        EXPECT_EQ(source->delay(), 0.2);

        source->advance();
        std::ranges::replace(expected, kGreen, left);
        expected[1] = expected[2] = kBlue;
        EXPECT_EQ(pixelsOf(*source), expected);
        EXPECT_EQ(source->delay(), 0.1) << "a delay that is too short to be meant";

        source->advance();
        EXPECT_EQ(pixelsOf(*source), expected);
        EXPECT_FALSE(source->delay());
    }
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
}

// As large as a bitmap may be, in each direction and in all.
TEST(ImageSource, ADrawingIsRenderedAsLargeAsPossible) {
    const std::tuple<std::string, int, int> cases[] = {
        {"width=\"8\" height=\"4\"", 5793, 2897},
        {"width=\"1000\" height=\"2\"", 32767, 66},
        {"viewBox=\"0 0 2 1000\"", 66, 32767},
    };
    for (const auto& [size, width, height] : cases) {
        const auto source = sourceOf("<svg xmlns=\"http://www.w3.org/2000/svg\" " + size + "/>");
        ASSERT_TRUE(source) << size;
        const auto image = source->image(1e9);
        EXPECT_EQ(image->width(), width);
        EXPECT_EQ(image->height(), height);
        EXPECT_EQ(source->image(1e8), image) << "it is kept";
    }
}

// A single frame is no animation.
TEST(ImageSource, FramesOfAGIFAreRepeatedAsOftenAsTheFileSays) {
    const auto provider = file("gif/frames.gif");
    const std::string once(provider->bytes().begin(), provider->bytes().end());
    const auto repeated = [](std::string bytes, char times) {
        constexpr std::size_t kFirstFrame = 25;
        using namespace std::string_literals;
        return bytes.insert(kFirstFrame, "\x21\xFF\x0BNETSCAPE2.0\x03\x01"s + times + "\0\0"s);
    };
    const std::string still = once.substr(0, 50) + ';';
    const std::pair<std::string, int> cases[] = {{once, 3},
                                                 {repeated(once, 1), 6},
                                                 {repeated(once, 2), 9},
                                                 {repeated(once, 0), 20},
                                                 {repeated(still, 0), 1}};
    for (const auto& [bytes, expected] : cases) {
        const auto source = sourceOf(bytes);
        const auto first = pixelsOf(*source);
        int steps = 0;
        for (; source->delay() && steps < 20; ++steps) {
            EXPECT_EQ(pixelsOf(*source) == first, steps % 3 == 0);
            source->advance();
        }
        EXPECT_EQ(steps, expected);
    }
}

TEST(ImageSource, RowsOfAGIFMayBeInterlaced) {
    std::string bytes("GIF89a\1\0\x10\0\xF6\0\0", 13);  // 1 x 16 pixels and 128 colors
    for (int gray = 0; gray < 128; ++gray) {
        bytes += std::string(3, static_cast<char>(gray));
    }
    bytes += std::string(",\0\0\0\0\1\0\x10\0\x40\7\x12\x80", 13);
    for (const int row : {0, 8, 4, 12, 2, 6, 10, 14, 1, 3, 5, 7, 9, 11, 13, 15}) {
        bytes += static_cast<char>(row);  // a code of 8 bits
    }
    const auto source = sourceOf(bytes + std::string("\x81\0;", 3));
    ASSERT_TRUE(source);
    std::vector<std::uint32_t> expected;
    for (std::uint32_t row = 0; row < 16; ++row) {
        expected.push_back(0xFF000000 + 0x010101 * row);
    }
    EXPECT_EQ(pixelsOf(*source), expected);
}

// With this filter, librsvg 2.54 aborts the program that it is in.
TEST(ImageSource, ADrawingThatCannotBeDrawnHarmsNoOther) {
    constexpr int kOrder = 500;
    std::string drawing =
        "<svg xmlns='http://www.w3.org/2000/svg' width='4096' height='4096'><filter id='f'>"
        "<feConvolveMatrix order='500' kernelMatrix='";
    for (int i = 0; i < kOrder * kOrder; ++i) {
        drawing += "1 ";
    }
    drawing += "'/></filter><rect width='4096' height='4096' filter='url(#f)'/></svg>";
    const commons::ByteArray bytes = commons::ByteArray::createFromArray(
        reinterpret_cast<const unsigned char*>(drawing.data()), drawing.size());
    testing::internal::CaptureStderr();
    EXPECT_FALSE(CGImageSource::create(*CGDataProvider::createWithData(bytes)));
    const std::string log = testing::internal::GetCapturedStderr();
    EXPECT_EQ(std::ranges::count(log, '\n'), 1) << log;
    EXPECT_TRUE(CGImageSource::create(*file("svg/square.svg")));
}

// Every prefix of a file, and the file with any byte changed, gives a picture or none.
TEST(ImageSource, DamageIsHarmless) {
    for (const char* const name : {"webp/pixels.webp", "gif/frames.gif", "svg/square.svg"}) {
        const auto provider = file(name);
        const std::string whole(provider->bytes().begin(), provider->bytes().end());
        for (std::size_t at = 0; at < whole.size(); ++at) {
            auto changed = whole;
            changed[at] ^= '\xFF';
            for (const std::size_t length : {at, whole.size()}) {
                const auto source = sourceOf(changed.substr(0, length));
                for (int i = 0; source && i < 5; ++i, source->advance()) {
                    EXPECT_TRUE(source->image(1)) << name << " " << at;
                }
            }
        }
    }
}

}  // namespace
}  // namespace orvane::platform
