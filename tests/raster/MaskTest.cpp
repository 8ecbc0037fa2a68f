#include "platform/raster/Mask.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>
#include <vector>

namespace orvane::platform {
namespace {

// Full coverage that is multiplied by a mask becomes the coverage that the mask was made from.
TEST(Mask, KeepsEachByteOfItsAreaAndNothingElse) {
    constexpr auto side = static_cast<std::size_t>(Mask::kSide);
    std::mt19937 random(1);
    const auto from = [&random](int first, int last) {
        return first + static_cast<int>(random() % static_cast<unsigned>(last - first + 1));
    };
    for (int round = 0; round < 200; ++round) {
        const int width = round % 2 == 0 ? Mask::kSide : from(1, Mask::kSide);
        const int height = from(1, 6);
        // Runs that are empty, full or neither, also behind the end of the rows.
        std::vector<std::uint8_t> coverage(static_cast<std::size_t>(height + 1) * side);
        for (auto at = coverage.begin(); at != coverage.end();) {
            const auto end = at + std::min<std::ptrdiff_t>(from(1, 60), coverage.end() - at);
            const int kind = from(0, 3);
            std::fill(at, end, static_cast<std::uint8_t>(kind > 1 ? from(0, 255) : 255 * kind));
            at = end;
        }
        const int left = from(-300, 300);
        const int top = from(-300, 300);
        PixelRect area{from(0, width - 1), from(0, height - 1), 0, 0};
        area.right = from(area.left + 1, width);
        area.bottom = from(area.top + 1, height);
        std::vector<std::uint8_t> product(side * side, 255);
        Mask(coverage.data(), width, height, Mask::kSide)
            .multiply(product.data(), left, top,
                      {left + area.left, top + area.top, left + area.right, top + area.bottom});
        for (int y = area.top; y < area.bottom; ++y) {
            const auto made = coverage.begin() + y * Mask::kSide;
            const auto row = product.begin() + (y - area.top) * Mask::kSide;
            EXPECT_TRUE(std::equal(made + area.left, made + area.right, row)) << round;
            EXPECT_EQ(std::count(row + area.width(), row + Mask::kSide, 255),
                      Mask::kSide - area.width());
        }
    }
}

}  // namespace
}  // namespace orvane::platform
