#include "orvane/display/native/NGestureRecognizer.h"

#include "orvane/display/native/NativeLayer.h"
#include "platform/appkit/NSEvent.h"
#include "platform/appkit/NSView.h"

namespace orvane::display::native {

namespace {

class NGestureRecognizerDelegate final : public platform::NSGestureRecognizerDelegate {
public:
    bool shouldBeRequiredToFailByGestureRecognizer(
        const platform::NSGestureRecognizer& recognizer,
        const platform::NSGestureRecognizer& other) override {
        return recognizer.view() != nullptr && other.view() != nullptr &&
               recognizer.view()->isDescendantOf(*other.view());
    }
};

}  // namespace

platform::NSGestureRecognizerDelegate& NGestureRecognizer::sharedDelegate() {
    static NGestureRecognizerDelegate delegate;
    return delegate;
}

geometry::Point<double> NGestureRecognizer::getContentHitLocation(
    const platform::NSEvent& event) const {
    return view() != nullptr ? geometry::Point<double>(locationInView(event, *view()))
                             : lastLocation_;
}

void NGestureRecognizer::mouseDown(const platform::NSEvent& event) {
    lastLocation_ = getContentHitLocation(event);
    updateState(layer_ != nullptr ? layer_->touchBegan(lastLocation_) : State::Failed);
}

void NGestureRecognizer::mouseDragged(const platform::NSEvent& event) {
    lastLocation_ = getContentHitLocation(event);
    updateState(layer_ != nullptr ? layer_->touchMoved(lastLocation_) : State::Failed);
}

void NGestureRecognizer::mouseUp(const platform::NSEvent& event) {
    lastLocation_ = getContentHitLocation(event);
    updateState(layer_ != nullptr ? layer_->touchEnded(lastLocation_) : State::Failed);
}

void NGestureRecognizer::endGesture(platform::NSGestureEndReason reason) {
    if (layer_ != nullptr && reason == platform::NSGestureEndReason::Cancelled) {
        layer_->touchCancelled(lastLocation_);
    }
    // A listener may have destroyed the layer.
    if (layer_ != nullptr) {
        layer_->releaseTouch();
    }
}

void NGestureRecognizer::invokeAction() {
    if (layer_ != nullptr) {
        layer_->invokeTouchHandlerAction();
    }
}

void NGestureRecognizer::updateState(State state) {
    using PlatformState = platform::NSGestureRecognizerState;
    switch (state) {
        case State::Possible:
            return setState(PlatformState::Possible);
        case State::Began:
            return setState(PlatformState::Began);
        case State::Changed:
            return setState(PlatformState::Changed);
        case State::Ended:
            return setState(PlatformState::Ended);
        case State::Failed:
            return setState(PlatformState::Failed);
    }
    // Any other value leaves the state unchanged.
}

}  // namespace orvane::display::native
