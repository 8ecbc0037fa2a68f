#pragma once

#include <memory>

#include "orvane/display/tree/DisplayObject.h"

namespace orvane::platform {
class NSView;
}

namespace orvane::display::native {

class NativeLayer;

// A display object that represents a platform control. It owns the layer of the control's view from
// init() on.
class ORVANE_EXPORT NativeObject : public virtual DisplayObject {
public:
    NativeObject() { setAccessibleKind(); }

    // Creates the layer and the view. Must be called once, after a shared_ptr holds the object.
    virtual void init();

    // The view of the control; null before init().
    const std::shared_ptr<platform::NSView>& getObjectHandler() const { return objectHandler_; }

protected:
    // Creates the layer that this object is to own. init() calls NativeLayer::init() on it.
    virtual std::shared_ptr<NativeLayer> createLayer() = 0;

private:
    std::shared_ptr<platform::NSView> objectHandler_;
};

}  // namespace orvane::display::native
