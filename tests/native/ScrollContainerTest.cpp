#include <cmath>
#include <string>
#include <utility>

#include "orvane/display/events/hitTest.h"
#include "orvane/display/graphics/ScrollContainer.h"
#include "orvane/embedding/Accessibility.h"
#include "platform/appkit/NSScrollView.h"
#include "platform/quartzcore/CAMediaTime.h"
#include "tests/native/Stage.h"

namespace orvane::display {

namespace {

using geometry::Point;
using graphics::ScrollContainer;
using graphics::ScrollOffsetEvent;
using State = events::TouchEventListenerState;

// Writes where it is touched to a log.
struct Touched final : events::TouchEventListener {
    State operator()(const std::shared_ptr<DisplayObject>&,
                     const events::TouchEvent& event) override {
        using enum events::TouchEventPhase;
        if (event.phase == Cancelled) {
            log += "cancelled ";
        } else if (event.phase == Began) {
            log += std::to_string(std::lround(event.location.y)) + " ";
        }
        return answer;
    }
    std::string take() { return std::exchange(log, {}); }
    State answer = State::Possible;
    std::string log;
};

struct Scrolled final : ScrollOffsetEvent::listener_type {
    void operator()(const std::shared_ptr<DisplayObject>&,
                    const ScrollOffsetEvent& event) override {
        using enum graphics::ScrollOffsetPhase;
        switch (event.phase) {
            case Began:
                log += "began ";
                break;
            case Changed:
                last = event.offset;
                break;
            case Ended:
                log += "ended ";
                break;
        }
    }
    std::string log;
    Point<double> last;
};

constexpr unsigned kBands[] = {0xFF0000, 0x00FF00, 0x0000FF, 0xFFFF00, 0x00FFFF, 0xFF00FF};

// A scroll container of 100 x 100 points at (50, 20), with a band of color every 50 points.
class ScrollContainerTest : public Stage {
protected:
    void SetUp() override {
        Stage::SetUp();
        frame_->translate(50, 20);
        scroll_->setBounds({0, 0, 100, 100});
        frame_->add(scroll_);
        root_->add(rect(0, 0, kWidth, kHeight, 0xFF808080));
        root_->add(frame_);
        display_->add(root_);
        for (int i = 0; i < 6; ++i) {
            addBand(50 * i, kBands[i]);
        }
        window_.display();
    }
    std::shared_ptr<graphics::Rect> addBand(int y, unsigned rgb) {
        auto band = rect(0, static_cast<float>(y), 100, 50, 0xFF000000 | rgb);
        scroll_->add(band);
        return band;
    }
    void press(double x, double y, double toY) {
        using enum platform::NSEventType;
        window_.sendEvent({LeftMouseDown, {x, y}, platform::CACurrentMediaTime()});
        window_.sendEvent({LeftMouseDragged, {x, toY}, platform::CACurrentMediaTime()});
        clock_.advanceBy(0.2);
        window_.sendEvent({LeftMouseUp, {x, toY}, platform::CACurrentMediaTime()});
    }

