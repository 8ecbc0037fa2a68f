#include "platform/appkit/NSPointer.h"

#include <cmath>

#include "platform/appkit/NSView.h"
#include "platform/appkit/offerToViews.h"

namespace orvane::platform {

namespace {

// The desktops' usual limits between two presses of a double click, in seconds and points.
constexpr double kDoubleClickTime = 0.4;
constexpr double kDoubleClickDistance = 5;

bool isPress(const NSEvent& event) {
    return event.type == NSEventType::LeftMouseDown || event.type == NSEventType::OtherMouseDown;
}

bool isRelease(const NSEvent& event) {
    return event.type == NSEventType::LeftMouseUp || event.type == NSEventType::OtherMouseUp;
}

}  // namespace

int NSPointer::countClick(const NSEvent& event) {
    if (isPress(event)) {
        const double distance =
            std::hypot(event.locationInWindow.x - lastPress_.locationInWindow.x,
                       event.locationInWindow.y - lastPress_.locationInWindow.y);
        const bool continues = lastPress_.buttonNumber == event.buttonNumber &&
                               event.timestamp - lastPress_.timestamp <= kDoubleClickTime &&
                               distance <= kDoubleClickDistance;
        const int count = continues ? lastPress_.clickCount + 1 : 1;
        lastPress_ = event;
        lastPress_.clickCount = count;
    }
    return isPress(event) || isRelease(event) ? lastPress_.clickCount : 0;
}

// The pointer is over `target`, or outside the window. Reports to the views that it left.
void NSPointer::hover(NSView* target, const NSEvent& event) {
    const std::shared_ptr<NSView> before = hovered_.lock();
    if (before.get() == target) {
        return;
    }
    hovered_ = target != nullptr ? target->weak_from_this() : std::weak_ptr<NSView>();
    NSEvent exit = event;
    exit.type = NSEventType::MouseExited;
    offerToViews(before.get(), [&](NSView& view) {
        const bool isLeft = target == nullptr || !target->isDescendantOf(view);
        if (isLeft) {
            view.pointerEvent(exit);
        }
        return !isLeft;
    });
}

bool NSPointer::send(NSView* contentView, const NSEvent& event) {
    NSEvent sent = event;
    sent.clickCount = countClick(event);
    if (event.type == NSEventType::LeftMouseDragged && !isLeftDown_) {
        sent.type = NSEventType::MouseMoved;
    } else if (event.type != NSEventType::LeftMouseDragged) {
        isLeftDown_ = event.type == NSEventType::LeftMouseDown ||
                      (isLeftDown_ && event.type != NSEventType::LeftMouseUp &&
                       event.type != NSEventType::MouseCancelled);
    }
    const auto handle = [&sent](NSView& view) { return view.pointerEvent(sent); };
    if (const std::shared_ptr<NSView> captor = captor_.lock();
        captor && captor->window() != nullptr) {
        const bool ends = (isRelease(event) && event.buttonNumber == heldButton_) ||
                          event.type == NSEventType::MouseCancelled;
        if (ends) {
            captor_.reset();
        }
        captor->pointerEvent(sent);
        return true;
    }
    captor_.reset();
    switch (sent.type) {
        case NSEventType::LeftMouseDragged:
        case NSEventType::MouseCancelled:
            return false;
        case NSEventType::MouseExited:
            hover(nullptr, event);
            return true;
        default:
            break;
    }
    NSView* const target =
        contentView != nullptr ? contentView->hitTest(event.locationInWindow) : nullptr;
    const std::shared_ptr<NSView> held = target != nullptr ? target->shared_from_this() : nullptr;
    hover(target, event);
    const std::shared_ptr<NSView> handler = offerToViews(target, handle);
    if (handler && isPress(event)) {
        captor_ = handler;
        heldButton_ = event.buttonNumber;
    }
    return handler != nullptr && event.type != NSEventType::LeftMouseUp;
}

}  // namespace orvane::platform
