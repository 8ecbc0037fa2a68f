#include "orvane/display/graphics/ClipContainer.h"

#include <algorithm>

#include "orvane/display/geometry/isInRoundedRect.h"
#include "orvane/display/tree/DisplayLayer.h"
#include "orvane/display/tree/createBitmapLayer.h"

namespace orvane::display::graphics {

std::shared_ptr<DisplayLayer> ClipContainer::extractAnimationLayer() {
    const std::shared_ptr<DisplayLayer> layer = DisplayObject::extractAnimationLayer();
    const std::shared_ptr<DisplayLayer> superlayer = layer ? layer->getSuperlayer() : nullptr;
    if (!superlayer) {
        return nullptr;
    }
    if (superlayer->isFake()) {
        return superlayer;
    }

    // The lock makes one validation of the exchange. Without it, the removal alone would repaint
    // everything that the layer covered.
    const ValidationLock lock(superlayer);
    const std::uint64_t index = layer->getIndex();
    layer->removeFromParent();

    const std::shared_ptr<DisplayLayer> wrapper = createBitmapLayer();
    wrapper->setFake(true);
    wrapper->store(wrapper->getSublayers().end(), layer);

    // The wrapper takes the layer's place, so that the painting order does not change.
    const auto& siblings = superlayer->getSublayers();
    superlayer->store(siblings.begin() + static_cast<std::ptrdiff_t>(index), wrapper);
    return wrapper;
}

void ClipContainer::setCornerRadius(double radius) {
    cornerRadius_ = radius;
    invalidate(true);
}

bool ClipContainer::acceptsPointerAt(const geometry::Point<double>& location) {
    if (!(cornerRadius_ > 0)) {
        return true;
    }
    const std::shared_ptr<ContainerObject> parent = getParent();
    const geometry::Matrix toScreen = parent ? parent->getFullTransformation() : geometry::Matrix();
    return geometry::isInRoundedRect(getBounds().normalized(), cornerRadius_,
                                     toScreen.inverse().mapPoint(location));
}

geometry::Rect<double> ClipContainer::computeFrame() {
    const std::shared_ptr<ContainerObject> parent = getParent();
    return parent ? parent->applyTransformToRect(getBounds()) : getBounds();
}

}  // namespace orvane::display::graphics
