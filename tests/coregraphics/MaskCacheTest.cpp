#include "platform/coregraphics/MaskCache.h"

#include <gtest/gtest.h>

#include <array>
#include <vector>

#include "platform/coregraphics/CGBitmapContext.h"
#include "tests/coregraphics/pixels.h"

namespace orvane::platform {
namespace {

// Masks of the current thread's cache that a drawing adds.
template <typename Draw>
std::size_t bytesAddedBy(Draw draw) {
    const std::size_t before = MaskCache::forThisThread().byteCount();
    draw();
    return MaskCache::forThisThread().byteCount() - before;
}

void fillEllipse(CGContext& canvas, const CGRect& rect) {
    CGPath path;
    path.addEllipseInRect(rect);
    canvas.addPath(path);
    canvas.drawPath(CGPathDrawingMode::Fill);
}

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

TEST(MaskCache, ServesLikeShapesWhereverTheyStand) {
    CGBitmapContext canvas(200, 200);
    fillEllipse(canvas, {{10.25, 10.5}, {33, 21}});
    EXPECT_EQ(bytesAddedBy([&] {
                  fillEllipse(canvas, {{10.25, 10.5}, {33, 21}});
                  fillEllipse(canvas, {{90.25, 77.5}, {33, 21}});
                  canvas.translateCTM(-3, 40);
                  fillEllipse(canvas, {{10.25, 10.5}, {33, 21}});
              }),
              0u);
    EXPECT_GT(bytesAddedBy([&] { fillEllipse(canvas, {{10.25, 10.5}, {34, 21}}); }), 0u);
    EXPECT_GT(bytesAddedBy([&] {
                  canvas.scaleCTM(1.5, 1.5);
                  fillEllipse(canvas, {{10.25, 10.5}, {33, 21}});
              }),
              0u);
}

TEST(MaskCache, AChangedPathIsPaintedAsItIsNow) {
    CGBitmapContext canvas(40, 40);
    CGPath path;
    path.addLines(std::array{CGPoint{2, 2}, CGPoint{30, 2}, CGPoint{2, 30}});
    canvas.addPath(path);
    canvas.drawPath(CGPathDrawingMode::Fill);
    EXPECT_EQ(pixel(canvas, 29, 29), 0u);
    path.addLineToPoint(38, 38);
    canvas.addPath(path);
    canvas.drawPath(CGPathDrawingMode::Fill);
    EXPECT_EQ(bytesAddedBy([&] {
                  canvas.addPath(path);
                  canvas.drawPath(CGPathDrawingMode::Fill);
              }),
              0u);
    EXPECT_GT(pixel(canvas, 20, 25) >> 24, 0u);
}

TEST(MaskCache, OnlyTilesThatAreSeenAreMade) {
    CGBitmapContext canvas(2000, 1000);
    const CGRect large{{-900.3, -900.3}, {3800, 2800}};
    const std::size_t some = bytesAddedBy([&] {
        canvas.saveGState();
        canvas.clipToRect({{100, 100}, {50, 50}});
        fillEllipse(canvas, large);
        canvas.restoreGState();
    });
    const std::size_t rest = bytesAddedBy([&] { fillEllipse(canvas, large); });
    EXPECT_GT(some, 0u);
    EXPECT_GT(rest, 10 * some);
}

}  // namespace
}  // namespace orvane::platform
