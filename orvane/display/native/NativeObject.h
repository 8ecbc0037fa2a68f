#pragma once

#include <memory>

#include "orvane/display/tree/DisplayObject.h"

namespace orvane::platform {
class NSView;
}

namespace orvane::display::native {

class NativeLayer;

// A display object that stands for a platform control and owns the layer of its view from the
// start. Whoever makes one calls init() once a shared_ptr holds it.
class ORVANE_EXPORT NativeObject : public virtual DisplayObject {
public:
    virtual void init();

    const std::shared_ptr<platform::NSView>& getObjectHandler() const { return objectHandler_; }

protected:
    virtual std::shared_ptr<NativeLayer> createLayer() = 0;

private:
    std::shared_ptr<platform::NSView> objectHandler_;
};

}  // namespace orvane::display::native
