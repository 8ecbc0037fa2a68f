#include "orvane/display/native/DisplayView.h"

#include "orvane/display/events/InputDispatcher.h"
#include "orvane/display/native/toKeyEvent.h"
#include "platform/appkit/NSCursor.h"
#include "platform/appkit/NSDrop.h"
#include "platform/appkit/NSEvent.h"
#include "platform/appkit/NSWindow.h"

namespace orvane::display {

namespace {

using platform::NSCursor;
using platform::NSEvent;
using platform::NSEventType;

events::PointerButton toButton(const NSEvent& event) {
    using events::PointerButton;
    constexpr PointerButton kButtons[] = {PointerButton::Left, PointerButton::Right,
                                          PointerButton::Middle, PointerButton::Back,
                                          PointerButton::Forward};
    const auto number = static_cast<std::size_t>(event.buttonNumber);
    return number < std::size(kButtons) ? kButtons[number] : PointerButton::None;
}

events::PointerPhase toPhase(const NSEvent& event) {
    switch (event.type) {
        case NSEventType::LeftMouseDown:
        case NSEventType::OtherMouseDown:
            return events::PointerPhase::Down;
        case NSEventType::LeftMouseUp:
        case NSEventType::OtherMouseUp:
            return events::PointerPhase::Up;
        case NSEventType::MouseCancelled:
            return events::PointerPhase::Cancel;
        default:
            return events::PointerPhase::Move;
    }
}

NSCursor toCursor(Cursor cursor) {
    // Both lists have the same shapes in the same order, but for Inherit, which comes first.
    static_assert(static_cast<int>(Cursor::None) == static_cast<int>(NSCursor::None) + 1);
    return cursor == Cursor::Inherit ? NSCursor::Default
                                     : static_cast<NSCursor>(static_cast<int>(cursor) - 1);
}

}  // namespace

bool DisplayView::keyDown(const NSEvent& event) {
    return sendKey(event);
}

bool DisplayView::keyUp(const NSEvent& event) {
    return sendKey(event);
}

bool DisplayView::sendKey(const NSEvent& event) {
    if (input_.objects != nullptr && input_.objects->key(toKeyEvent(event))) {
        return true;
    }
    return input_.unhandledKey && input_.unhandledKey(event);
}

bool DisplayView::pointerEvent(const NSEvent& event) {
    if (input_.objects == nullptr) {
        return false;
    }
    bool handled = true;
    if (event.type == NSEventType::MouseExited) {
        input_.objects->pointerLeft();
    } else {
        events::PointerEvent sent;
        sent.phase = toPhase(event);
        sent.location = geometry::Point<double>(convertPointFromWindow(event.locationInWindow));
        sent.button =
            sent.phase == events::PointerPhase::Down || sent.phase == events::PointerPhase::Up
                ? toButton(event)
                : events::PointerButton::None;
        sent.clickCount = event.clickCount;
        sent.modifiers = event.modifierFlags;
        handled = input_.objects->pointer(sent);
    }
    if (window() != nullptr && input_.objects != nullptr) {
        window()->setCursor(toCursor(input_.objects->cursor()));
    }
    return handled;
}

bool DisplayView::scrollWheel(const NSEvent& event) {
    return scrollWithin(nullptr, event);
}

bool DisplayView::scrollWithin(const DisplayObject* container, const NSEvent& event) {
    if (input_.objects == nullptr) {
        return false;
    }
    events::ScrollEvent sent;
    sent.location = geometry::Point<double>(convertPointFromWindow(event.locationInWindow));
    sent.delta = geometry::Point<double>(event.scrollingDelta);
    sent.isPrecise = event.hasPreciseScrollingDeltas;
    sent.modifiers = event.modifierFlags;
    return input_.objects->scroll(sent, container);
}

bool DisplayView::hasFocusedObject() const {
    return input_.objects != nullptr && input_.objects->focus() != nullptr;
}

bool DisplayView::performDrop(const platform::NSDrop& drop) {
    if (input_.objects == nullptr) {
        return false;
    }
    events::DropEvent sent;
    sent.phase = drop.phase == platform::NSDropPhase::Over   ? events::DropPhase::Over
                 : drop.phase == platform::NSDropPhase::Left ? events::DropPhase::Left
                                                             : events::DropPhase::Drop;
    sent.location = geometry::Point<double>(convertPointFromWindow(drop.locationInWindow));
    sent.files = drop.files;
    sent.text = drop.text;
    return input_.objects->drop(sent);
}

void DisplayView::viewDidMoveToWindow() {
    if (input_.windowChanged) {
        input_.windowChanged();
    }
}

void DisplayView::didBecomeFirstResponder() {
    firstResponderBelowDidChange();
}

void DisplayView::firstResponderBelowDidChange() {
    if (input_.firstResponderChanged) {
        input_.firstResponderChanged();
    }
}

}  // namespace orvane::display
