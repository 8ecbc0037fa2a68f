#include "Stage.h"
#include "platform/quartzcore/CALayer.h"

namespace orvane::display {
namespace {

using R = geometry::Rect<double>;

class NativeLayerTest : public Stage {
protected:
    void SetUp() override {
        Stage::SetUp();
        display_->add(root_);
    }
    static R frameOf(const std::shared_ptr<DisplayObject>& object) {
        return R(viewOf(object)->frame());
    }

    std::shared_ptr<graphics::Container> root_ = DisplayFactory::createContainer();
};

TEST_F(NativeLayerTest, ViewsStandWhereTheirLayersDo) {
    root_->add(rect(10.4F, 20.6F, 100, 80, 0xFFFF0000));
    const auto control = ColorControl::create({30, 40, 20.2, 10});
    root_->add(control);
    // Without a stroke's width the bounds are the rectangle's, in whole numbers.
    EXPECT_EQ(frameOf(root_), R(10, 21, 100, 80));
    EXPECT_EQ(frameOf(control), R(20, 19, 21, 10));  // relative to the view around it
    EXPECT_EQ(viewOf(control)->superview(), viewOf(root_).get());
    EXPECT_EQ(pixel(35, 45), 0x00FF00U);
    EXPECT_EQ(pixel(25, 45), shown(0xFF0000));

    control->setTranslate(5, 0);
    EXPECT_EQ(frameOf(control), R(25, 19, 21, 10));
    control->setVisible(false);
    EXPECT_TRUE(viewOf(control)->isHidden());
    EXPECT_EQ(pixel(37, 45), shown(0xFF0000));
}

TEST_F(NativeLayerTest, ANewViewGoesBetweenItsSiblingsAndLiftsTheLaterOnes) {
    const auto low = ColorControl::create({0, 0, 40, 40}, 0x0000FF);
    const auto high = ColorControl::create({20, 0, 40, 40}, 0xFF0000);
    root_->add(low);
    root_->add(high);
    EXPECT_EQ(pixel(30, 10), 0xFF0000U);
    const auto between = ColorControl::create({10, 0, 40, 40}, 0x00FF00);
    root_->store(root_->find(high), between);
    EXPECT_EQ(pixel(15, 10), 0x00FF00U);
    EXPECT_EQ(pixel(30, 10), 0xFF0000U);
    EXPECT_EQ(viewOf(between)->layer()->zPosition(), 1);
    EXPECT_EQ(viewOf(high)->layer()->zPosition(), 2);
}

TEST_F(NativeLayerTest, RemovedViewsLeaveAndComeBack) {
    root_->add(rect(0, 0, 200, 150, 0xFFFFFFFF));
    const auto control = ColorControl::create({0, 0, 40, 40});
    root_->add(control);
    root_->remove(control);
    EXPECT_EQ(viewOf(control)->superview(), nullptr);
    EXPECT_EQ(pixel(10, 10), shown(0xFFFFFF));
    root_->add(control);
    EXPECT_EQ(pixel(10, 10), 0x00FF00U);
}

TEST_F(NativeLayerTest, TheViewAndItsRecognizerOutliveTheLayerHarmlessly) {
    auto object = rect(0, 0, 50, 50, 0xFFFF0000);
    display_->add(object);
    const auto view = viewOf(object);
    display_->remove(object);
    object.reset();
    ASSERT_EQ(view->gestureRecognizers().size(), 1U);
    view->drawRect({{0, 0}, {10, 10}});
    window_.setContentView(view);
    window_.sendEvent({platform::NSEventType::LeftMouseDown, {5, 5}});
    window_.display();
}

}  // namespace
}  // namespace orvane::display
