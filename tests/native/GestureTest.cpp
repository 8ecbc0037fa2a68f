#include <functional>

#include "tests/native/Stage.h"

namespace orvane::display {
namespace {

using events::TouchEvent;
using events::TouchEventPhase;
using State = events::TouchEventListenerState;
using platform::NSEventType;

// A listener that records the events and counts the actions.
class RecordingListener : public events::TouchEventListener {
public:
    explicit RecordingListener(std::function<State(const TouchEvent&)> answer)
        : answer_(std::move(answer)) {}
    State operator()(const std::shared_ptr<DisplayObject>&, const TouchEvent& event) override {
        received.push_back(event);
        return answer_(event);
    }
    void action() override { ++actions; }

    std::vector<TouchEvent> received;
    int actions = 0;

private:
    std::function<State(const TouchEvent&)> answer_;
};

// A display with a square.
class Gesture : public Stage {
protected:
    void SetUp() override {
        Stage::SetUp();
        display_->add(object_);
    }
    // Puts the square into a container with a control, where it gets its own layer.
    std::shared_ptr<graphics::Container> putAboveAControl() {
        auto root = DisplayFactory::createContainer();
        root->add(ColorControl::create({0, 0, 20, 20}));
        root->add(object_);
        display_->add(root);
        return root;
    }
    static std::shared_ptr<RecordingListener> listen(
        const std::shared_ptr<DisplayObject>& object,
        std::function<State(const TouchEvent&)> answer) {
        auto listener = std::make_shared<RecordingListener>(std::move(answer));
        object->addListener<TouchEvent>(listener);
        return listener;
    }
    void send(NSEventType type, double x, double y) { window_.sendEvent({type, {x, y}}); }
    void drag() {
        send(NSEventType::LeftMouseDown, 60, 60);
        send(NSEventType::LeftMouseDragged, 70, 65);
        send(NSEventType::LeftMouseUp, 190, 140);
    }
    static State claim(const TouchEvent& event) {
        return event.phase == TouchEventPhase::Began   ? State::Began
               : event.phase == TouchEventPhase::Ended ? State::Ended
                                                       : State::Changed;
    }

