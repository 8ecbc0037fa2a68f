#include "platform/coregraphics/CGImage.h"

#include <gtest/gtest.h>

#include <array>
#include <filesystem>
#include <string>
#include <vector>

#include "platform/coregraphics/CGBitmapContext.h"
#include "platform/coregraphics/CGDataProvider.h"
#include "tests/coregraphics/pixels.h"

namespace orvane::platform {
namespace {

using orvane::commons::ByteArray;
using Image = std::shared_ptr<const CGImage>;

std::string corpus(const std::string& name) {
    return std::string(ORVANE_TEST_CORPUS) + "/" + name;
}

Image decode(const CGDataProvider& provider) {
    Image image = CGImage::createWithPNGDataProvider(provider);
    return image ? image : CGImage::createWithJPEGDataProvider(provider);
}

Image decodeFile(const std::string& name) {
    const auto provider = CGDataProvider::createWithFilename(corpus(name));
    return provider ? decode(*provider) : nullptr;
}

std::shared_ptr<const CGDataProvider> provide(const std::vector<unsigned char>& bytes) {
    return CGDataProvider::createWithData(ByteArray::createFromArray(bytes.data(), bytes.size()));
}

// The middle of each quadrant.
std::array<std::uint32_t, 4> quadrants(const CGImage& image) {
    const auto at = [&](int x, int y) {
        return image.pixels()[static_cast<std::size_t>(y * image.height() / 4 * image.width() +
                                                       x * image.width() / 4)];
    };
    return {at(1, 1), at(3, 1), at(1, 3), at(3, 3)};
}

using Quadrants = std::array<std::uint32_t, 4>;
constexpr Quadrants kColours = {0xffff0000, 0xff00ff00, 0xff0000ff, 0xffffffff};
constexpr Quadrants kColoursAndAlpha = {0xffff0000, 0xff00ff00, 0xff0000ff, 0x80808080};
constexpr Quadrants kGreys = {0xff000000, 0xff555555, 0xffaaaaaa, 0xffffffff};
constexpr Quadrants kGreysAndAlpha = {0xff000000, 0xff555555, 0xffaaaaaa, 0x80808080};

// Those that the golden pictures do not show.
TEST(Image, DecodesEveryKindOfFile) {
    struct Case {
        const char* file;
        Quadrants pixels;
        int tolerance = 0;
    };
    const Case cases[] = {
        {"png/grey1-interlaced.png", {0xff000000, 0xff000000, 0xffffffff, 0xffffffff}},
        {"png/grey4.png", kGreys},
        {"png/grey8-transparent.png", {0xff000000, 0xff555555, 0, 0xffffffff}},
        {"png/grey16.png", kGreys},
        {"png/rgb8.png", kColours},
        {"png/rgb8-transparent.png", {0xffff0000, 0xff00ff00, 0, 0xffffffff}},
        {"png/rgb16.png", kColours},
        {"png/palette1.png", {0xffff0000, 0xff00ff00, 0xffff0000, 0xff00ff00}},
        {"png/palette8.png", kColoursAndAlpha},
        {"png/greyalpha8.png", kGreysAndAlpha},
        {"png/rgba8-interlaced.png", kColoursAndAlpha},
        {"png/rgba16.png", kColoursAndAlpha},
        {"jpeg/baseline-subsampled.jpg", kColours, 4},
        {"jpeg/rgb.jpg", kColours, 1},
        {"jpeg/cmyk-inverted.jpg", kColours, 1},
        {"jpeg/ycck.jpg", kColours, 2},
    };
    for (const Case& c : cases) {
        const Image image = decodeFile(c.file);
        ASSERT_TRUE(image) << c.file;
        const bool isPng = std::string(c.file).starts_with("png");
        EXPECT_EQ(image->width(), isPng ? 8 : 32) << c.file;
        EXPECT_EQ(image->height(), isPng ? 6 : 32) << c.file;
        const Quadrants pixels = quadrants(*image);
        for (std::size_t i = 0; i < 4; ++i) {
            EXPECT_LE(difference(pixels[i], c.pixels[i]), c.tolerance)
                << c.file << " quadrant " << i;
        }
    }
}

// Everything in the fuzzers' corpus, through every decoder. What is named broken stays undecoded;
// the sanitizers see to the rest.
TEST(Image, DamagedFilesGiveNone) {
    int broken = 0;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(ORVANE_TEST_CORPUS)) {
        const std::string name = entry.path().filename().string();
        if (!entry.is_regular_file()) {
            continue;
        }
        const auto provider = CGDataProvider::createWithFilename(entry.path().string());
        ASSERT_TRUE(provider) << name;
        const Image image = decode(*provider);
        CGImage::create(13, 17, 52, *provider);
        if (name.starts_with("broken")) {
            EXPECT_EQ(image, nullptr) << name;
            ++broken;
        }
    }
    EXPECT_GT(broken, 10);
}

TEST(Image, EveryPrefixOfAFileIsBroken) {
    for (const char* file : {"png/rgba8.png", "jpeg/progressive.jpg", "jpeg/ycck.jpg"}) {
        const auto whole = CGDataProvider::createWithFilename(corpus(file));
        ASSERT_TRUE(whole);
        for (std::size_t size = 0; size < whole->bytes().size(); ++size) {
            // A copy of its own, so that a read past the end is noticed.
            const std::vector<unsigned char> cut(
                whole->bytes().begin(), whole->bytes().begin() + static_cast<std::ptrdiff_t>(size));
            EXPECT_EQ(decode(*provide(cut)), nullptr) << file << " cut to " << size;
        }
    }
}

TEST(Image, IsCopiedExactlyAtItsSize) {
    for (const char* file : {"png/rgb8.png", "png/rgba8.png"}) {
        const Image image = decodeFile(file);
        ASSERT_TRUE(image);
        for (const bool clipped : {false, true}) {
            // Between pixels it goes to the nearest.
            for (const CGPoint place : {CGPoint{3, 4}, CGPoint{2.6, 4.3}}) {
                CGBitmapContext canvas(20, 20);
                if (clipped) {  // antialiased, though not where it matters
                    canvas.clipToRect({{0.5, 0}, {30, 30}});
                }
                // Upright on a canvas whose y axis runs down.
                canvas.translateCTM(place.x, place.y + 6);
                canvas.scaleCTM(1, -1);
                canvas.drawImage({{0, 0}, {8, 6}}, *image);
                for (int y = 0; y < 20; ++y) {
                    for (int x = 0; x < 20; ++x) {
                        const bool inside = x >= 3 && x < 11 && y >= 4 && y < 10;
                        const std::size_t index = static_cast<std::size_t>((y - 4) * 8 + x - 3);
                        EXPECT_EQ(pixel(canvas, x, y), inside ? image->pixels()[index] : 0)
                            << file << " at " << x << ", " << y;
                    }
                }
            }
        }
    }
}

}  // namespace
}  // namespace orvane::platform
