#pragma once

#include <memory>

#include "platform/appkit/NSEvent.h"

namespace orvane::platform {

class NSView;

// Delivers the pointer events of one window to views (NSView::pointerEvent), and counts clicks. A
// view gets MouseExited when the pointer was over it or a subview and is not any more.
// Handlers may change the view tree.
class NSPointer {
public:
    // Returns whether a view has handled the event. `contentView` may be null. Returns false for a
    // release of the left button whose press no view has handled: recognizers see it, too. A
    // LeftMouseDragged while the left button is up counts as MouseMoved.
    bool send(NSView* contentView, const NSEvent& event);

private:
    int countClick(const NSEvent& event);
    void hover(NSView* target, const NSEvent& event);

    // The view that handled the press of a button that is still held down.
    std::weak_ptr<NSView> captor_;
    int heldButton_ = 0;
    bool isLeftDown_ = false;
    std::weak_ptr<NSView> hovered_;  // the view under the pointer at the last event
    NSEvent lastPress_;              // its clickCount is 0 before the first press
};

}  // namespace orvane::platform
