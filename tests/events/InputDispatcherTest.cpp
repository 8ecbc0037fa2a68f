#include "orvane/display/events/InputDispatcher.h"

#include <gtest/gtest.h>

#include <functional>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include "orvane/display/events/Shortcuts.h"
#include "orvane/display/tree/ContainerObject.h"
#include "tests/tree/FakeLayer.h"

namespace orvane::display::events {
namespace {

using R = DisplayObject::Rect;

// Logs the events of every kind that it gets, and handles those that a test chooses.
struct Everything final : PointerEvent::listener_type,
                          ScrollEvent::listener_type,
                          KeyEvent::listener_type,
                          FocusEvent::listener_type {
    Everything(std::string name_, std::string& log_) : name(std::move(name_)), log(log_) {}

    bool operator()(const std::shared_ptr<DisplayObject>&, const PointerEvent& event) override {
        static constexpr const char* kPhases[] = {"enter", "leave", "move", "down", "up"};
        return note(kPhases[static_cast<int>(event.phase)]);
    }
    bool operator()(const std::shared_ptr<DisplayObject>&, const ScrollEvent&) override {
        return note("scroll");
    }
    bool operator()(const std::shared_ptr<DisplayObject>&, const KeyEvent& event) override {
        return note("key " + event.key);
    }
    void operator()(const std::shared_ptr<DisplayObject>&, const FocusEvent& event) override {
        note(event.hasFocus ? "focus" : "blur");
    }
    bool note(const std::string& what) {
        log += name + " " + what + ", ";
        if (then) {
            then();
        }
        return handles;
    }

    std::string name;
    std::string& log;
    bool handles = false;
    std::function<void()> then;
};

class InputDispatch : public testing::Test {
protected:
    InputDispatch() {
        group_->add(below_);
        group_->add(above_);
        objects_ = {group_};
    }
    Everything& listen(const std::shared_ptr<DisplayObject>& object, const std::string& name) {
        const auto listener = std::make_shared<Everything>(name, log_);
        object->addListener<PointerEvent>(listener);
        object->addListener<ScrollEvent>(listener);
        object->addListener<KeyEvent>(listener);
        object->addListener<FocusEvent>(listener);
        listeners_.push_back(listener);
        return *listener;
    }
    std::string pointer(double x, PointerPhase phase = PointerPhase::Move) {
        const auto button = phase == PointerPhase::Move ? PointerButton::None : PointerButton::Left;
        const bool handled = dispatcher_.pointer({phase, {x, 5}, button, 1});
        return std::exchange(log_, {}) + (handled ? "handled" : "not handled");
    }
    std::string scroll(double x) {
        const bool handled = dispatcher_.scroll({{x, 5}, {0, 48}}, nullptr);
        return std::exchange(log_, {}) + (handled ? "handled" : "not handled");
    }

