#pragma once

#include "orvane/display/events/TouchEvent.h"
#include "platform/appkit/NSGestureRecognizer.h"

namespace orvane::display::native {

class NativeLayer;

// The recognizer of a native layer's view: it calls the layer's touch functions for the pointer
// events of the view, and takes the state that they return. Main thread.
class NGestureRecognizer final : public platform::NSGestureRecognizer {
public:
    // The layer is borrowed; its destructor sets null. Without a layer every touch fails.
    void setLayer(NativeLayer* layer) { layer_ = layer; }

    void mouseDown(const platform::NSEvent& event) override;
    void mouseDragged(const platform::NSEvent& event) override;
    void mouseUp(const platform::NSEvent& event) override;
    // Calls the layer's touchCancelled if the gesture is cancelled, and releases the objects of the
    // gesture. One of them may own the layer, and holding it would keep both alive forever.
    void endGesture(platform::NSGestureEndReason reason) override;
    void invokeAction() override;

    // The delegate of all these recognizers. It gives the recognizer of an inner view precedence
    // over the recognizer of a view around it.
    static platform::NSGestureRecognizerDelegate& sharedDelegate();

private:
    using State = events::TouchEventListenerState;

    geometry::Point<double> getContentHitLocation(const platform::NSEvent& event) const;
    void updateState(State state);

    NativeLayer* layer_ = nullptr;
    geometry::Point<double> lastLocation_;
};

}  // namespace orvane::display::native
