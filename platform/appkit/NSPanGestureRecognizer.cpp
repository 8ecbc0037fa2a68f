#include "platform/appkit/NSPanGestureRecognizer.h"

#include <cmath>
#include <utility>

#include "platform/appkit/NSEvent.h"
#include "platform/appkit/NSView.h"

namespace orvane::platform {

namespace {

class PanDelegate final : public NSGestureRecognizerDelegate {
public:
    bool shouldBeRequiredToFailByGestureRecognizer(const NSGestureRecognizer&,
                                                   const NSGestureRecognizer&) override {
        return true;
    }
};

}  // namespace

NSPanGestureRecognizer::NSPanGestureRecognizer(Handler handler) : handler_(std::move(handler)) {
    static PanDelegate sharedDelegate;
    setDelegate(&sharedDelegate);
}

void NSPanGestureRecognizer::mouseDown(const NSEvent& event) {
    tracker_.reset();
    if (view() == nullptr) {
        return setState(NSGestureRecognizerState::Failed);
    }
    start_ = last_ = locationInView(event, *view());
    lastTime_ = event.timestamp;
    tracker_.add({}, event.timestamp);
    switch (handler_.pressed(start_, event.timestamp)) {
        case Start::Never:
            return setState(NSGestureRecognizerState::Failed);
        case Start::AtDistance:
            return;
        case Start::AtOnce:
            isDragging_ = true;
            handler_.began();
            return setState(NSGestureRecognizerState::Began);
    }
}

void NSPanGestureRecognizer::mouseDragged(const NSEvent& event) {
    if (view() == nullptr) {
        return setState(NSGestureRecognizerState::Failed);
    }
    if (isDragging_) {
        moveTo(event);
        return setState(NSGestureRecognizerState::Changed);
    }
    const CGPoint location = locationInView(event, *view());
    const CGPoint way{location.x - start_.x, location.y - start_.y};
    if (std::hypot(way.x, way.y) < kDistance) {
        return;
    }
    if (!handler_.shouldBegin(way)) {
        return setState(NSGestureRecognizerState::Failed);
    }
    isDragging_ = true;
    handler_.began();
    setState(NSGestureRecognizerState::Began);
    if (isDragging_ && view() != nullptr) {
        moveTo(event);
    }
}

void NSPanGestureRecognizer::mouseUp(const NSEvent& event) {
    if (view() == nullptr || (!isDragging_ && !handler_.tapped)) {
        return setState(NSGestureRecognizerState::Failed);
    }
    if (isDragging_) {
        moveTo(event);
    } else {
        handler_.tapped(locationInView(event, *view()), event);
    }
    setState(NSGestureRecognizerState::Ended);
}

void NSPanGestureRecognizer::moveTo(const NSEvent& event) {
    const CGPoint location = locationInView(event, *view());
    const CGPoint delta{location.x - last_.x, location.y - last_.y};
    last_ = location;
    lastTime_ = event.timestamp;
    // The release is usually reported where the pointer was already; it must not count as a rest.
    if (delta.x != 0 || delta.y != 0) {
        tracker_.add(delta, event.timestamp);
        handler_.moved(delta, location);
    }
}

void NSPanGestureRecognizer::endGesture(NSGestureEndReason reason) {
    if (std::exchange(isDragging_, false)) {
        handler_.ended(
            reason == NSGestureEndReason::Ended ? tracker_.velocity(lastTime_) : CGPoint{},
            lastTime_);
    }
}

}  // namespace orvane::platform
