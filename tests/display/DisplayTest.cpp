#include "orvane/display/native/BitmapLayer.h"
#include "orvane/system/ScreenTypeView.h"
#include "platform/quartzcore/CAMediaTime.h"
#include "tests/native/Stage.h"

namespace orvane::display {
namespace {

class DisplayTest : public Stage {};

TEST_F(DisplayTest, TheLastAddedObjectIsOnTopUntilItIsRemoved) {
    const auto red = rect(0, 0, 100, 100, 0xFFFF0000);
    const auto group = DisplayFactory::createContainer();
    const auto control = ColorControl::create({50, 0, 100, 100}, 0x0000FF);
    group->add(control);
    display_->add(red);
    display_->add(group);
    EXPECT_EQ(pixel(75, 50), 0x0000FFU);
    EXPECT_EQ(pixel(180, 50), 0U);
    EXPECT_EQ(control->getLayer()->getDisplay(), display_) << "every sublayer gets the display";
    EXPECT_TRUE(display_->remove(group));
    EXPECT_FALSE(display_->remove(group));
    EXPECT_FALSE(display_->remove(rect(0, 0, 1, 1, 0)));
    EXPECT_EQ(control->getLayer()->getDisplay(), nullptr);
    EXPECT_EQ(pixel(75, 50), shown(0xFF0000));
    display_->removeAll();
    EXPECT_EQ(pixel(75, 50), 0U);
    display_->add(nullptr);
    Display::reset();
    EXPECT_NE(Display::instance(), display_) << "the old display belongs to its owners";
}

TEST_F(DisplayTest, ALayerWithoutAViewIsAddedAndRemovedSilently) {
    const auto object = rect(0, 0, 10, 10, 0xFFFF0000);
    object->extractIntoLayer(std::make_shared<native::BitmapLayer>());  // not initialized
    display_->add(object);
    EXPECT_TRUE(display_->remove(object));
}

TEST_F(DisplayTest, ListenersGetTheSizeAndTheWindowDeterminesTheScale) {
    struct SizeListener : FrameChangedEvent::listener_type {
        void operator()(const std::shared_ptr<Display>&, const FrameChangedEvent& event) override {
            size = event.frame;
        }
        geometry::Size<double> size;
    };
    const auto listener = std::make_shared<SizeListener>();
    display_->addListener<FrameChangedEvent>(listener);
    display_->frameChanged({30, 40});
    EXPECT_EQ(listener->size, geometry::Size<double>(30, 40));
    display_->frameChanged();
    EXPECT_EQ(listener->size, geometry::Size<double>(kWidth, kHeight));
    window_.setBackingScaleFactor(2);
    EXPECT_EQ(display_->getScaleFactor(), 2);
    window_.setContentView(nullptr);
    EXPECT_EQ(display_->getScaleFactor(), 1);
}

TEST_F(DisplayTest, ReplacingKeepsBothObjectsUntilTheTransitionEnds) {
    platform::CAVirtualClock clock(1);
    const auto red = rect(0, 0, 200, 150, 0xFFFF0000);
    const auto blue = rect(0, 0, 200, 150, 0xFF0000FF);
    display_->replace(nullptr, red, nullptr);
    EXPECT_EQ(pixel(10, 10), shown(0xFF0000));

    const animation::Transition push{animation::Transition::PushFromRight, 2};
    display_->replace(red, blue, &push);
    EXPECT_EQ(display_->getObjects().size(), 2U);
    clock.advanceTo(2);
    EXPECT_EQ(pixel(50, 75), shown(0xFF0000));
    EXPECT_EQ(pixel(150, 75), shown(0x0000FF));
    clock.advanceTo(3.5);
    EXPECT_EQ(pixel(50, 75), shown(0x0000FF));
    ASSERT_EQ(display_->getObjects().size(), 1U);
    EXPECT_EQ(display_->getObjects().front(), blue);

    display_->replace(blue, red, nullptr);
    EXPECT_EQ(display_->getObjects().size(), 1U);
    EXPECT_EQ(pixel(50, 75), shown(0xFF0000));
}

}  // namespace
}  // namespace orvane::display
