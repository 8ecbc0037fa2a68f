#include "platform/appkit/NSDamageRegion.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <random>
#include <vector>

using orvane::platform::NSBackingRect;
using orvane::platform::NSDamageRegion;

namespace {

std::vector<NSBackingRect> merged(const std::vector<NSBackingRect>& rects,
                                  const NSBackingRect& bounds) {
    NSDamageRegion region;
    region.setBounds(bounds);
    for (const NSBackingRect& rect : rects) {
        region.add(rect);
    }
    std::vector<NSBackingRect> out;
    region.take(out);
    EXPECT_TRUE(region.isEmpty());
    return out;
}

// Returns which pixels of the bounds the rectangles cover.
std::vector<bool> pixelsOf(const std::vector<NSBackingRect>& rects, const NSBackingRect& bounds) {
    std::vector<bool> pixels(static_cast<std::size_t>(bounds.area()));
    for (const NSBackingRect& rect : rects) {
        const NSBackingRect inside = rect.intersection(bounds);
        for (std::int64_t y = inside.top; y < inside.bottom; ++y) {
            for (std::int64_t x = inside.left; x < inside.right; ++x) {
                pixels[static_cast<std::size_t>((y - bounds.top) * bounds.width() + x -
                                                bounds.left)] = true;
            }
        }
    }
    return pixels;
}

// Returns random rectangles around the bounds, with sides of up to this size.
std::vector<NSBackingRect> anyRects(int count, const NSBackingRect& bounds, int size) {
    std::mt19937 random(1);
    std::uniform_int_distribution<std::int64_t> x(bounds.left - 50, bounds.right + 50);
    std::uniform_int_distribution<std::int64_t> y(bounds.top - 50, bounds.bottom + 50);
    std::uniform_int_distribution<std::int64_t> extent(1, size);
    std::vector<NSBackingRect> rects;
    for (int i = 0; i < count; ++i) {
        const std::int64_t left = x(random);
        const std::int64_t top = y(random);
        rects.push_back({left, top, left + extent(random), top + extent(random)});
    }
    return rects;
}

}  // namespace

TEST(NSDamageRegion, CoversAllThatWasAddedAndLittleElse) {
    const NSBackingRect bounds{-300, 100, 300, 500};
    for (const int count : {1, 5, 50, 127, 128, 129, 400, 3000}) {
        for (const int size : {4, 30, 200}) {
            SCOPED_TRACE(testing::Message() << count << " of up to " << size);
            const auto added = anyRects(count, bounds, size);
            const std::vector<NSBackingRect> out = merged(added, bounds);
            const std::vector<bool> wanted = pixelsOf(added, bounds);
            const std::vector<bool> covered = pixelsOf(out, bounds);
            std::int64_t wantedCount = 0;
            for (std::size_t i = 0; i < wanted.size(); ++i) {
                ASSERT_TRUE(!wanted[i] || covered[i]);
                wantedCount += wanted[i] ? 1 : 0;
            }
            // Merging may add a fixed number of pixels for each rectangle, a share of the damage,
            // or (in the grid) the rest of the cells.
            const std::int64_t allowed = std::min<std::int64_t>(
                wantedCount * 3 / 2 + count * 64 * 64, bounds.area() * 5 / 4);
            std::int64_t area = 0;
            for (const NSBackingRect& rect : out) {
                EXPECT_TRUE(bounds.contains(rect));
                area += rect.area();
            }
            EXPECT_LE(area, allowed);
        }
    }
}

TEST(NSDamageRegion, WhatJoinsTwoRectanglesMergesAllThree) {
    const NSBackingRect first{0, 0, 10, 10};
    const NSBackingRect second{22, 0, 30, 30};
    const NSBackingRect bounds{0, 0, 99, 99};
    EXPECT_EQ(merged({first, second}, bounds).size(), 2U);
    EXPECT_EQ(merged({first, second, {10, 20, 28, 30}}, bounds),
              (std::vector<NSBackingRect>{{0, 0, 30, 30}}));
}

TEST(NSDamageRegion, DamageEverywhereBecomesFewRectangles) {
    const NSBackingRect screen{0, 0, 1920, 1080};
    EXPECT_LE(merged(anyRects(10000, screen, 40), screen).size(), 4U);
}
