#pragma once

#include <memory>

#include "platform/appkit/NSEvent.h"

namespace orvane::platform {

class NSView;

// Delivers the key and scroll events of one window, and remembers which view has the keyboard. It
// also knows the order in which Tab visits the views.
//
// A key goes to the first responder, and a scroll event to the view under the pointer. A view that
// does not handle an event passes it on to its superview. The views of one touchpad gesture, from
// NSEventPhase::Began to Ended, are those under the pointer when the gesture began. Turning a wheel
// quickly at one place counts as one gesture, too: content that comes to be under the pointer does
// not take it over.
//
// A touchpad gesture that begins along one axis stays on that axis, so that a list does not shift
// sideways while fingers scroll it. A diagonal gesture is free.
//
// Handlers may change the view tree.
class NSResponders {
public:
    // The view that has the keyboard; null for none.
    NSView* first() const { return first_; }
    // Calls nothing: see NSWindow::makeFirstResponder.
    void setFirst(NSView* view) { first_ = view; }
    // Must be called before the view leaves its window: it loses the keyboard, and its
    // viewDidMoveToWindow is called.
    void viewWillLeave(const NSView& view);

    // Each returns whether a view has handled the event. `target` is the first view that is
    // offered the key, `contentView` contains the target of the scroll event; both may be null.
    static bool sendKey(NSView* target, const NSEvent& event);
    bool sendScroll(NSView* contentView, const NSEvent& event);

    // The view that Tab visits after the first responder, or before it, among the visible views of
    // the window; null for none.
    NSView* nextKeyView(NSView* contentView, bool forward, bool wraps) const;
    // Offers a scroll event to a view and then to its superviews, until one of them has handled it.
    // Returns whether one has. A view that uses a part of an event calls it with its superview,
    // which may be null, and the rest.
    static bool offerScroll(NSView* view, const NSEvent& event);

private:
    NSView* scrollTarget(NSView* contentView, const NSEvent& event) const;
    CGPoint alongOneAxis(CGPoint delta);

    NSView* first_ = nullptr;
    std::weak_ptr<NSView> scrolled_;  // the innermost view of the last scroll gesture
    NSEvent lastScroll_;
    bool isTouchpadGesture_ = false;  // one is going on
    CGPoint gestureWay_;              // how far it went, until its axis was decided
};

}  // namespace orvane::platform
