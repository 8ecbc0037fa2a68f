#include "platform/appkit/NSGestureRecognizer.h"

#include "platform/appkit/NSEvent.h"
#include "platform/appkit/NSView.h"

namespace orvane::platform {

NSGestureRecognizer::NSGestureRecognizer() = default;
NSGestureRecognizer::~NSGestureRecognizer() = default;

void NSGestureRecognizer::mouseDown(const NSEvent&) {}
void NSGestureRecognizer::mouseDragged(const NSEvent&) {}
void NSGestureRecognizer::mouseUp(const NSEvent&) {}
void NSGestureRecognizer::endGesture(NSGestureEndReason) {}

void NSGestureRecognizer::setState(NSGestureRecognizerState state) {
    state_ = state;
    switch (state) {
        case NSGestureRecognizerState::Began:
        case NSGestureRecognizerState::Changed:
        case NSGestureRecognizerState::Ended:
            return invokeAction();
        case NSGestureRecognizerState::Possible:
        case NSGestureRecognizerState::Cancelled:
        case NSGestureRecognizerState::Failed:
            return;
    }
}

CGPoint NSGestureRecognizer::locationInView(const NSEvent& event, const NSView& view) const {
    return view.convertPointFromWindow(event.locationInWindow);
}

}  // namespace orvane::platform
