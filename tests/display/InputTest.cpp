#include <string>
#include <utility>

#include "platform/appkit/NSCursor.h"
#include "tests/native/Stage.h"

namespace orvane::display {
namespace {

using platform::NSEvent;
using platform::NSEventType;

// Logs the events that an object gets, and handles them if a test says so.
struct Listener final : events::PointerEvent::listener_type,
                        events::ScrollEvent::listener_type,
                        events::KeyEvent::listener_type {
    bool operator()(const std::shared_ptr<DisplayObject>&,
                    const events::PointerEvent& event) override {
        static constexpr const char* kPhases[] = {"enter", "leave", "move", "down", "up", "cancel"};
        static constexpr const char* kButtons[] = {"", "left", "middle", "right"};
        log += std::string(kPhases[static_cast<int>(event.phase)]) +
               kButtons[static_cast<int>(event.button)] +
               (event.clickCount > 0 ? std::to_string(event.clickCount) : "") + " ";
        return handles;
    }
    bool operator()(const std::shared_ptr<DisplayObject>&,
                    const events::ScrollEvent& event) override {
        log += "scroll" + std::to_string(static_cast<int>(event.delta.y)) + " ";
        return handles;
    }
    bool operator()(const std::shared_ptr<DisplayObject>&, const events::KeyEvent& event) override {
        log += (event.phase == events::KeyPhase::Up ? "-" : "+") + event.key + " ";
        return handles;
    }

    std::string log;
    bool handles = false;
};

struct TouchLog final : events::TouchEventListener {
    events::TouchEventListenerState operator()(const std::shared_ptr<DisplayObject>&,
                                               const events::TouchEvent&) override {
        ++events;
        return events::TouchEventListenerState::Began;
    }
    int events = 0;
};

class InputTest : public Stage {
protected:
    InputTest() {
        object_->addListener<events::PointerEvent>(listener_);
        object_->addListener<events::ScrollEvent>(listener_);
        object_->addListener<events::KeyEvent>(listener_);
        object_->addListener<events::TouchEvent>(touches_);
        display_->add(object_);
    }
    void send(NSEventType type, platform::CGPoint place, int button = 0, double time = 0) {
        NSEvent event;
        event.type = type;
        event.locationInWindow = place;
        event.timestamp = time;
        event.buttonNumber = button;
        event.scrollingDelta = {0, 48};
        window_.sendEvent(event);
    }
    void press(const std::string& key, unsigned modifiers = 0) {
        NSEvent event;
        event.type = NSEventType::KeyDown;
        event.key = key;
        event.modifierFlags = modifiers;
        window_.sendEvent(event);
    }
    std::string taken() { return std::exchange(listener_->log, {}); }

