#pragma once

#include <memory>

#include "platform/appkit/NSGestureArena.h"
#include "platform/appkit/NSPointer.h"
#include "platform/appkit/NSResponders.h"

namespace orvane::platform {

class NSView;
class NSWindow;
struct NSDrop;
struct NSEvent;

// The input of one window: delivers each kind of event to the object that knows its views, and
// moves the keyboard from view to view. NSWindow forwards its functions of the same names; they are
// documented there. Handlers may change the view tree.
class NSWindowInput {
public:
    // `window` owns this object, and `contentView`, which may change at any time.
    NSWindowInput(NSWindow& window, const std::shared_ptr<NSView>& contentView)
        : window_(window), contentView_(contentView) {}

    bool sendEvent(const NSEvent& event);
    bool sendUnhandledKey(const NSEvent& event);
    bool sendDrop(const NSDrop& drop);
    NSView* firstResponder() const { return responders_.first(); }
    bool makeFirstResponder(NSView* view);
    bool selectKeyView(bool forward, bool wraps);
    // Must be called before a view leaves the window.
    void viewWillLeave(const NSView& view);
    // Takes the keyboard from a view that has been hidden, so that the user does not type into what
    // cannot be seen. Called in each display pass.
    void takeKeyboardFromHiddenView();

private:
    bool sendKey(const NSEvent& event);
    bool sendPointer(const NSEvent& event);
    // Gives the keyboard to the innermost view at the location that accepts it.
    void giveKeyboardToViewAt(CGPoint location);

    NSWindow& window_;
    const std::shared_ptr<NSView>& contentView_;
    NSGestureArena gestures_;
    NSResponders responders_;
    NSPointer pointer_;
    std::weak_ptr<NSView> dropTarget_;  // would take the drag that is over it
};

}  // namespace orvane::platform
