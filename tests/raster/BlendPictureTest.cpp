#include <gtest/gtest.h>

#include <random>
#include <vector>

#include "platform/raster/Blend.h"

namespace orvane::platform {
namespace {

// The implementation blends several pixels at once. All row lengths and offsets, and all mixtures
// of transparent, opaque and other pixels, give the same result as blending single pixels.
TEST(BlendPictureTest, BlendsEveryPixelIndependently) {
    std::mt19937 random(3);
    const auto fill = [&random](std::vector<std::uint32_t>& pixels, unsigned kinds) {
        for (std::uint32_t& pixel : pixels) {
            const unsigned kind = random() % kinds;
            const std::uint32_t alpha = kind == 0 ? 0 : kind == 1 ? 255 : random() % 256;
            pixel = premultiplied(random() % 256, random() % 256, random() % 256, alpha);
        }
    };
    for (int round = 0; round < 2000; ++round) {
        const int width = 1 + static_cast<int>(random() % 40);
        const int stride = width + static_cast<int>(random() % 9);
        std::vector<std::uint32_t> picture(static_cast<std::size_t>(stride) * 2);
        fill(picture, 1 + random() % 3);
        std::vector<std::uint32_t> pixels(60 * 3);
        fill(pixels, 3);
        std::vector<std::uint32_t> expected = pixels;
        const int left = static_cast<int>(random() % 20);
        for (int y = 0; y < 2; ++y) {
            for (int x = 0; x < width; ++x) {
                std::uint32_t& below = expected[static_cast<std::size_t>((y + 1) * 60 + left + x)];
                below = over(picture[static_cast<std::size_t>(y * stride + x)], below);
            }
        }
        blendPicture({pixels.data(), 60, 3, 60}, {left, 1, left + width, 3}, picture.data(),
                     stride);
        ASSERT_EQ(pixels, expected) << width << " pixels at " << left;
    }
}

}  // namespace
}  // namespace orvane::platform
