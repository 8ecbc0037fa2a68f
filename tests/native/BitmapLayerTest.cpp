#include "Stage.h"
#include "orvane/display/createLayer.h"

namespace orvane::display {
namespace {

using R = geometry::Rect<double>;
using native::BitmapLayer;

class BitmapLayerTest : public Stage {
protected:
    void SetUp() override {
        Stage::SetUp();
        root_->add(behind_);
        root_->add(control_);
        root_->add(front_);
        root_->add(top_);
    }

    std::shared_ptr<graphics::Container> root_ = DisplayFactory::createContainer();
    std::shared_ptr<DisplayObject> behind_ = rect(0, 0, 100, 100, 0xFFFF0000);
    std::shared_ptr<DisplayObject> control_ = ColorControl::create({20, 20, 40, 40});
    std::shared_ptr<DisplayObject> front_ = rect(40, 40, 40, 40, 0xFF0000FF);
    std::shared_ptr<DisplayObject> top_ = rect(60, 60, 40, 40, 0xFFFFFF00);
};

TEST_F(BitmapLayerTest, WhatComesAfterAControlGetsALayerEachAboveIt) {
    display_->add(root_);
    EXPECT_EQ(behind_->getLayer(), nullptr);
    const auto layer = root_->getLayer();
    const LayerList expected{control_->getLayer(), front_->getLayer(), top_->getLayer()};
    EXPECT_EQ(layer->getSublayers(), expected);
    EXPECT_NE(front_->getLayer(), nullptr);
    EXPECT_NE(front_->getLayer(), top_->getLayer());
    EXPECT_EQ(pixel(10, 10), shown(0xFF0000));
    EXPECT_EQ(pixel(30, 30), 0x00FF00U);
    EXPECT_EQ(pixel(50, 50), shown(0x0000FF));
    EXPECT_EQ(pixel(70, 70), shown(0xFFFF00));

    // A group that comes after goes as a whole, and is split on its own layer; what went stays
    // where it went.
    const auto group = DisplayFactory::createContainer();
    group->add(ColorControl::create({0, 0, 10, 10}, 0x123456));
    group->add(rect(5, 0, 10, 10, 0xFF654321));
    root_->add(group);
    EXPECT_EQ(layer->getSublayers().size(), 4U);
    EXPECT_EQ(group->getLayer()->getSublayers().size(), 2U);
    EXPECT_EQ(pixel(7, 5), shown(0x654321));
    const auto kept = top_->getLayer();
    root_->remove(control_);
    EXPECT_EQ(top_->getLayer(), kept);
}

TEST_F(BitmapLayerTest, WithoutAControlNothingIsSplit) {
    root_->remove(control_);
    display_->add(root_);
    EXPECT_TRUE(root_->getLayer()->getSublayers().empty());
    EXPECT_EQ(top_->getLayer(), nullptr);
}

// Writes down what it is told to paint anew.
class Notes : public BitmapLayer {
public:
    void validateFrame(const Rect& rect) override { rects.push_back(rect); }
    std::vector<Rect> rects;
};

TEST_F(BitmapLayerTest, AChangeDamagesWhereTheObjectWasAndWhereItIs) {
    const auto root = DisplayFactory::createContainer();
    const auto moved = rect(10, 10, 5, 5, 0xFFFF0000);
    root->add(rect(0, 0, 100, 100, 0xFFFFFFFF));
    root->add(moved);
    const auto notes = createLayer<Notes>();
    root->extractIntoLayer(notes);
    display_->add(root);
    EXPECT_EQ(notes->rects, (std::vector<R>{{0, 0, 100, 100}}));  // all, for the frame is new
    root->validate({0, 0, 100, 100});                             // as painting would

    notes->rects.clear();
    {
        const UpdateLock lock(root);
        moved->setTranslate(20, 0);
        moved->setTranslate(30, 0);
    }
    EXPECT_EQ(notes->rects, (std::vector<R>{{10, 10, 5, 5}, {40, 10, 5, 5}}));

    notes->rects.clear();
    root->remove(moved);
    EXPECT_EQ(notes->rects, (std::vector<R>{{10, 10, 5, 5}}));  // only where it was
    notes->rects.clear();
    root->setTranslate(1, 0);
    EXPECT_EQ(notes->rects, (std::vector<R>{{1, 0, 100, 100}}));
}

TEST_F(BitmapLayerTest, OnlyTheDamageIsPaintedAndComposed) {
    root_->remove(control_);
    display_->add(root_);
    window_.display();
    front_->translate(5, 5);
    double area = 0;
    for (const platform::NSBackingRect& each : window_.display()) {
        area += static_cast<double>(each.right - each.left) * (each.bottom - each.top);
    }
    EXPECT_GT(area, 45.0 * 45);
    EXPECT_LT(area, 50.0 * 50);
}

TEST_F(BitmapLayerTest, FaultyValuesLeaveTheNeighboursOnScreen) {
    const float nan = std::numeric_limits<float>::quiet_NaN();
    const float huge = 1e30F;
    const auto neighbour = rect(150, 100, 20, 20, 0xFF00FFFF);
    root_->add(neighbour);
    display_->add(root_);
    const std::vector<std::shared_ptr<DisplayObject>> faulty = {
        rect(nan, 0, 10, 10, 0xFFFFFFFF), rect(-huge, 0, 2 * huge, 10, 0xFFFFFFFF),
        rect(0, 0, -50, -50, 0xFFFFFFFF), rect(huge, huge, 1, 1, 0xFFFFFFFF)};
    for (const auto& each : faulty) {
        root_->store(root_->getChildren().begin(), each);
        EXPECT_EQ(pixel(160, 110), shown(0x00FFFF));
        EXPECT_EQ(pixel(10, 30), shown(0xFF0000));
    }
    for (const auto& [a, d] : {std::pair{0.0F, 1.0F}, {nan, 1.0F}, {huge, huge}, {0.0F, 0.0F}}) {
        faulty[2]->setMatrix(a, 0, 0, 0, d, 0);
        front_->setMatrix(a, 0, 0, 0, d, 0);
        EXPECT_EQ(pixel(160, 110), shown(0x00FFFF));
    }
}

TEST_F(BitmapLayerTest, ADeepTreeIsPaintedAndHit) {
    std::shared_ptr<ContainerObject> deepest = DisplayFactory::createContainer();
    const auto root = deepest;
    for (int i = 0; i < 10000; ++i) {
        const auto level = DisplayFactory::createContainer();
        deepest->add(level);
        deepest = level;
    }
    deepest->add(rect(0, 0, 50, 50, 0xFFABCDEF));
    display_->add(root);
    EXPECT_EQ(pixel(25, 25), shown(0xABCDEF));
    window_.sendEvent({platform::NSEventType::LeftMouseDown, {25, 25}});
    deepest->add(rect(50, 0, 50, 50, 0xFF00FF00));
    EXPECT_EQ(pixel(75, 25), shown(0x00FF00));
}

}  // namespace
}  // namespace orvane::display
