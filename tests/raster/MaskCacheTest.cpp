#include "platform/raster/MaskCache.h"

#include <gtest/gtest.h>

#include <vector>

#include "tests/raster/paths.h"
#include "tests/raster/pixels.h"

namespace orvane::platform {
namespace {

// The size of the masks that `drawing` adds to the cache of the current thread, in bytes.
template <typename Draw>
std::size_t bytesAddedBy(Draw drawing) {
    const std::size_t before = MaskCache::forThisThread().byteCount();
    drawing();
    return MaskCache::forThisThread().byteCount() - before;
}

TEST(MaskCache, DropsTheLeastRecentlyUsedMasks) {
    const std::vector<std::uint8_t> gray(64 * 64, 99);
    MaskCache cache(100'000);
    const auto key = [](double width) {
        MaskKey made;
        made.numbers.width = width;
        return made;
    };
    const auto has = [&](double width) {
        return cache.find({nullptr, {}, key(width).numbers}) != nullptr;
    };
    for (int i = 0; i < 1000; ++i) {
        cache.insert(key(i), Mask(gray.data(), 64, 64, 64));
        ASSERT_LE(cache.byteCount(), 100'000u);
        ASSERT_TRUE(has(0) || i == 0) << i;  // looked up each time, so it stays
    }
    EXPECT_TRUE(has(999));
    EXPECT_FALSE(has(500));
}

TEST(MaskCache, CountsTheMemoryOfAnOutlineOnce) {
    MaskCache cache(100'000);
    MaskKey key;
    for (int outline = 0; outline < 20; ++outline) {
        CGPath path;
        for (int i = 0; i < 1000; ++i) {
            path.addLineToPoint(i, i % 7);
        }
        key.outline = path.outline();
        for (int mask = 0; mask < 100; ++mask) {
            key.numbers.width = mask;
            cache.insert(key, Mask(8));
        }
        key.numbers.width = 0;
        EXPECT_NE(cache.find({key.outline.get(), {}, key.numbers}), nullptr) << outline;
    }
}

TEST(MaskCache, EqualShapesShareMasksAtAnyPosition) {
    CGBitmapContext canvas(200, 200);
    draw(canvas, ellipsePath(10.25, 10.5, 33, 21));
    EXPECT_EQ(bytesAddedBy([&] {
                  draw(canvas, ellipsePath(10.25, 10.5, 33, 21));
                  draw(canvas, ellipsePath(90.25, 77.5, 33, 21));
                  canvas.translateCTM(-3, 40);
                  draw(canvas, ellipsePath(10.25, 10.5, 33, 21));
              }),
              0u);
    canvas.scaleCTM(1.5, 1.5);
    EXPECT_GT(bytesAddedBy([&] { draw(canvas, ellipsePath(10.25, 10.5, 33, 21)); }), 0u);
}

TEST(MaskCache, PaintsTheCurrentStateOfAChangedPath) {
    CGBitmapContext canvas(40, 40);
    CGPath path = linePath({{2, 2}, {30, 2}, {2, 30}});
    draw(canvas, path);
    path.addLineToPoint(38, 38);
    draw(canvas, path);
    EXPECT_EQ(bytesAddedBy([&] { draw(canvas, path); }), 0u);
    EXPECT_GT(pixel(canvas, 20, 25) >> 24, 0u);
}

TEST(MaskCache, MakesOnlyVisibleTiles) {
    CGBitmapContext canvas(2000, 1000);
    const CGPath large = ellipsePath(-900.3, -900.3, 3800, 2800);
    canvas.saveGState();
    canvas.clipToRect({{100, 100}, {50, 50}});
    const std::size_t some = bytesAddedBy([&] { draw(canvas, large); });
    canvas.restoreGState();
    EXPECT_GT(bytesAddedBy([&] { draw(canvas, large); }), 10 * some);
}

}  // namespace
}  // namespace orvane::platform