    platform::CAVirtualClock clock_;
    std::shared_ptr<graphics::Container> root_ = DisplayFactory::createContainer();
    std::shared_ptr<graphics::Container> frame_ = DisplayFactory::createContainer();
    std::shared_ptr<ScrollContainer> scroll_ =
        DisplayFactory::createScrollContainer(ScrollContainer::Type::Both, false);
};

}  // namespace

TEST_F(ScrollContainerTest, TheOffsetMovesThePictureAndNoFrame) {
    EXPECT_EQ(scroll_->getContentSize().height, 300);
    EXPECT_EQ(scroll_->getMaximumOffset(), (Point<double>{0, 200}));
    EXPECT_EQ(pixel(60, 30), shown(kBands[0]));
    const geometry::Rect<double> before = scroll_->getChildren()[3]->getFrame();
    scroll_->setContentOffset({0, 130});
    EXPECT_EQ(pixel(60, 30), shown(kBands[2]));
    EXPECT_EQ(pixel(60, 50), shown(kBands[3]));
    EXPECT_EQ(pixel(60, 15), shown(0x808080));
    EXPECT_EQ(pixel(60, 125), shown(0x808080));
    EXPECT_EQ(scroll_->getChildren()[3]->getFrame(), before);
    EXPECT_EQ(scroll_->getChildren()[3]->getFrameOnScreen(),
              (geometry::Rect<double>{50, 40, 100, 50}));
    EXPECT_EQ(scroll_->getChildren()[0]->getFrameOnScreen(), geometry::Rect<double>());
    EXPECT_EQ(picture(), pictureFromScratch());
}

TEST_F(ScrollContainerTest, WhatChangesInsideIsPaintedWhereItIsShown) {
    scroll_->setContentOffset({0, 130});
    window_.display();
    std::dynamic_pointer_cast<graphics::Rect>(scroll_->getChildren()[3])->setFillColor(0xFFFFFFFF);
    EXPECT_EQ(pixel(60, 50), shown(0xFFFFFF));
    scroll_->remove(scroll_->getChildren()[3]);
    EXPECT_EQ(pixel(60, 50), shown(0x808080));
    // The content ends with the last child.
    scroll_->setContentOffset({0, 500});
    EXPECT_EQ(scroll_->getContentOffset().y, 200);
    scroll_->remove(scroll_->getChildren().back());
    EXPECT_EQ(pixel(60, 119), shown(kBands[4]));
    EXPECT_EQ(scroll_->getContentOffset().y, 150);
    addBand(900, 0xFFFFFF);
    window_.display();
    EXPECT_EQ(scroll_->getMaximumOffset().y, 850);
    scroll_->setContentOffset({0, 850});
    EXPECT_EQ(pixel(60, 100), shown(0xFFFFFF));
    // The container itself moves and gets another size.
    frame_->translate(20, 10);
    scroll_->setBounds({0, 0, 80, 60});
    EXPECT_EQ(pixel(75, 60), shown(0x808080));
    EXPECT_EQ(scroll_->getMaximumOffset().y, 890);
    scroll_->setContentOffset({0, 5000});
    EXPECT_EQ(pixel(75, 60), shown(0xFFFFFF));
    EXPECT_EQ(picture(), pictureFromScratch());
}

TEST_F(ScrollContainerTest, TouchesReachWhatIsShown) {
    const auto inside = std::make_shared<Touched>();
    const auto outside = std::make_shared<Touched>();
    const auto onScroll = std::make_shared<Touched>();
    scroll_->getChildren()[4]->addListener<events::TouchEvent>(inside);
    // An object whose frame is where the scrolled content has its frames.
    const auto below = rect(0, 200, 200, 100, 0xFFFFFFFF);
    below->addListener<events::TouchEvent>(outside);
    root_->add(below);
    scroll_->setContentOffset({0, 200});
    window_.display();
    press(100, 40, 40);
    EXPECT_EQ(inside->take(), "240 ");
    const auto isBand = [](DisplayObject& object) { return object.asContainer() == nullptr; };
    EXPECT_EQ(events::hitTest({root_}, {100, 40}, isBand), scroll_->getChildren()[4]);
    EXPECT_EQ(events::hitTest({root_}, {100, 135}, isBand), root_->getChildren()[0]);
    inside->answer = State::Failed;
    press(100, 40, 40);
    EXPECT_EQ(outside->take(), "");
    // The container itself is touched before what is in it.
    scroll_->addListener<events::TouchEvent>(onScroll);
    inside->take();
    press(100, 40, 40);
    EXPECT_EQ(onScroll->take() + inside->take(), "240 ");
    onScroll->answer = State::Failed;
    // A listener that follows the gesture is cancelled by a drag, one that claims it wins.
    inside->answer = State::Possible;
    inside->take();
    press(100, 40, 100);
    EXPECT_EQ(inside->take(), "240 cancelled ");
    EXPECT_EQ(scroll_->getContentOffset().y, 140);
    inside->answer = State::Began;
    press(100, 100, 40);
    EXPECT_EQ(inside->take(), "240 ");
    EXPECT_EQ(scroll_->getContentOffset().y, 140);
}

TEST_F(ScrollContainerTest, ControlsAndLayersScrollAlong) {
    const auto control = ColorControl::create({0, 350, 100, 20}, 0x123456);
    scroll_->add(control);
    const auto above = rect(20, 340, 30, 40, 0xFFFFFFFF);  // in front of it, so on a layer
    const auto touched = std::make_shared<Touched>();
    above->addListener<events::TouchEvent>(touched);
    scroll_->add(above);
    EXPECT_EQ(viewOf(scroll_)->frame(), (platform::CGRect{{50, 20}, {100, 100}}));
    window_.display();
    EXPECT_EQ(scroll_->getMaximumOffset().y, 280);
    scroll_->setContentOffset({0, 280});
    EXPECT_EQ(pixel(55, 95), 0x123456U);
    EXPECT_EQ(pixel(80, 95), shown(0xFFFFFF));
    EXPECT_EQ(pixel(80, 85), shown(0xFFFFFF));
    press(80, 95, 95);
    EXPECT_EQ(touched->take(), "375 ");
    scroll_->setContentOffset({0, 230});
    EXPECT_EQ(pixel(55, 118), shown(0x808080));
    scroll_->setContentOffset({0, 238});
    EXPECT_EQ(pixel(80, 125), shown(0x808080));  // clipped
    EXPECT_EQ(picture(), pictureFromScratch());
}

TEST_F(ScrollContainerTest, ListenersGetTheOffsetAndWhenItMoves) {
    const auto listener = std::make_shared<Scrolled>();
    scroll_->addListener<ScrollOffsetEvent>(listener);
    scroll_->setContentOffset({0, 20});
    EXPECT_EQ(listener->last.y, 20);
    EXPECT_EQ(listener->log, "");
    scroll_->setContentOffset({0, 120}, ScrollContainer::Motion::Animated);
    EXPECT_TRUE(scroll_->isScrolling());
    for (int i = 0; i < 60; ++i) {
        clock_.advanceBy(1.0 / 60);
        window_.display();
    }
    EXPECT_EQ(listener->last.y, 120);
    EXPECT_EQ(listener->log, "began ended ");
    // A listener may remove the container, and what it throws is logged.
    struct Remover final : ScrollOffsetEvent::listener_type {
        void operator()(const std::shared_ptr<DisplayObject>& object,
                        const ScrollOffsetEvent&) override {
            object->removeFromParent();
            throw std::runtime_error("no");
        }
    };
    const auto remover = std::make_shared<Remover>();
    scroll_->addListener<ScrollOffsetEvent>(remover);
    testing::internal::CaptureStderr();
    std::exchange(scroll_, nullptr)->setContentOffset({0, 0});
    EXPECT_NE(testing::internal::GetCapturedStderr().find("scroll listener"), std::string::npos);
    EXPECT_EQ(pixel(60, 30), shown(0x808080));
}

TEST_F(ScrollContainerTest, AnOffsetCanBeSetBeforeTheContainerIsShown) {
    const auto other = DisplayFactory::createScrollContainer(ScrollContainer::Type::Vertical, true);
    other->setBounds({0, 0, 100, 100});
    other->add(rect(0, 0, 300, 500, 0xFFFFFFFF));
    other->setContentOffset({30, 130});
    EXPECT_EQ(other->getContentOffset(), (Point<double>{0, 130}));
    other->setContentSize({300, 180});
    EXPECT_EQ(other->getContentOffset(), (Point<double>{0, 80}));
    other->resetContentSize();
    EXPECT_EQ(other->getMaximumOffset(), (Point<double>{0, 400}));
    testing::internal::CaptureStderr();
    other->setContentSize({NAN, -1});
    other->scrollToVisible(scroll_);
    const std::string text = testing::internal::GetCapturedStderr();
    EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), 2) << text;
}

TEST_F(ScrollContainerTest, AnObjectIsMadeVisibleInNestedContainers) {
    const auto inner = DisplayFactory::createScrollContainer(ScrollContainer::Type::Both, false);
    const auto place = DisplayFactory::createContainer();
    place->translate(0, 400);
    scroll_->add(place);
    place->add(inner);
    inner->setBounds({0, 0, 100, 100});
    const auto far = rect(0, 500, 50, 20, 0xFFFFFFFF);
    far->getOrCreateAccessibilityElement()->setLabel("far");
    inner->add(far);
    scroll_->scrollToVisible(far, ScrollContainer::Motion::Immediate);
    EXPECT_EQ(inner->getContentOffset().y, 420);
    EXPECT_EQ(scroll_->getContentOffset().y, 400);
    EXPECT_EQ(pixel(60, 110), shown(0xFFFFFF));
    // Assistive technology finds it where it is shown.
    const auto elements = embedding::Accessibility(*display_).elements();
    ASSERT_EQ(elements.size(), 1U);
    EXPECT_EQ(elements[0].frame, (platform::CGRect{{50, 100}, {50, 20}}));
}

}  // namespace orvane::display
