#include "orvane/display/graphics/RowHeights.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numeric>
#include <random>
#include <vector>

using orvane::display::graphics::RowHeights;

// After any sequence of changes, the heights agree with a plain vector of them.
TEST(RowHeights, AreTheSumsOfTheirRows) {
    for (unsigned seed = 1; seed <= 20; ++seed) {
        std::mt19937 random(seed);
        const auto below = [&random](std::size_t end) {
            return static_cast<std::size_t>(random() % end);
        };
        std::vector<double> rows;
        const auto someRows = [&](std::size_t count) {
            std::vector<double> some(count);
            for (double& height : some) {
                height = static_cast<double>(1 + below(50));
            }
            return some;
        };
        RowHeights heights;
        heights.setFunction([&rows](std::size_t row) { return rows.at(row); });
        for (int step = 0; step < 30; ++step) {
            const std::size_t row = below(rows.size() + 1);
            const auto at = rows.begin() + static_cast<std::ptrdiff_t>(row);
            const std::size_t count = below(rows.size() - row + 1);
            switch (below(4)) {
                case 0: {
                    const auto some = someRows(below(2000));
                    rows.insert(at, some.begin(), some.end());
                    heights.insert(row, some.size());
                    break;
                }
                case 1:
                    rows.erase(at, at + static_cast<std::ptrdiff_t>(count));
                    heights.remove(row, count);
                    break;
                case 2:
                    for (std::size_t i = row; i < row + count; ++i) {
                        rows[i] += 1;
                    }
                    heights.change(row, count);
                    break;
                default: {
                    const auto some = someRows(5);
                    rows.insert(at, some.begin(), some.end());
                    heights.insert(row, 5);
                }
            }
            ASSERT_EQ(heights.count(), rows.size());
            ASSERT_EQ(heights.total(), std::accumulate(rows.begin(), rows.end(), 0.0));
            for (int i = 0; i < 5 && !rows.empty(); ++i) {
                const std::size_t asked = below(rows.size());
                const double offset = std::accumulate(
                    rows.begin(), rows.begin() + static_cast<std::ptrdiff_t>(asked), 0.0);
                ASSERT_EQ(heights.offsetOf(asked), offset) << "seed " << seed << " step " << step;
                ASSERT_EQ(heights.rowAt(offset), asked);
                ASSERT_EQ(heights.rowAt(offset + rows[asked] - 0.5), asked);
            }
        }
    }
}

TEST(RowHeights, AreAtLeastAPoint) {
    RowHeights heights;
    heights.reset(10);
    EXPECT_EQ(heights.total(), 480);
    heights.setEqual(std::nan(""));
    EXPECT_EQ(heights.total(), 10);
    EXPECT_EQ(heights.rowAt(-5), 0U);
    EXPECT_EQ(heights.rowAt(1e300), 9U);
    heights.setFunction([](std::size_t row) { return row == 3 ? -100 : INFINITY; });
    EXPECT_EQ(heights.total(), 10);
    EXPECT_EQ(heights.rowAt(1e300), 9U);
}
