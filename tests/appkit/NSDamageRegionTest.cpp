#include "platform/appkit/NSDamageRegion.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <random>
#include <string>
#include <vector>

using orvane::platform::NSBackingRect;
using orvane::platform::NSDamageRegion;

namespace {

constexpr NSBackingRect screen{0, 0, 1920, 1080};

std::vector<NSBackingRect> merged(const std::vector<NSBackingRect>& rects,
                                  const NSBackingRect& bounds = screen) {
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

std::int64_t areaOf(const std::vector<NSBackingRect>& rects) {
    std::int64_t area = 0;
    for (const NSBackingRect& rect : rects) {
        area += rect.area();
    }
    return area;
}

// Pixels of the bounds that are damaged by a list of rectangles.
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

// Rectangles whose top left corners lie in an area, and whose sides are up to a size.
std::vector<NSBackingRect> anyRects(std::mt19937& random, int count, const NSBackingRect& area,
                                    int size) {
    std::uniform_int_distribution<std::int64_t> x(area.left, area.right);
    std::uniform_int_distribution<std::int64_t> y(area.top, area.bottom);
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

TEST(NSDamageRegion, MergesWhatIsNearAndKeepsApartWhatIsFar) {
    const struct {
        std::string what;
        std::vector<NSBackingRect> added;
        std::vector<NSBackingRect> expected;
    } cases[] = {
        {"nothing", {}, {}},
        {"an empty one", {{10, 10, 10, 20}}, {}},
        {"one outside", {{-50, 0, -1, 20}}, {}},
        {"one that is cut", {{-50, -50, 20, 20}}, {{0, 0, 20, 20}}},
        {"one within another", {{0, 0, 100, 100}, {20, 20, 40, 40}}, {{0, 0, 100, 100}}},
        {"one around another", {{20, 20, 40, 40}, {0, 0, 100, 100}}, {{0, 0, 100, 100}}},
        {"the old and the new place of what moved",
         {{10, 10, 32, 32}, {14, 12, 36, 34}},
         {{10, 10, 36, 34}}},
        {"a narrow gap", {{0, 0, 50, 50}, {55, 0, 100, 50}}, {{0, 0, 100, 50}}},
        {"a wide gap", {{0, 0, 50, 50}, {80, 0, 130, 50}}, {{0, 0, 50, 50}, {80, 0, 130, 50}}},
        {"two far corners",
         {{0, 0, 10, 10}, {1910, 1070, 1920, 1080}},
         {{0, 0, 10, 10}, {1910, 1070, 1920, 1080}}},
        {"a cross, whose box would be the screen",
         {{0, 500, 1920, 510}, {900, 0, 910, 1080}},
         {{0, 500, 1920, 510}, {900, 0, 910, 1080}}},
        {"a bridge between two",
         {{0, 0, 50, 50}, {70, 0, 120, 50}, {48, 0, 72, 50}},
         {{0, 0, 120, 50}}},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(merged(c.added), c.expected) << c.what;
    }
}

TEST(NSDamageRegion, CoversAllThatWasAddedAndLittleElse) {
    std::mt19937 random(1);
    const NSBackingRect bounds{-300, 100, 300, 500};
    for (const int count : {1, 5, 50, 127, 128, 129, 400, 3000}) {
        for (const int size : {4, 30, 200}) {
            SCOPED_TRACE(testing::Message() << count << " of up to " << size);
            const auto added = anyRects(random, count, {-350, 50, 350, 550}, size);
            const std::vector<NSBackingRect> out = merged(added, bounds);
            const std::vector<bool> wanted = pixelsOf(added, bounds);
            const std::vector<bool> covered = pixelsOf(out, bounds);
            std::int64_t wantedCount = 0;
            for (std::size_t i = 0; i < wanted.size(); ++i) {
                ASSERT_TRUE(!wanted[i] || covered[i]);
                wantedCount += wanted[i] ? 1 : 0;
            }
            // What merging may add: a fixed waste for each rectangle added, or a share, or (in the
            // grid) the cells that were touched.
            const std::int64_t allowed = std::min<std::int64_t>(
                wantedCount * 3 / 2 + count * 64 * 64, bounds.area() * 5 / 4);
            EXPECT_LE(areaOf(out), allowed);
            for (const NSBackingRect& rect : out) {
                EXPECT_TRUE(bounds.contains(rect));
            }
        }
    }
}

TEST(NSDamageRegion, DamageEverywhereBecomesFewRectangles) {
    std::mt19937 random(2);
    const auto added = anyRects(random, 10000, {0, 0, 1900, 1060}, 40);
    EXPECT_LE(merged(added).size(), 4U);
}

TEST(NSDamageRegion, NewBoundsKeepWhatLiesWithin) {
    NSDamageRegion region;
    region.setBounds(screen);
    region.add({0, 0, 10, 10});
    region.add({500, 500, 510, 510});
    region.setBounds({400, 400, 505, 505});
    std::vector<NSBackingRect> out;
    region.take(out);
    EXPECT_EQ(out, (std::vector<NSBackingRect>{{500, 500, 505, 505}}));
}
