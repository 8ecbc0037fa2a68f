#pragma once

#include "orvane/display/events/TouchEvent.h"
#include "platform/appkit/NSGestureRecognizer.h"

namespace orvane::display::native {

class NativeLayer;

// Turns the pointer events of a layer's view into the touch entries of the layer, and the
// listeners' answer into the recognizer's own state. Main thread.
class NGestureRecognizer final : public platform::NSGestureRecognizer {
public:
    // Borrowed; the layer clears it at its end.
    void setLayer(NativeLayer* layer) { layer_ = layer; }

    void mouseDown(const platform::NSEvent& event) override;
    void mouseDragged(const platform::NSEvent& event) override;
    void mouseUp(const platform::NSEvent& event) override;
    void cancelled() override;
    void invokeAction() override;

    // An inner view's recognizer goes before that of a view around it.
    static platform::NSGestureRecognizerDelegate& sharedDelegate();

private:
    using State = events::TouchEventListenerState;

    geometry::Point<double> getContentHitLocation(const platform::NSEvent& event) const;
    void updateState(State state);
    // Those that the gesture held may own the layer, and so would keep it for ever.
    void releaseTouch();

    NativeLayer* layer_ = nullptr;
    geometry::Point<double> lastLocation_;
};

}  // namespace orvane::display::native
