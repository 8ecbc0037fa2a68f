#include <gtest/gtest.h>

#include <string>
#include <utility>

#include "orvane/display/tree/DisplayObject.h"
#include "orvane/driver/Driver.h"
#include "orvane/embedding/textOf.h"

namespace {

using orvane::driver::Driver;

// The first number, in kWh.
double produced(const Driver& driver) {
    for (const auto& text : driver.findAll({.kind = "Text"})) {
        if (const std::string content = orvane::embedding::textOf(*text);
            content.ends_with(" kWh")) {
            return std::stod(content);
        }
    }
    return -1;
}

TEST(DashboardExample, ShowsTheRangeThatIsPressed) {
    Driver driver(ORVANE_DASHBOARD_EXAMPLE, {.size = {1280, 800}});
    double before = 46.8;
    EXPECT_EQ(produced(driver), before);
    for (const auto& [range, number] : {std::pair{"Month", 1124.0}, {"Week", 284.6}}) {
        driver.press({.text = range});
        driver.step(0.1);
        EXPECT_NE(produced(driver), before) << range << " in motion";
        EXPECT_NE(produced(driver), number) << range << " in motion";
        driver.waitForIdle();
        EXPECT_EQ(produced(driver), number) << range;
        before = number;
    }
}

TEST(DashboardExample, ItsCardsWrapInANarrowWindow) {
    for (const auto& [width, wraps] : {std::pair{1280, false}, {620, true}}) {
        const Driver driver(ORVANE_DASHBOARD_EXAMPLE, {.size = {double(width), 900}});
        const auto& first = driver.find({.label = "Produced"})->getFrame();
        const auto& third = driver.find({.label = "Sold to the grid"})->getFrame();
        EXPECT_EQ(third.x == first.x, wraps) << width;
        EXPECT_EQ(third.y >= first.y + first.height, wraps) << width;
    }
}

}  // namespace