    std::shared_ptr<Listener> listener_ = std::make_shared<Listener>();
    std::shared_ptr<TouchLog> touches_ = std::make_shared<TouchLog>();
    std::shared_ptr<DisplayObject> object_ = rect(10, 10, 50, 50, 0xFFFF0000);
};

TEST_F(InputTest, ListenersGetWhatThePointerDoes) {
    object_->setCursor(Cursor::Grab);
    send(NSEventType::MouseMoved, {20, 20});
    EXPECT_EQ(window_.cursor(), platform::NSCursor::Grab);
    send(NSEventType::LeftMouseDragged, {21, 20});  // no button is down
    send(NSEventType::OtherMouseDown, {20, 20}, 1);
    send(NSEventType::OtherMouseUp, {20, 20}, 1);
    send(NSEventType::ScrollWheel, {20, 20});
    EXPECT_EQ(taken(), "enter move move downright1 upright1 scroll48 ");
    send(NSEventType::MouseMoved, {100, 100});
    EXPECT_EQ(window_.cursor(), platform::NSCursor::Default);
    send(NSEventType::MouseMoved, {20, 20});
    send(NSEventType::MouseExited, {});
    EXPECT_EQ(taken(), "leave enter move leave ");
}

TEST_F(InputTest, APressThatAPointerListenerHandlesIsNoTouch) {
    send(NSEventType::LeftMouseDown, {20, 20}, 0, 1);
    send(NSEventType::LeftMouseDragged, {21, 20}, 0, 1);
    send(NSEventType::LeftMouseUp, {21, 20}, 0, 1.1);
    EXPECT_EQ(taken(), "enter downleft1 upleft1 ");
    EXPECT_EQ(touches_->events, 3);
    listener_->handles = true;
    send(NSEventType::LeftMouseDown, {21, 20}, 0, 1.2);
    send(NSEventType::LeftMouseDragged, {150, 120}, 0, 1.3);
    send(NSEventType::LeftMouseUp, {150, 120}, 0, 1.4);
    EXPECT_EQ(taken(), "downleft2 move upleft2 ") << "it keeps the pointer";
    send(NSEventType::LeftMouseDown, {21, 20}, 0, 1.5);
    send(NSEventType::MouseCancelled, {}, 0, 1.6);
    send(NSEventType::LeftMouseDown, {21, 20}, 0, 3);
    EXPECT_EQ(taken(), "downleft3 cancel downleft1 ") << "the last press is too late to count on";
    EXPECT_EQ(touches_->events, 3);
}

TEST_F(InputTest, ListenersInAScrolledContainerComeFirstAndGetPlacesInTheContent) {
    display_->removeAll();
    const auto scroll =
        DisplayFactory::createScrollContainer(graphics::ScrollContainer::Type::Vertical, false);
    scroll->setBounds({0, 0, 100, 100});
    const auto tall = rect(0, 0, 100, 1000, 0xFF00FF00);
    scroll->add(tall);
    scroll->add(object_);
    const auto outside = std::make_shared<Listener>();
    scroll->addListener<events::ScrollEvent>(outside);
    display_->add(scroll);
    window_.display();
    scroll->setContentOffset({0, 40});
    send(NSEventType::MouseMoved, {20, 15});
    EXPECT_EQ(taken(), "enter move ") << "it is 40 points higher than its frame";
    send(NSEventType::MouseMoved, {20, 25});
    EXPECT_EQ(taken(), "leave ");
    listener_->handles = true;
    send(NSEventType::ScrollWheel, {20, 15});
    EXPECT_EQ(taken(), "scroll48 ");
    EXPECT_EQ(scroll->getContentOffset().y, 40);
    EXPECT_EQ(outside->log, "");
    listener_->handles = false;
    send(NSEventType::ScrollWheel, {20, 15});
    window_.displayIfNeeded(1e6);
    EXPECT_GT(scroll->getContentOffset().y, 40);
    EXPECT_EQ(outside->log, "") << "the container has used the event";
    scroll->setContentOffset({0, 1000});
    send(NSEventType::ScrollWheel, {20, 15});
    EXPECT_EQ(outside->log, "scroll48 ");
}

TEST_F(InputTest, AWheelTakesTheKeyboardUnlessAnObjectHasIt) {
    const auto scroll =
        DisplayFactory::createScrollContainer(graphics::ScrollContainer::Type::Vertical, false);
    scroll->setBounds({100, 0, 80, 80});
    scroll->add(rect(100, 0, 80, 1000, 0xFF00FF00));
    display_->add(scroll);
    window_.display();
    display_->setFocus(object_);
    send(NSEventType::ScrollWheel, {120, 20});
    EXPECT_EQ(window_.firstResponder(), display_->getView().get());
    display_->setFocus(nullptr);
    send(NSEventType::LeftMouseDown, {190, 120});
    EXPECT_EQ(window_.firstResponder(), display_->getView().get());
    send(NSEventType::ScrollWheel, {120, 20});
    EXPECT_NE(window_.firstResponder(), display_->getView().get());
}

TEST_F(InputTest, KeysGoToTheFocusThenToTheDisplayAndItsShortcuts) {
    struct DisplayKeys final : events::DisplayKeyEvent::listener_type {
        bool operator()(const std::shared_ptr<Display>&,
                        const events::DisplayKeyEvent& event) override {
            log += event.key + " ";
            return event.key == "x";
        }
        std::string log;
    };
    const auto keys = std::make_shared<DisplayKeys>();
    display_->addListener<events::DisplayKeyEvent>(keys);
    int count = 0;
    const auto shortcut = display_->addShortcut("Ctrl+X", [&] { ++count; });
    const auto another = display_->addShortcut("Ctrl+Y", [&] { ++count; });
    display_->setFocus(object_);
    press("x", platform::kNSEventModifierControl);
    EXPECT_EQ(taken(), "+x ");
    EXPECT_EQ(count, 0) << "the display's listener has handled it";
    press("y", platform::kNSEventModifierControl);
    EXPECT_EQ(count, 1);
    listener_->handles = true;
    press("y", platform::kNSEventModifierControl);
    EXPECT_EQ(count, 1);
    EXPECT_EQ(keys->log, "x y ");
    display_->setFocus(nullptr);
    press("y", platform::kNSEventModifierControl);
    EXPECT_EQ(count, 2);
}

TEST_F(InputTest, TheFocusFollowsTheKeyboardOfControls) {
    struct FocusLog final : events::FocusChangedEvent::listener_type {
        void operator()(const std::shared_ptr<Display>&,
                        const events::FocusChangedEvent& event) override {
            log += (event.focus ? event.focus->getDescription() : "none") + " ";
        }
        std::string log;
    };
    const auto log = std::make_shared<FocusLog>();
    display_->addListener<events::FocusChangedEvent>(log);
    const auto field = DisplayFactory::createInputText(false, false, 0);
    field->setBounds({100, 10, 80, 30});
    display_->add(field);
    display_->setFocus(object_);
    send(NSEventType::LeftMouseDown, {120, 20});
    EXPECT_EQ(display_->getFocus(), field);
    send(NSEventType::LeftMouseDown, {120, 120});
    EXPECT_EQ(display_->getFocus(), nullptr) << "a press elsewhere";
    display_->setFocus(field);
    EXPECT_EQ(display_->getFocus(), field);
    press("F5");
    EXPECT_EQ(taken(), "") << "the focus is elsewhere";
    display_->setFocus(object_);
    press("F5");
    EXPECT_EQ(taken(), "+F5 ");
    send(NSEventType::LeftMouseDown, {120, 120});
    EXPECT_EQ(display_->getFocus(), object_) << "what is no control keeps the focus";
    EXPECT_EQ(log->log, object_->getDescription() + " UIInputText none UIInputText " +
                            object_->getDescription() + " ");
    EXPECT_EQ(display_->addShortcut("", [] {}), nullptr);
}

}  // namespace
}  // namespace orvane::display
