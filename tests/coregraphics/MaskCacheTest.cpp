#include "platform/coregraphics/MaskCache.h"

#include <gtest/gtest.h>

#include <vector>

namespace orvane::platform {
namespace {

TEST(MaskCache, ForgetsWhatWasUsedTheLongestTimeAgo) {
    const std::vector<std::uint8_t> grey(64 * 64, 99);
    MaskCache cache(100'000);
    const auto key = [](double width) {
        MaskKey made;
        made.numbers.width = width;
        return made;
    };
    const auto has = [&](double width) {
        const MaskKey wanted = key(width);
        return cache.find({nullptr, {}, wanted.numbers}) != nullptr;
    };
    for (int i = 0; i < 1000; ++i) {
        cache.insert(key(i), Mask(grey.data(), 64, 64, 64));
        ASSERT_LE(cache.byteCount(), 100'000u);
        ASSERT_TRUE(has(0) || i == 0) << i;  // asked for each time, so it stays
    }
    EXPECT_TRUE(has(999));
    EXPECT_FALSE(has(500));
}

}  // namespace
}  // namespace orvane::platform
