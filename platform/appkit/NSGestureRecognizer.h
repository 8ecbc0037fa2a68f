#pragma once

#include <memory>

#include "orvane/commons/Export.h"
#include "platform/coregraphics/CGGeometry.h"

namespace orvane::platform {

class NSView;
struct NSEvent;

enum class NSGestureRecognizerState {
    Possible = 0,
    Began = 1,
    Changed = 2,
    Ended = 3,
    Cancelled = 4,
    Failed = 5,
};

class NSGestureRecognizer;

// Answers how recognizers of nested views give way to one another.
class ORVANE_EXPORT NSGestureRecognizerDelegate {
public:
    virtual ~NSGestureRecognizerDelegate() = default;
    // True when `other` must wait until `recognizer` has failed before it sees the gesture.
    virtual bool shouldBeRequiredToFailByGestureRecognizer(const NSGestureRecognizer& recognizer,
                                                           const NSGestureRecognizer& other) = 0;
};

// Turns the pointer events of one view, from button down to button up, into a gesture. The window
// feeds it: the recognizers of the hit view and of the views around it see each gesture, inner ones
// first; what the delegate says decides who waits for whom. Entering Began, Changed or Ended sends
// the action. Main thread only.
class ORVANE_EXPORT NSGestureRecognizer {
public:
    NSGestureRecognizer();
    virtual ~NSGestureRecognizer();

    NSView* view() const { return view_; }
    // Borrowed; it must outlive the recognizer.
    void setDelegate(NSGestureRecognizerDelegate* delegate) { delegate_ = delegate; }
    NSGestureRecognizerDelegate* delegate() const { return delegate_; }

    virtual void mouseDown(const NSEvent& event);
    virtual void mouseDragged(const NSEvent& event);
    virtual void mouseUp(const NSEvent& event);
    // The gesture is over for this recognizer though the button is not up: its view left the
    // window, or an inner recognizer claimed the gesture after this one saw its beginning.
    virtual void cancelled();
    // The action, sent on Began, Changed and Ended.
    virtual void invokeAction() {}

    NSGestureRecognizerState state() const { return state_; }
    void setState(NSGestureRecognizerState state);

    // The place of the event in a view's coordinates.
    CGPoint locationInView(const NSEvent& event, const NSView& view) const;

private:
    friend class NSView;
    friend class NSGestureArena;

    NSView* view_ = nullptr;
    NSGestureRecognizerDelegate* delegate_ = nullptr;
    NSGestureRecognizerState state_ = NSGestureRecognizerState::Possible;
};

}  // namespace orvane::platform
