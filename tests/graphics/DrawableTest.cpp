#include <gtest/gtest.h>

#include "orvane/display/graphics/LinearGradient.h"
#include "tests/graphics/MarkingLayer.h"
#include "tests/graphics/ModelDrawables.h"

namespace orvane::display::graphics {
namespace {

TEST(Drawable, BracketsNestAndClipBeforeTheyTransform) {
    Log log;
    const auto group = std::make_shared<Logging<Container>>("group", log);
    const auto a = std::make_shared<LoggingShape>("a", log);
    const auto b = std::make_shared<LoggingShape>("b", log);
    group->add(a);
    group->add(b);
    b->setTranslate(20, 0);

    group->validate({5, 5, 100, 100});
    EXPECT_EQ(log, (Log{"group: store", "group: clip 5 5 25 5", "group: transform", "a: store",
                        "a: clip 5 5 5 5", "a: transform", "a: paint", "a: restore", "b: store",
                        "b: clip 20 5 10 5", "b: transform", "b: paint", "b: restore",
                        "group: restore"}));
    EXPECT_EQ(group->getValidFrame(), Box(0, 0, 30, 10));
    EXPECT_EQ(b->getValidFrame(), Box(20, 0, 10, 10));
}

TEST(Drawable, IsPaintedOnlyWhereItTouchesTheDirtyRectangle) {
    struct Case {
        const char* what;
        Box frame;
        Box dirty;
        bool painted;
    };
    const Case cases[] = {
        {"inside", {0, 0, 10, 10}, {2, 2, 1, 1}, true},
        {"edge shared", {0, 0, 10, 10}, {10, 0, 5, 10}, true},
        {"corner shared", {0, 0, 10, 10}, {10, 10, 5, 5}, false},
        {"beside", {0, 0, 10, 10}, {11, 0, 5, 10}, false},
        {"frame without width", {5, 0, 0, 10}, {0, 0, 10, 10}, true},
        {"frame without extent", {5, 5, 0, 0}, {0, 0, 10, 10}, false},
    };
    for (const Case& c : cases) {
        Log log;
        const auto shape = std::make_shared<LoggingShape>("s", log);
        shape->box = c.frame;
        shape->validate(c.dirty);
        EXPECT_EQ(!log.empty(), c.painted) << c.what;
        EXPECT_EQ(shape->getValidFrame(), c.painted ? c.frame : Box()) << c.what;
    }
}

TEST(Shape, IsVisibleByItsFillOrItsStrokeUnderVisibleAncestors) {
    Log log;
    const auto group = std::make_shared<Logging<Container>>("group", log);
    const auto shape = std::make_shared<LoggingShape>("s", log);
    group->add(shape);
    for (unsigned flags = 0; flags < 16; ++flags) {
        shape->setVisible((flags & 1) != 0);
        group->setVisible((flags & 2) != 0);
        shape->fillVisible = (flags & 4) != 0;
        shape->strokeVisible = (flags & 8) != 0;
        log.clear();
        shape->validate({0, 0, 10, 10});
        EXPECT_EQ(!log.empty(), (flags & 3) == 3 && flags >= 4) << flags;
    }
}

TEST(Container, HasNoFrameUnderAHiddenOneUntilThatIsShown) {
    Log log;
    const auto hidden = std::make_shared<Logging<Container>>("hidden", log);
    const auto group = std::make_shared<Logging<Container>>("group", log);
    hidden->add(group);
    group->add(std::make_shared<LoggingShape>("s", log));
    hidden->setVisible(false);
    EXPECT_EQ(hidden->getFrame(), Box());
    EXPECT_EQ(group->getFrame(), Box());
    hidden->setVisible(true);
    EXPECT_EQ(hidden->getFrame(), Box(0, 0, 10, 10));
    EXPECT_EQ(group->getFrame(), Box(0, 0, 10, 10));
}

TEST(Shape, BoundsHoldTheStrokeInWholeNumbers) {
    struct Case {
        Box box;
        float width;
        Box bounds;
    };
    const Case cases[] = {
        {{0, 0, 10, 10}, 0, {0, 0, 10, 10}},
        {{0, 0, 10, 10}, 1, {-1, -1, 12, 12}},
        {{0, 0, 10, 10}, 2, {-1, -1, 12, 12}},
        {{0, 0, 10, 10}, 3, {-2, -2, 14, 14}},
        // A negative pad turns the box inside out; it comes back with positive extents.
        {{0, 0, 10, 10}, -20, {0, 0, 10, 10}},
        // Position to the nearest, ties to even; size upward.
        {{2.5, 3.5, 4.2, 5}, 0, {2, 4, 5, 5}},
        {{10.4, 10.6, -3.2, 5}, 0, {7, 11, 4, 5}},
    };
    Log log;
    for (const Case& c : cases) {
        const auto shape = std::make_shared<LoggingShape>("s", log);
        shape->box = c.box;
        shape->strokeVisible = false;  // the room is kept all the same
        shape->setStrokeWidth(c.width);
        EXPECT_EQ(shape->getBounds(), c.bounds) << c.box.x << " with width " << c.width;
        shape->setMatrix(0, -2, 100, 1, 0, 0);  // a quarter turn, twice as wide, moved
        const Box& b = c.bounds;
        EXPECT_EQ(shape->getFrame(), Box(100 - 2 * (b.y + b.height), b.x, 2 * b.height, b.width));
    }
}

TEST(Shape, EveryStyleSetterAsksForARepaint) {
    Log log;
    const auto layer = std::make_shared<MarkingLayer>();
    const auto shape = std::make_shared<LoggingShape>("s", log);
    layer->addObject(shape);
    layer->takeMarks();
    shape->setStrokeWidth(2);
    EXPECT_EQ(shape->getFrame(), Box(-1, -1, 12, 12)) << "the cached frame must not survive";
    shape->setStrokeDashOffset(3);
    shape->setStrokeDashArray({4, 1.5F});
    EXPECT_EQ(shape->getStrokeDashArray(), (std::vector<double>{4, 1.5}));
    shape->setStrokeDashArray({});
    shape->onFillChanged();
    EXPECT_EQ(layer->takeMarks(), 5);
}

TEST(LinearGradient, HasAnAxisOfItsOwnInUserSpaceUnlessItIsTheDefaultOne) {
    struct Case {
        float x1, y1, x2, y2;
        bool defaultAxis;
    };
    const Case cases[] = {{0, 0, 1, 0, true},     {0, 0, 1, 1e-39F, true}, {0, 0, 1, 1e-30F, false},
                          {0, 0, 0, 0, false},    {5, 0, 1, 0, false},     {0, 5, 1, 0, false},
                          {0, 0, 0.5F, 0, false}, {0, 0, 1, 5, false}};
    for (const Case& c : cases) {
        LinearGradient gradient;
        gradient.set({c.x1}, {c.y1}, {c.x2}, {c.y2});
        EXPECT_EQ(gradient.isDefaultBounds(), c.defaultAxis) << c.x1 << ' ' << c.x2 << ' ' << c.y2;
        EXPECT_EQ(gradient.hasBounds(), !c.defaultAxis);
        gradient.setUserSpace(false);
        EXPECT_FALSE(gradient.hasBounds());
    }
}

}  // namespace
}  // namespace orvane::display::graphics
