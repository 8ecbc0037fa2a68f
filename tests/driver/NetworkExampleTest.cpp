#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

#include "orvane/display/tree/DisplayObject.h"
#include "orvane/driver/Driver.h"
#include "orvane/embedding/textOf.h"
#include "platform/coregraphics/CGImage.h"

namespace {

using orvane::driver::Driver;
using orvane::platform::CGImage;

// The lines below the cards, on how their requests went.
std::vector<std::string> outcomes(const Driver& driver) {
    std::vector<std::string> result;
    for (const char* const card : {"Container", "Container[1]", "Container[2]"}) {
        const auto text = driver.find({.path = card + std::string("/Text[1]")});
        result.push_back(orvane::embedding::textOf(*text));
    }
    return result;
}

TEST(NetworkExample, ShowsWhatItLoads) {
    Driver driver(ORVANE_NETWORK_EXAMPLE, {.size = {1280, 800}});
    const std::vector<std::string> expected{"200, 3383 bytes of image/png",
                                            "200, 174 bytes of application/json", "404, not found"};
    driver.waitUntil([&] { return outcomes(driver) == expected; }, 30);
    driver.find({.text = "    \"colors\": [\"blue\", \"sand\", \"teal\"],"});
    const auto loaded = CGImage::createWithPNGFile(ORVANE_NETWORK_EXAMPLE_PICTURE);
    const auto shown = driver.picture();
    const auto& frame = driver.find({.kind = "Image"})->getFrame();
    ASSERT_EQ(frame.width, loaded->width());
    for (int y = 0; y < loaded->height(); ++y) {
        const auto row = shown->pixels().subspan(
            static_cast<std::size_t>((static_cast<int>(frame.y) + y) * shown->width() +
                                     static_cast<int>(frame.x)),
            static_cast<std::size_t>(loaded->width()));
        ASSERT_TRUE(std::ranges::equal(
            row, loaded->pixels().subspan(static_cast<std::size_t>(y * loaded->width()),
                                          static_cast<std::size_t>(loaded->width()))))
            << y;
    }
}

}  // namespace
