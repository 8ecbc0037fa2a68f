#include "platform/coregraphics/CGImage.h"

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <zlib.h>

#include <algorithm>
#include <array>
#include <ctime>
#include <filesystem>
#include <string>
#include <utility>
#include <vector>

#include "platform/coregraphics/CGDataProvider.h"
#include "platform/raster/CGBitmapContext.h"
#include "tests/raster/pixels.h"

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

// The pixel in the middle of each quadrant.
std::array<std::uint32_t, 4> quadrants(const CGImage& image) {
    const auto at = [&](int x, int y) {
        return image.pixels()[static_cast<std::size_t>(y * image.height() / 4 * image.width() +
                                                       x * image.width() / 4)];
    };
    return {at(1, 1), at(3, 1), at(1, 3), at(3, 3)};
}

using Quadrants = std::array<std::uint32_t, 4>;
constexpr Quadrants kColors = {0xffff0000, 0xff00ff00, 0xff0000ff, 0xffffffff};
constexpr Quadrants kColorsAndAlpha = {0xffff0000, 0xff00ff00, 0xff0000ff, 0x80808080};
constexpr Quadrants kGrays = {0xff000000, 0xff555555, 0xffaaaaaa, 0xffffffff};
constexpr Quadrants kGraysAndAlpha = {0xff000000, 0xff555555, 0xffaaaaaa, 0x80808080};

