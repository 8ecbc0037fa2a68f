#include "platform/appkit/NSBackingPolicy.h"

#include <gtest/gtest.h>

#include <cmath>
#include <string>

using namespace orvane::platform;

// A window of 400 by 300 pixels; views of up to 512 * 512 pixels are stored whole.
TEST(NSBackingPolicy, StoresSmallViewsWholeAndTheVisiblePartOfLargeViews) {
    const NSBackingPolicy policy({400, 300}, 1);
    const struct {
        std::string what;
        CGSize viewSize;
        CGPoint viewOrigin;  // in the window
        NSBackingRect stored;
        NSBackingRect expected;
    } cases[] = {
        {"a small view that is visible", {500, 500}, {-490, 0}, {}, {0, 0, 500, 500}},
        {"a small view that was never visible", {500, 500}, {-500, 0}, {}, {}},
        {"a small view that is no longer visible",
         {50, 50},
         {-99, 0},
         {0, 0, 50, 50},
         {0, 0, 50, 50}},
        {"whole tiles and one tile around",
         {9000, 9000},
         {-1000, -600},
         {},
         {512, 256, 1792, 1280}},
        {"cut to the view", {9000, 9000}, {0, 0}, {}, {0, 0, 768, 768}},
        {"what is stored shows everything",
         {9000, 9000},
         {-1040, -600},
         {512, 256, 1792, 1280},
         {512, 256, 1792, 1280}},
        {"a part is not stored",
         {9000, 9000},
         {-1400, -600},
         {512, 256, 1792, 1280},
         {1024, 256, 2304, 1280}},
        {"what is stored is more than twice as large",
         {9000, 9000},
         {0, 0},
         {0, 0, 1100, 1100},
         {0, 0, 768, 768}},
        {"a large view that is no longer visible", {9000, 9000}, {-9000, 0}, {0, 0, 768, 768}, {}},
        {"few pixels, but a long side", {20000, 1}, {-5000, 0}, {}, {4608, 0, 5888, 1}},
        {"a width that is not a number", {std::nan(""), 10}, {0, 0}, {}, {0, 0, 768, 10}},
    };
    for (const auto& c : cases) {
        const auto windowToView =
            CGAffineTransform::makeTranslation(-c.viewOrigin.x, -c.viewOrigin.y);
        EXPECT_EQ(policy.areaToStore(c.viewSize, windowToView, c.stored), c.expected) << c.what;
    }
}
