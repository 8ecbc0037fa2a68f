#include <gtest/gtest.h>

#include "tests/graphics/MarkingLayer.h"
#include "tests/graphics/ModelDrawables.h"

namespace orvane::display::graphics {
namespace {

using Box = geometry::Rect<double>;

constexpr Box kEverything{-1000, -1000, 3000, 3000};

TEST(Drawable, BracketsNestAndClipBeforeTheyTransform) {
    Log log;
    const auto group = std::make_shared<LoggingContainer>("group", log);
    const auto a = std::make_shared<LoggingShape>("a", log);
    const auto b = std::make_shared<LoggingShape>("b", log);
    group->add(a);
    group->add(b);
    b->setTranslate(20, 0);

    group->validate({5, 5, 100, 100});

    EXPECT_EQ(log, (Log{"group: store", "group: clip 5 5 25 5", "group: transform",  //
                        "a: store", "a: clip 5 5 5 5", "a: transform", "a: paint", "a: restore",
                        "b: store", "b: clip 20 5 10 5", "b: transform", "b: paint", "b: restore",
                        "group: restore"}));
    EXPECT_EQ(group->getValidFrame(), Box(0, 0, 30, 10));
    EXPECT_EQ(b->getValidFrame(), Box(20, 0, 10, 10));
}

TEST(Drawable, IsPaintedOnlyWhereItTouchesTheDirtyRectangleAndCanBeSeen) {
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
        {"above", {0, 0, 10, 10}, {0, -6, 10, 5}, false},
        {"frame without width", {5, 0, 0, 10}, {0, 0, 10, 10}, true},
        {"frame without extent", {5, 5, 0, 0}, {0, 0, 10, 10}, false},
        {"no dirty rectangle", {0, 0, 10, 10}, {}, false},
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

TEST(Drawable, AShapeIsVisibleByItsFillOrItsStrokeUnderVisibleAncestors) {
    Log log;
    const auto group = std::make_shared<LoggingContainer>("group", log);
    const auto shape = std::make_shared<LoggingShape>("s", log);
    group->add(shape);
    for (const bool own : {false, true}) {
        for (const bool parent : {false, true}) {
            for (const bool fill : {false, true}) {
                for (const bool stroke : {false, true}) {
                    shape->setVisible(own);
                    group->setVisible(parent);
                    shape->fillVisible = fill;
                    shape->strokeVisible = stroke;
                    const bool seen = own && parent && (fill || stroke);
                    EXPECT_EQ(shape->isVisible(), seen);
                    log.clear();
                    shape->validate(kEverything);
                    EXPECT_EQ(!log.empty(), seen);
                }
            }
        }
    }
}

TEST(Shape, BoundsHoldTheStrokeInWholeNumbers) {
    struct Case {
        Box box;
        float width;
        Box bounds;
    };
    const Case cases[] = {
        {{0, 0, 10, 10}, 0, {0, 0, 10, 10}},
        {{0, 0, 10, 10}, 0.5F, {-1, -1, 12, 12}},
        {{0, 0, 10, 10}, 1, {-1, -1, 12, 12}},
        {{0, 0, 10, 10}, 2, {-1, -1, 12, 12}},
        {{0, 0, 10, 10}, 3, {-2, -2, 14, 14}},
        // A pad that is negative turns the box inside out; it comes back with positive extents.
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
    EXPECT_EQ(layer->takeMarks(), 1);
    EXPECT_EQ(shape->getFrame(), Box(-1, -1, 12, 12)) << "the cached frame must not survive";
    shape->setStrokeDashOffset(3);
    EXPECT_EQ(layer->takeMarks(), 1);
    shape->setStrokeDashArray({4, 1.5F});
    EXPECT_EQ(layer->takeMarks(), 1);
    EXPECT_EQ(shape->getStrokeDashArray(), (std::vector<double>{4, 1.5}));
    shape->setStrokeDashArray({});
    EXPECT_EQ(layer->takeMarks(), 1);
    EXPECT_TRUE(shape->getStrokeDashArray().empty());
    shape->onFillChanged();
    EXPECT_EQ(layer->takeMarks(), 1);
}

}  // namespace
}  // namespace orvane::display::graphics