TEST(Image, DecodesEveryKindOfFile) {
    const struct {
        const char* file;
        Quadrants pixels;
        int tolerance = 0;
    } cases[] = {
        {"png/gray4.png", kGrays},
        {"png/gray8.png", kGrays},
        {"png/gray8-transparent.png", {0xff000000, 0xff555555, 0, 0xffffffff}},
        {"png/gray16.png", kGrays},
        {"png/rgb8.png", kColors},
        {"png/rgb8-transparent.png", {0xffff0000, 0xff00ff00, 0, 0xffffffff}},
        {"png/palette1.png", {0xffff0000, 0xff00ff00, 0xffff0000, 0xff00ff00}},
        {"png/palette8.png", kColorsAndAlpha},
        {"png/grayalpha8.png", kGraysAndAlpha},
        {"png/rgba8.png", kColorsAndAlpha},
        {"png/rgba8-interlaced.png", kColorsAndAlpha},
        {"png/rgba16.png", kColorsAndAlpha},
        {"jpeg/baseline.jpg", kColors, 2},
        {"jpeg/baseline-subsampled.jpg", kColors, 4},
        {"jpeg/progressive.jpg", kColors, 2},
        {"jpeg/gray.jpg", kGrays, 1},
        {"jpeg/rgb.jpg", kColors, 1},
        {"jpeg/cmyk.jpg", kColors, 1},
        {"jpeg/cmyk-inverted.jpg", kColors, 1},
        {"jpeg/ycck.jpg", kColors, 2},
        {"jpeg/unknown-revision.jpg", kColors, 2},
        {"jpeg/end-marker-missing.jpg", kColors, 2},
    };
    for (const auto& c : cases) {
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

// Passes the whole corpus of the fuzzers to every decoder. Files named "broken" must not decode;
// the sanitizers check the rest.
TEST(Image, RejectsDamagedFiles) {
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

TEST(Image, RejectsEveryPrefixOfAFile) {
    // A JPEG is complete without its end marker, which is two bytes long.
    for (const auto& [file, spare] :
         {std::pair("png/rgba8.png", 0u), {"jpeg/progressive.jpg", 2u}, {"jpeg/ycck.jpg", 2u}}) {
        const auto whole = CGDataProvider::createWithFilename(corpus(file));
        ASSERT_TRUE(whole);
        for (std::size_t size = 0; size + spare < whole->bytes().size(); ++size) {
            // A separate copy, so that the sanitizers notice reads past the end.
            const std::vector<unsigned char> cut(
                whole->bytes().begin(), whole->bytes().begin() + static_cast<std::ptrdiff_t>(size));
            EXPECT_EQ(decode(*provide(cut)), nullptr) << file << " cut to " << size;
        }
    }
}

TEST(Image, AProgressiveFileHasABoundedNumberOfScans) {
    const auto file = CGDataProvider::createWithFilename(corpus("jpeg/progressive.jpg"));
    ASSERT_TRUE(file);
    const std::vector<unsigned char> whole(file->bytes().begin(), file->bytes().end());
    const unsigned char startOfScan[] = {0xFF, 0xDA};
    const auto lastScan =
        std::find_end(whole.begin(), whole.end(), std::begin(startOfScan), std::end(startOfScan));
    for (const auto& [repetitions, decodes] : {std::pair(50, true), {150, false}}) {
        std::vector<unsigned char> bytes(whole.begin(), lastScan);
        for (int i = 0; i < repetitions; ++i) {
            bytes.insert(bytes.end(), lastScan, whole.end() - 2);
        }
        bytes.insert(bytes.end(), whole.end() - 2, whole.end());
        EXPECT_EQ(decode(*provide(bytes)) != nullptr, decodes) << repetitions;
    }
}

TEST(Image, LargePhotosAreStoredAtReducedResolution) {
    const Image image = decodeFile("jpeg/wider-than-a-bitmap.jpg");
    ASSERT_TRUE(image);
    EXPECT_EQ(image->size(), (CGSize{40'000, 32}));
    EXPECT_EQ(image->width(), 20'000);
    EXPECT_EQ(image->height(), 16);
    EXPECT_EQ(quadrants(*image)[3], kGrays[3]);
}

TEST(Image, TextInAFileIsNotExpanded) {
    // Six chunks of text, with 8 MB each when expanded.
    const auto peak = [] {
        rusage usage{};
        getrusage(RUSAGE_SELF, &usage);
        return usage.ru_maxrss;
    };
    const long before = peak();
    EXPECT_TRUE(decodeFile("png/compressed-text.png"));
    EXPECT_LT(peak() - before, 20'000) << "kilobytes";
}

std::string chunk(const std::string& type, const std::string& data) {
    const auto word = [](uLong value) {
        return std::string{char(value >> 24), char(value >> 16), char(value >> 8), char(value)};
    };
    const std::string checked = type + data;
    const auto* const bytes = reinterpret_cast<const Bytef*>(checked.data());
    return word(data.size()) + checked + word(crc32(0, bytes, static_cast<uInt>(checked.size())));
}

// A file of 3 x 2 pixels with 16 bits each, in the order of an interlaced one, and `garbage` behind
// the pixels.
std::vector<unsigned char> interlaced(const std::string& garbage) {
    std::string rows;
    for (const char* const row : {"\x10", "\x30", "\x20", "\x40\x50\x60"}) {
        rows += '\0';
        for (const char high : std::string(row)) {
            rows += {high, '\0'};
        }
    }
    rows += garbage;
    std::string packed(compressBound(rows.size()), '\0');
    uLongf length = packed.size();
    compress(reinterpret_cast<Bytef*>(packed.data()), &length,
             reinterpret_cast<const Bytef*>(rows.data()), rows.size());
    packed.resize(length);
    const std::string header("\0\0\0\3\0\0\0\2\x10\0\0\0\1", 13);
    const std::string file =
        "\x89PNG\r\n\x1a\n" + chunk("IHDR", header) + chunk("IDAT", packed) + chunk("IEND", "");
    return {file.begin(), file.end()};
}

TEST(Image, InterlacedPixelsOf16BitsAreInPlace) {
    const Image image = decode(*provide(interlaced("")));
    ASSERT_TRUE(image);
    const auto gray = [](std::uint32_t level) { return 0xff000000u | level * 0x10101u; };
    EXPECT_EQ(
        std::vector(image->pixels().begin(), image->pixels().end()),
        std::vector({gray(0x10), gray(0x20), gray(0x30), gray(0x40), gray(0x50), gray(0x60)}));
}

TEST(Image, WhatFollowsTheLastRowIsNotExpanded) {
    const auto bytes = interlaced(std::string(std::size_t{64} << 20, '\0'));
    const std::clock_t before = std::clock();
    EXPECT_TRUE(decode(*provide(bytes)));
    EXPECT_LT(std::clock() - before, CLOCKS_PER_SEC / 10);
}

TEST(Image, MissingRawPixelsAreTransparent) {
    // Claims two columns and three rows; the data has two and a half pixels.
    const std::vector<unsigned char> bytes = {255, 0, 0, 255, 255, 255, 255, 128, 0, 255};
    const Image image = CGImage::create(2, 3, 8, *provide(bytes));
    ASSERT_TRUE(image);
    const std::vector<std::uint32_t> expected = {0xffff0000, 0x80808080, 0, 0, 0, 0};
    EXPECT_EQ(std::vector(image->pixels().begin(), image->pixels().end()), expected);
    EXPECT_FALSE(image->isOpaque());
}

TEST(Image, RejectsInvalidSizesOfRawPixels) {
    constexpr std::ptrdiff_t kMost = PTRDIFF_MAX;
    const auto provider = provide({1, 2, 3, 4});
    using Sizes = std::array<std::ptrdiff_t, 3>;
    for (const auto& [width, height, bytesPerRow] :
         {Sizes{0, 1, 4}, Sizes{1, 0, 4}, Sizes{-1, 1, 4}, Sizes{1, -1, 4}, Sizes{2, 1, 4},
          Sizes{40'000, 1, 160'000}, Sizes{1, kMost, 4}, Sizes{kMost, kMost, kMost},
          Sizes{32'767, 32'767, 131'068}}) {
        EXPECT_EQ(CGImage::create(width, height, bytesPerRow, *provider), nullptr)
            << width << " by " << height;
    }
}

// Draws the image upright on a canvas whose y axis is down, by flipping locally.
void drawUpright(CGContext& canvas, const CGImage& image, const CGRect& rect) {
    canvas.saveGState();
    canvas.translateCTM(rect.origin.x, rect.origin.y + rect.size.height);
    canvas.scaleCTM(1, -1);
    canvas.drawImage({{0, 0}, rect.size}, image);
    canvas.restoreGState();
}

TEST(Image, IsCopiedExactlyAtItsOwnSize) {
    for (const char* file : {"png/rgb8.png", "png/rgba8.png"}) {
        const Image image = decodeFile(file);
        ASSERT_TRUE(image);
        for (const bool clipped : {false, true}) {
            // Positions between pixels are rounded to the nearest.
            for (const CGPoint place : {CGPoint{3, 4}, CGPoint{2.6, 4.3}}) {
                CGBitmapContext canvas(20, 20);
                if (clipped) {  // antialiased, but not at the probes
                    canvas.clipToRect({{0.5, 0}, {30, 30}});
                }
                drawUpright(canvas, *image, {place, {8, 6}});
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

TEST(Image, FarPartsOfAnEnlargedImageAreInPlace) {
    std::vector<std::uint32_t> halves(400, 0xff000000);
    std::fill(halves.begin() + 200, halves.end(), 0xffffffff);
    const Image image = CGImage::createWithPixels(400, 1, std::move(halves));
    // The middle of the image is 40,000 pixels from its left edge.
    CGBitmapContext canvas(600, 10, CGAffineTransform::makeTranslation(-39'700, 0));
    drawUpright(canvas, *image, {{0, 0}, {80'000, 10}});
    EXPECT_EQ(pixel(canvas, 150, 5), 0xff000000u);
    EXPECT_EQ(pixel(canvas, 450, 5), 0xffffffffu);
    EXPECT_NEAR(pixel(canvas, 300, 5) & 255, 128, 3);
}

TEST(Image, EveryPixelOfAReducedImageCounts) {
    std::vector<std::uint32_t> squares(200 * 200);
    for (std::size_t i = 0; i < squares.size(); ++i) {
        squares[i] = (i % 200 + i / 200) % 2 == 0 ? 0xff000000 : 0xffffffff;
    }
    const Image checkered = CGImage::createWithPixels(200, 200, std::move(squares));
    CGBitmapContext reduced(10, 10);
    drawUpright(reduced, *checkered, {{0, 0}, {10, 10}});
    EXPECT_NEAR(pixel(reduced, 5, 5) & 255, 128, 4);
}

}  // namespace
}  // namespace orvane::platform
