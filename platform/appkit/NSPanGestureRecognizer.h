#pragma once

#include <functional>

#include "platform/appkit/NSGestureRecognizer.h"
#include "platform/appkit/NSVelocityTracker.h"

namespace orvane::platform {

// Recognizes that the pointer drags its view: it claims the gesture when the pointer has gone a few
// points from where the button was pressed and the handler wants that direction. It waits for no
// inner recognizer, so content that only follows a gesture, such as a button, is cancelled when the
// drag begins, and content that claims the gesture first keeps it. Recognizers of views around it
// wait until it has failed. Main thread only.
class NSPanGestureRecognizer final : public NSGestureRecognizer {
public:
    // What follows a press: nothing, the wait for a distance, or a drag at once.
    enum class Start { Never, AtDistance, AtOnce };

    // All of them are in the coordinates of the view, in points; they must be set before the first
    // gesture. `began` to `ended` are called only for a gesture that was claimed.
    struct Handler {
        // The button was pressed.
        std::function<Start(CGPoint location, double time)> pressed;
        // The pointer has gone this far. Returns false to fail.
        std::function<bool(CGPoint way)> shouldBegin;
        std::function<void()> began;
        // The pointer moved by `delta` and is at `location`.
        std::function<void(CGPoint delta, CGPoint location)> moved;
        // The velocity, in points per second, is zero if the gesture was cancelled.
        std::function<void(CGPoint velocity, double time)> ended;
        // The button was released before a drag began, and no other recognizer has claimed the
        // gesture. Without this function, the recognizer fails then.
        std::function<void(CGPoint location, const NSEvent& release)> tapped = {};
    };

    // In points.
    static constexpr double kDistance = 8;

    explicit NSPanGestureRecognizer(Handler handler);

    void mouseDown(const NSEvent& event) override;
    void mouseDragged(const NSEvent& event) override;
    void mouseUp(const NSEvent& event) override;
    void endGesture(NSGestureEndReason reason) override;
    bool canWait() const override { return false; }

private:
    void moveTo(const NSEvent& event);

    Handler handler_;
    bool isDragging_ = false;
    CGPoint start_;
    CGPoint last_;
    double lastTime_ = 0;
    NSVelocityTracker tracker_;
};

}  // namespace orvane::platform
