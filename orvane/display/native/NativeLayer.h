#pragma once

#include <memory>

#include "orvane/display/events/DisplayEventHandler.h"
#include "orvane/display/tree/DisplayLayer.h"

namespace orvane::platform {
class NSView;
}

namespace orvane::display::native {

class NGestureRecognizer;

// A layer backed by a platform view, its layer handler. It keeps the view's frame, hidden state and
// stacking in step with the layer tree, and is where touches come in.
//
// The layer lives on the application's thread; views are touched only on the main thread, through
// dispatch_ui. Call init() before use: createLayer<T>() does.
class ORVANE_EXPORT NativeLayer : public DisplayLayer {
public:
    ~NativeLayer() override;

    // Makes the view, and the recognizer that feeds the touch entries. Needs a working main queue.
    void init();

    std::shared_ptr<platform::NSView> getAnimatableHandler() const override;
    virtual std::shared_ptr<platform::NSView> getLayerHandler() const { return layerHandler_; }
    // Where the sublayers' views go: the same view, unless the content sits inside a scrolling or
    // clipping one.
    virtual std::shared_ptr<platform::NSView> getLayerContentHandler() const {
        return getLayerHandler();
    }
    // The content view of the superlayer, or null.
    std::shared_ptr<platform::NSView> getSuperlayerHandler() const;

    // Handler coordinates are layer coordinates, and objects live in screen coordinates: "to the
    // handler" is "from the screen".
    virtual Point convertPointToLayerHandler(const Point& point);
    virtual Point convertPointFromLayerHandler(const Point& point);

    // The touch entries, in handler coordinates. While touch is disabled, or nothing is on the
    // layer, they answer Failed and no listener is reached.
    events::TouchEventListenerState touchBegan(const Point& point);
    events::TouchEventListenerState touchMoved(const Point& point);
    events::TouchEventListenerState touchEnded(const Point& point);
    events::TouchEventListenerState touchCancelled(const Point& point);
    void invokeTouchHandlerAction();
    // The gesture is over; its objects are held no longer.
    void releaseTouch();
    void setTouchDisabled(bool disabled) { touchDisabled_ = disabled; }

    virtual bool isNeedsGestureRecognizer() const { return true; }

protected:
    NativeLayer();

    void validateLayer() override;
    void validateContent(bool force) override;
    void onRemoveFromSuperlayer() override;

    // Main thread.
    virtual std::shared_ptr<platform::NSView> createLayerHandler() = 0;
    // The view's frame has been set. Main thread.
    virtual void onHandlerFrameChanged() {}

private:
    void placeHandler(platform::NSView& view);
    void stackHandler(platform::NSView& superview);

    std::shared_ptr<platform::NSView> layerHandler_;
    std::shared_ptr<NGestureRecognizer> gestureRecognizer_;
    bool touchDisabled_ = false;
    events::DisplayEventHandler eventHandler_;
};

}  // namespace orvane::display::native