    std::shared_ptr<DisplayObject> object_ = rect(50, 50, 40, 40, 0xFFFF0000);
};

TEST_F(Gesture, HoldsNothingAfterItsEnd) {
    // Gestures that are claimed, never claimed, ended early or given up, with an object that is
    // removed in each phase.
    for (const State answer : {State::Changed, State::Possible, State::Ended, State::Failed}) {
        for (const auto leaves :
             {TouchEventPhase::Began, TouchEventPhase::Moved, TouchEventPhase::Ended}) {
            auto object = rect(50, 50, 40, 40, 0xFFFF0000);
            const std::weak_ptr<DisplayObject> watched = object;
            const auto listener = listen(object, [&](const TouchEvent& event) {
                if (event.phase == leaves) {
                    display_->removeAll();
                }
                return answer;
            });
            display_->add(object);
            drag();
            EXPECT_GE(listener->received.size(), 1U);
            display_->removeAll();
            object.reset();
            EXPECT_TRUE(watched.expired())
                << static_cast<int>(answer) << " " << static_cast<int>(leaves);
        }
    }
}

TEST_F(Gesture, AClaimedGestureReachesItsListenerInScreenCoordinates) {
    const auto listener = listen(object_, claim);
    drag();
    ASSERT_EQ(listener->received.size(), 3U);
    EXPECT_EQ(listener->received[0].location, geometry::Point<double>(60, 60));
    EXPECT_EQ(listener->received[1].delta, geometry::Point<double>(10, 5));
    EXPECT_EQ(listener->received[2].location, geometry::Point<double>(190, 140));
    EXPECT_EQ(listener->actions, 3);

    send(NSEventType::LeftMouseDown, 10, 10);  // outside the square
    send(NSEventType::LeftMouseUp, 10, 10);
    layerOf(object_)->setTouchDisabled(true);
    drag();
    EXPECT_EQ(listener->received.size(), 3U);
    EXPECT_EQ(layerOf(object_)->touchBegan({1, 1}), State::Failed);
    layerOf(object_)->invokeTouchHandlerAction();
}

TEST_F(Gesture, AnObjectThatWasShownAloneIsTouchedInsideAContainer) {
    const auto listener = listen(object_, claim);
    for (const bool extracted : {false, true}) {
        const auto root = DisplayFactory::createContainer();
        root->add(object_);
        display_->add(root);
        if (extracted) {
            object_->extractAnimationLayer();
        }
        listener->received.clear();
        drag();
        EXPECT_EQ(listener->received.size(), 3U) << extracted;
        EXPECT_EQ(pixel(60, 60), shown(0xFF0000)) << extracted;
        display_->remove(root);
        display_->add(object_);
    }
}

TEST_F(Gesture, AnInnerViewHasPrecedenceAndMayGiveUp) {
    const auto root = DisplayFactory::createContainer();
    const auto backdrop = rect(0, 0, 200, 150, 0xFFFFFFFF);
    const auto inner = rect(50, 50, 40, 40, 0xFFFF0000);
    root->add(backdrop);
    root->add(inner);
    display_->add(root);
    inner->extractAnimationLayer();
    bool innerClaims = true;
    const auto onInner = listen(
        inner, [&](const TouchEvent& event) { return innerClaims ? claim(event) : State::Failed; });
    const auto onRoot = listen(backdrop, claim);
    drag();
    EXPECT_EQ(onInner->received.size(), 3U);
    EXPECT_TRUE(onRoot->received.empty());
    innerClaims = false;
    drag();
    EXPECT_EQ(onInner->received.size(), 4U);
    EXPECT_EQ(onRoot->received.size(), 3U);
}

TEST_F(Gesture, AClaimedGestureIsCancelledWithItsLayer) {
    const auto root = putAboveAControl();
    const auto listener = listen(object_, [&](const TouchEvent& event) {
        if (event.phase == TouchEventPhase::Moved) {
            root->remove(object_);
        }
        return claim(event);
    });
    drag();
    ASSERT_GE(listener->received.size(), 3U);
    EXPECT_EQ(listener->received.back().phase, TouchEventPhase::Cancelled);

    display_->add(object_);
    listener->received.clear();
    send(NSEventType::LeftMouseDown, 60, 60);
    layerOf(object_)->setTouchDisabled(true);
    EXPECT_EQ(listener->received.back().phase, TouchEventPhase::Cancelled);
}

TEST_F(Gesture, AListenerMayDestroyTheWindow) {
    auto window = std::make_unique<platform::OffscreenWindow>(platform::CGSize{kWidth, kHeight});
    window->setContentView(view_);
    const auto listener = listen(object_, [&](const TouchEvent& event) {
        window.reset();
        return claim(event);
    });
    window->sendEvent({NSEventType::LeftMouseDown, {60, 60}});
    ASSERT_EQ(listener->received.size(), 2U);
    EXPECT_EQ(listener->received.back().phase, TouchEventPhase::Cancelled);
}

TEST_F(Gesture, ACancelledListenerMayChangeTheContainerThatIsChanging) {
    for (const bool isExtracted : {true, false}) {
        object_ = rect(50, 50, 40, 40, 0xFFFF0000);
        const auto root = putAboveAControl();
        const auto listener = listen(object_, [&](const TouchEvent& event) {
            if (event.phase == TouchEventPhase::Cancelled) {
                root->clear();
            }
            return claim(event);
        });
        picture();
        send(NSEventType::LeftMouseDown, 60, 60);
        if (isExtracted) {
            object_->extractAnimationLayer();
        } else {
            root->remove(object_);
        }
        EXPECT_EQ(root->getChildren().size(), isExtracted ? 1U : 0U);
        ASSERT_EQ(listener->received.size(), 2U);
        EXPECT_EQ(listener->received.back().phase, TouchEventPhase::Cancelled);
        send(NSEventType::LeftMouseUp, 60, 60);
        display_->removeAll();
    }
}

TEST_F(Gesture, AnObjectRaisedInItsGestureKeepsItsView) {
    const auto root = putAboveAControl();
    const auto view = viewOf(object_);
    const auto listener = listen(object_, [&](const TouchEvent& event) {
        if (event.phase == TouchEventPhase::Began) {
            root->add(object_);
        }
        return claim(event);
    });
    send(NSEventType::LeftMouseDown, 60, 60);
    EXPECT_EQ(viewOf(object_), view);
    EXPECT_NE(view->superview(), nullptr);
}

}  // namespace
}  // namespace orvane::display
