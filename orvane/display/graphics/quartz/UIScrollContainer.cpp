#include "orvane/display/graphics/quartz/UIScrollContainer.h"

#include "orvane/display/native/BitmapLayer.h"

namespace orvane::display::graphics::quartz {

std::shared_ptr<native::NativeLayer> UIScrollContainer::createLayer() {
    return std::make_shared<native::BitmapLayer>();
}

}  // namespace orvane::display::graphics::quartz
