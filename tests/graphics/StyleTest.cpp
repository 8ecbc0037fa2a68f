#include <gtest/gtest.h>

#include "orvane/display/graphics/LinearGradient.h"
#include "orvane/display/graphics/Pattern.h"

namespace orvane::display::graphics {
namespace {

TEST(LinearGradient, HasAnAxisOfItsOwnInUserSpaceUnlessItIsTheDefaultOne) {
    struct Case {
        float x1, y1, x2, y2;
        bool userSpace;
        bool defaultAxis;
        bool hasBounds;
    };
    const Case cases[] = {
        {0, 0, 0, 0, true, false, true},      {0, 0, 0, 0, false, false, false},
        {0, 0, 1, 0, true, true, false},      {0, 0, 1, 0, false, true, false},
        {0, 0, 1, 1e-30F, true, false, true}, {0, 0, 1, 1e-39F, true, true, false},
        {5, 0, 1, 0, true, false, true},      {0, 5, 1, 0, true, false, true},
        {0, 0, 0.5F, 0, true, false, true},
    };
    for (const Case& c : cases) {
        LinearGradient gradient;
        gradient.set({c.x1}, {c.y1}, {c.x2}, {c.y2});
        gradient.setUserSpace(c.userSpace);
        EXPECT_EQ(gradient.isDefaultBounds(), c.defaultAxis) << c.x1 << ' ' << c.x2 << ' ' << c.y2;
        EXPECT_EQ(gradient.hasBounds(), c.hasBounds) << c.x1 << ' ' << c.x2 << ' ' << c.y2;
    }
    EXPECT_TRUE(LinearGradient().hasBounds());
}

TEST(LinearGradient, AColourWithoutAPositionLeavesThePositionsShorter) {
    LinearGradient gradient;
    gradient.addColor(0xFF000000, 0.25F);
    gradient.addColor(0xFFFFFFFF);
    EXPECT_EQ(gradient.getColors(), (std::vector<unsigned>{0xFF000000, 0xFFFFFFFF}));
    EXPECT_EQ(gradient.getPositions(), std::vector<float>{0.25F});
}

}  // namespace
}  // namespace orvane::display::graphics
