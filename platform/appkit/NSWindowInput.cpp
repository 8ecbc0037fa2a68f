#include "platform/appkit/NSWindowInput.h"

#include "platform/appkit/NSControl.h"
#include "platform/appkit/NSDrop.h"
#include "platform/appkit/NSEvent.h"
#include "platform/appkit/NSView.h"
#include "platform/appkit/NSWindow.h"
#include "platform/appkit/offerToViews.h"

namespace orvane::platform {

bool NSWindowInput::sendEvent(const NSEvent& event) {
    switch (event.type) {
        case NSEventType::KeyDown:
        case NSEventType::KeyUp:
            return sendKey(event);
        case NSEventType::ScrollWheel:
            return responders_.sendScroll(contentView_.get(), event);
        default:
            return sendPointer(event);
    }
}

bool NSWindowInput::sendKey(const NSEvent& event) {
    NSView* const first = firstResponder();
    if (NSResponders::sendKey(first != nullptr ? first : contentView_.get(), event)) {
        return true;
    }
    constexpr unsigned commands =
        kNSEventModifierControl | kNSEventModifierAlt | kNSEventModifierSuper;
    return event.type == NSEventType::KeyDown && event.key == "Tab" &&
           (event.modifierFlags & commands) == 0 &&
           selectKeyView((event.modifierFlags & kNSEventModifierShift) == 0, true);
}

bool NSWindowInput::sendPointer(const NSEvent& event) {
    if (event.type == NSEventType::LeftMouseDown) {
        giveKeyboardToViewAt(event.locationInWindow);
    }
    const bool handled = pointer_.send(contentView_.get(), event);
    switch (event.type) {
        case NSEventType::LeftMouseDown:
        case NSEventType::LeftMouseDragged:
        case NSEventType::LeftMouseUp:
        case NSEventType::MouseCancelled:
            if (!handled) {
                gestures_.sendEvent(contentView_, event);
            }
            return true;
        default:
            return handled;
    }
}

bool NSWindowInput::makeFirstResponder(NSView* view) {
    NSView* const old = firstResponder();
    if (view == old) {
        return true;
    }
    if (view != nullptr && (view->window() != &window_ || !view->acceptsFirstResponder())) {
        return false;
    }
    const std::shared_ptr<NSView> next = view != nullptr ? view->shared_from_this() : nullptr;
    const std::shared_ptr<NSView> last = old != nullptr ? old->shared_from_this() : nullptr;
    responders_.setFirst(view);
    window_.didChangeFirstResponder();
    if (last) {
        last->didResignFirstResponder();
    }
    // The view that lost the keyboard may have given it to a third one.
    if (next && firstResponder() == next.get()) {
        next->didBecomeFirstResponder();
    }
    for (const std::shared_ptr<NSView>& changed : {last, next}) {
        std::shared_ptr<NSView> above = changed;
        while (above && above->superview() != nullptr) {
            above = above->superview()->shared_from_this();
            above->firstResponderBelowDidChange();
        }
    }
    return true;
}

bool NSWindowInput::selectKeyView(bool forward, bool wraps) {
    NSView* const next = responders_.nextKeyView(contentView_.get(), forward, wraps);
    if (next == nullptr) {
        return false;
    }
    const std::shared_ptr<NSView> view = next->shared_from_this();
    if (!makeFirstResponder(next)) {
        return false;
    }
    if (firstResponder() == next) {
        next->didBecomeKeyView();
    }
    return true;
}

void NSWindowInput::giveKeyboardToViewAt(CGPoint location) {
    for (NSView* view = contentView_ ? contentView_->hitTest(location) : nullptr; view != nullptr;
         view = view->superview()) {
        if (view->acceptsFirstResponder()) {
            makeFirstResponder(view);
            return;
        }
    }
}

bool NSWindowInput::sendDrop(const NSDrop& drop) {
    std::shared_ptr<NSView> target;
    if (drop.phase != NSDropPhase::Left && contentView_) {
        target = offerToViews(contentView_->hitTest(drop.locationInWindow),
                              [&drop](NSView& view) { return view.performDrop(drop); });
    }
    const std::shared_ptr<NSView> before = dropTarget_.lock();
    if (before && before != target && before->window() == &window_) {
        before->performDrop({NSDropPhase::Left, {}});
    }
    dropTarget_.reset();
    if (drop.phase == NSDropPhase::Over) {
        dropTarget_ = target;
    }
    return target != nullptr;
}

bool NSWindowInput::sendUnhandledKey(const NSEvent& event) {
    NSView* const first = firstResponder();
    if (first == nullptr) {
        return NSResponders::sendKey(contentView_.get(), event);
    }
    const auto* const control = dynamic_cast<const NSControl*>(first);
    const bool isWidgets =
        window_.showsNatively(*first) && (control == nullptr || !control->takesKeysOfWidget());
    return NSResponders::sendKey(isWidgets ? first->superview() : first, event);
}

void NSWindowInput::takeKeyboardFromHiddenView() {
    if (const NSView* const first = firstResponder();
        first != nullptr && first->isHiddenOrHasHiddenAncestor()) {
        makeFirstResponder(nullptr);
    }
}

void NSWindowInput::viewWillLeave(const NSView& view) {
    gestures_.viewWillLeave(view);
    responders_.viewWillLeave(view);
}

}  // namespace orvane::platform