    std::string log_;
    std::vector<std::shared_ptr<Everything>> listeners_;
    std::shared_ptr<Group> group_ = std::make_shared<Group>();
    // They overlap from 10 to 20.
    std::shared_ptr<Spot> below_ = std::make_shared<Spot>(R(0, 0, 20, 10));
    std::shared_ptr<Spot> above_ = std::make_shared<Spot>(R(10, 0, 20, 10));
    std::vector<std::shared_ptr<DisplayObject>> objects_;
    InputDispatcher dispatcher_{objects_};
};

TEST_F(InputDispatch, ThePointerEntersMovesAndLeavesAlongThePath) {
    listen(below_, "below");
    Everything& above = listen(above_, "above");
    EXPECT_EQ(pointer(5), "below enter, below move, not handled");
    EXPECT_EQ(pointer(15), "below leave, above enter, above move, not handled");
    listen(group_, "group");
    EXPECT_EQ(pointer(16), "above move, group move, not handled");
    above.handles = true;
    EXPECT_EQ(pointer(17), "above move, handled");
    above_->setVisible(false);
    EXPECT_EQ(pointer(17), "above leave, below enter, below move, group move, not handled");
    dispatcher_.pointerLeft();
    EXPECT_EQ(std::exchange(log_, {}), "below leave, group leave, ");
    EXPECT_EQ(pointer(50), "not handled");
}

TEST_F(InputDispatch, WhatPaintsCoversWhatIsBehindItAndAnEmptyGroupDoesNot) {
    listen(below_, "below");
    EXPECT_EQ(pointer(15), "not handled") << "above has no listener";
    const auto cover = std::make_shared<Group>();
    cover->add(std::make_shared<Spot>(R(0, 0, 2, 2)));
    cover->add(std::make_shared<Spot>(R(28, 8, 2, 2)));
    objects_.push_back(cover);
    EXPECT_EQ(pointer(5), "below enter, below move, not handled");
    listen(cover, "cover");
    EXPECT_EQ(pointer(5), "below leave, cover enter, cover move, not handled");
}

TEST_F(InputDispatch, AScrollGoesToTheTopmostObjectThatListens) {
    listen(below_, "below");
    EXPECT_EQ(scroll(15), "below scroll, not handled") << "above does not listen";
    EXPECT_EQ(scroll(25), "not handled");
    listen(group_, "group").handles = true;
    EXPECT_EQ(scroll(15), "below scroll, group scroll, handled");
    EXPECT_EQ(scroll(25), "group scroll, handled");
}

TEST_F(InputDispatch, KeysGoToTheFocusAndItsAncestors) {
    KeyEvent key;
    key.key = "a";
    EXPECT_FALSE(dispatcher_.key(key));
    Everything& above = listen(above_, "above");
    Everything& group = listen(group_, "group");
    EXPECT_TRUE(dispatcher_.setFocus(above_));
    EXPECT_FALSE(dispatcher_.setFocus(above_));
    group.handles = true;
    EXPECT_TRUE(dispatcher_.key(key));
    EXPECT_EQ(std::exchange(log_, {}), "above focus, above key a, group key a, ");
    above.then = [] { throw std::runtime_error("thrown"); };
    testing::internal::CaptureStderr();
    EXPECT_TRUE(dispatcher_.key(key)) << "the group is called all the same";
    EXPECT_NE(testing::internal::GetCapturedStderr().find("thrown"), std::string::npos);
    log_.clear();
    above.then = [&] { dispatcher_.setFocus(below_); };
    dispatcher_.setFocus(group_);
    EXPECT_EQ(log_, "above blur, ") << "its listener gave the focus to another object";
    EXPECT_EQ(dispatcher_.focus(), below_);
}

TEST_F(InputDispatch, TheCursorIsThatOfTheNearestObjectWithOne) {
    EXPECT_EQ(dispatcher_.cursor(), Cursor::Default);
    group_->setCursor(Cursor::Move);
    above_->setCursor(Cursor::Text);
    pointer(5);
    EXPECT_EQ(dispatcher_.cursor(), Cursor::Move);
    pointer(15);
    EXPECT_EQ(dispatcher_.cursor(), Cursor::Text);
    pointer(50);
    EXPECT_EQ(dispatcher_.cursor(), Cursor::Default);
}

TEST(Shortcuts, ActOnExactlyTheirCombinationWhileTheyAreHeld) {
    std::string log;
    Shortcuts shortcuts;
    std::vector<std::shared_ptr<Shortcut>> held;
    for (const char* keys : {"Ctrl+Shift+Z", "ctrl+z", "F5", "Ctrl+Z"}) {
        held.push_back(Shortcut::create(keys, [&log, keys] { log = keys; }));
        shortcuts.add(held.back());
    }
    const auto press = [&](const std::string& key, unsigned modifiers,
                           KeyPhase phase = KeyPhase::Down) {
        log.clear();
        KeyEvent event;
        event.phase = phase;
        event.key = key;
        event.modifiers = modifiers;
        return shortcuts.handle(event) ? log : "none";
    };
    EXPECT_EQ(press("z", kControl | kShift), "Ctrl+Shift+Z");
    EXPECT_EQ(press("z", kControl), "Ctrl+Z") << "the last one added";
    held.pop_back();
    EXPECT_EQ(press("z", kControl), "ctrl+z");
    EXPECT_EQ(press("F5", 0, KeyPhase::Repeat), "F5");
    EXPECT_EQ(press("F5", 0, KeyPhase::Up), "none");
    EXPECT_EQ(press("F5", kAlt), "none");
    testing::internal::CaptureStderr();
    for (const char* keys : {"", "Ctrl", "Ctrl+", "A+B", "Ctrl+A+"}) {
        EXPECT_EQ(Shortcut::create(keys, [] {}), nullptr) << keys;
    }
    EXPECT_EQ(Shortcut::create("A", nullptr), nullptr);
    const std::string lines = testing::internal::GetCapturedStderr();
    EXPECT_EQ(std::count(lines.begin(), lines.end(), '\n'), 6) << lines;
}

}  // namespace
}  // namespace orvane::display::events
