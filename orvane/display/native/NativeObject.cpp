#include "orvane/display/native/NativeObject.h"

#include "orvane/display/native/NativeLayer.h"

namespace orvane::display::native {

void NativeObject::init() {
    const std::shared_ptr<NativeLayer> layer = createLayer();
    layer->init();
    layer->addObject(shared_from_this());
    ownLayer();
    objectHandler_ = layer->getLayerHandler();
}

}  // namespace orvane::display::native
