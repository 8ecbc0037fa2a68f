#pragma once

#include <memory>

#include "orvane/display/events/DisplayEventHandler.h"
#include "orvane/display/tree/DisplayLayer.h"

namespace orvane::platform {
class NSView;
}

namespace orvane::display::native {

class NGestureRecognizer;

// A layer that is shown by a platform view, its layer handler. It synchronizes the view's frame,
// hidden flag, stacking order and clips with the trees, and receives the touches of the view. The
// clips are those of the clip containers around the objects (clipsOfLayer).
//
// The layer is used on the application's thread; it accesses views only on the main thread, through
// dispatch_ui. init() must be called before use; createLayer<T>() does.
class ORVANE_EXPORT NativeLayer : public DisplayLayer {
public:
    ~NativeLayer() override;

    // The opacity of the view without animations: that of the object that owns the layer, and of
    // the containers around it that have no layer of their own.
    double getRestingOpacity() const override { return placedOpacity_; }

    // Creates the view, and the recognizer that calls the touch functions. Blocks until the main
    // thread has done it.
    void init();

    // The view that animations of this layer change.
    std::shared_ptr<platform::NSView> getAnimatableHandler() const override;

    // The virtual functions that this class adds are declared in the order of their slots, because
    // derived classes may be built against it.

protected:
    // Creates the view of this layer. Called once, by init(), on the main thread.
    virtual std::shared_ptr<platform::NSView> createLayerHandler() = 0;

public:
    // The view of this layer; null before init().
    virtual std::shared_ptr<platform::NSView> getLayerHandler() const { return layerHandler_; }
    // The superview of the sublayers' views: the same view, unless a derived layer has its content
    // in a view inside it.
    virtual std::shared_ptr<platform::NSView> getLayerContentHandler() const {
        return getLayerHandler();
    }

protected:
    // Called after the frame of the view was set, on the main thread.
    virtual void onHandlerFrameChanged() {}

public:
    // Convert between screen coordinates and the coordinates of the view, which are the layer
    // coordinates:
    virtual Point convertPointToLayerHandler(const Point& point);
    virtual Point convertPointFromLayerHandler(const Point& point);
    // Whether init() adds a recognizer to the content view.
    virtual bool isNeedsGestureRecognizer() const { return true; }

    // The content view of the superlayer, or null.
    std::shared_ptr<platform::NSView> getSuperlayerHandler() const;

    // The steps of a gesture, at a point in view coordinates. While touch is disabled, or when the
    // layer has no object, they return Failed and call no listener. A gesture that is open when the
    // layer is destroyed is cancelled. Main thread. DisplayEventHandler describes the protocol and
    // the result:
    events::TouchEventListenerState touchBegan(const Point& point);
    events::TouchEventListenerState touchMoved(const Point& point);
    events::TouchEventListenerState touchEnded(const Point& point);
    events::TouchEventListenerState touchCancelled(const Point& point);
    // Calls the action of the listener that claimed the gesture.
    void invokeTouchHandlerAction();
    // Releases the objects of a gesture that is over.
    void releaseTouch();
    // Disables or enables the steps above. Enabled at first. Disabling cancels an open gesture.
    void setTouchDisabled(bool disabled);

protected:
    NativeLayer();

    void validateLayer() override;
    void validateContent(bool force) override;
    void onRemoveFromSuperlayer() override;

private:
    void placeHandler(platform::NSView& view);
    void updateHandlerFrame(platform::NSView& view);
    // Gives the view the clips of the containers around the objects, in the superview's
    // coordinates.
    void updateHandlerClips(platform::NSView& view);
    void placeSublayerHandlers();
    void updateHandlerOpacity(platform::NSView& view);
    void stackHandler(platform::NSView& superview);

    std::shared_ptr<platform::NSView> layerHandler_;
    std::shared_ptr<NGestureRecognizer> gestureRecognizer_;
    Point placedOrigin_;  // of the layer frame, when the sublayers' views were placed
    double placedOpacity_ = 1;
    bool touchDisabled_ = false;
    events::DisplayEventHandler eventHandler_;
};

}  // namespace orvane::display::native
