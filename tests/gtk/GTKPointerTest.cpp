#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "platform/appkit/NSCursor.h"
#include "platform/appkit/NSEvent.h"
#include "tests/gtk/TestWindow.h"

namespace orvane::tests {

namespace {

// Writes down the pointer events that it gets.
class PointerView : public platform::NSView {
public:
    bool pointerEvent(const platform::NSEvent& event) override {
        using platform::NSEventType;
        const bool shift = (event.modifierFlags & platform::kNSEventModifierShift) != 0;
        switch (event.type) {
            case NSEventType::MouseMoved:
                place = event.locationInWindow;
                break;
            case NSEventType::MouseExited:
                log += "exit ";
                break;
            case NSEventType::LeftMouseDown:
            case NSEventType::OtherMouseDown:
                log += (shift ? "shift+" : "") + std::to_string(event.buttonNumber) + "x" +
                       std::to_string(event.clickCount) + " ";
                break;
            default:
                log += "up ";
        }
        return false;
    }

    std::string log;
    platform::CGPoint place;
};

}  // namespace

TEST_F(WindowTest, ViewsGetThePointerWithoutAButtonAndOtherButtons) {
    const auto view = std::make_shared<PointerView>();
    view->setFrame({{50, 50}, {200, 100}});
    root_->addSubview(view);
    window_.show();
    desktop::xdotool("mousemove 300 300 mousemove 100 80");
    EXPECT_TRUE(desktop::runUntil([&] { return view->place == platform::CGPoint{100, 80}; }));
    desktop::xdotool("click 3 keydown Shift_L click 2 keyup Shift_L click --repeat 2 1");
    EXPECT_TRUE(desktop::runUntil([&] { return view->log.ends_with("0x2 up "); }));
    EXPECT_EQ(view->log, "1x1 up shift+2x1 up 0x1 up 0x2 up ");
    window_.window().setCursor(platform::NSCursor::None);
    EXPECT_EQ(window_.window().widget().get_cursor()->get_name(), "none");
    desktop::xdotool("mousemove 750 590");
    EXPECT_TRUE(desktop::runUntil([&] { return view->log.ends_with("exit "); }));
}

}  // namespace orvane::tests
