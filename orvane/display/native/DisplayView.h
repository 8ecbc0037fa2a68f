#pragma once

#include <functional>
#include <utility>

#include "platform/appkit/NSView.h"

namespace orvane::display {

class DisplayObject;

namespace events {
class InputDispatcher;
}

// The root view of a display. Its top left corner is the origin of screen coordinates. It passes
// the keys, pointer events and scroll events that no view in it has handled on to the listeners of
// objects. A press gives it the keyboard, unless something in it takes the keyboard. Main thread.
class ORVANE_EXPORT DisplayView final : public platform::NSView {
public:
    // Where its events go.
    struct InputHandler {
        // Borrowed; finds the listeners of objects.
        events::InputDispatcher* objects = nullptr;
        // Gets a key that no object has handled, and returns whether it handles it.
        std::function<bool(const platform::NSEvent&)> unhandledKey;
        // This view, or one below it, got the keyboard or lost it.
        std::function<void()> firstResponderChanged;
        // This view is in another window, or in none.
        std::function<void()> windowChanged;
    };

    // Without a handler no event is handled.
    void setInputHandler(InputHandler handler) { input_ = std::move(handler); }

    bool isFlipped() const override { return true; }
    bool acceptsFirstResponder() const override { return true; }
    bool keyDown(const platform::NSEvent& event) override;
    bool keyUp(const platform::NSEvent& event) override;
    bool pointerEvent(const platform::NSEvent& event) override;
    bool scrollWheel(const platform::NSEvent& event) override;
    // Passes a scroll event on to the listeners in a scroll container (InputDispatcher::scroll).
    // Its scroll view calls this before it uses the event itself.
    bool scrollWithin(const DisplayObject* container, const platform::NSEvent& event);
    // Whether an object that paints has the keyboard while this view has it.
    bool hasFocusedObject() const;
    bool performDrop(const platform::NSDrop& drop) override;
    void viewDidMoveToWindow() override;
    void didBecomeFirstResponder() override;
    void firstResponderBelowDidChange() override;

private:
    bool sendKey(const platform::NSEvent& event);

    InputHandler input_;
};

}  // namespace orvane::display
