#include "orvane/display/native/NMapLayer.h"

#include "orvane/display/geometry/rounding.h"
#include "orvane/display/native/BitmapView.h"
#include "orvane/display/tree/DisplayObject.h"
#include "orvane/thread/dispatch.h"
#include "platform/map/NSMapView.h"

namespace orvane::display::native {

NMapLayer::~NMapLayer() {
    dispatch_ui([this] {
        if (const auto view = std::dynamic_pointer_cast<BitmapView>(content_)) {
            view->setOrvaneLayer(nullptr);
        }
        // Others may still hold the view.
        if (map_) {
            map_->setHandlers({});
        }
        map_.reset();
        content_.reset();
    });
}

std::shared_ptr<platform::NSView> NMapLayer::createLayerHandler() {
    content_ = BitmapLayer::createLayerHandler();
    map_ = platform::NSMapView::create();
    map_->setContentView(content_);
    return map_;
}

auto NMapLayer::computeLayerFrame() -> Rect {
    const std::shared_ptr<DisplayObject> owner = getOwner();
    return owner ? owner->getFrame().cutToReach() : BitmapLayer::computeLayerFrame();
}

void NMapLayer::updateSize() {
    const Rect frame = geometry::toInt(getLayerFrame());
    map_->setFrame({map_->frame().origin, {frame.width, frame.height}});
}

void NMapLayer::validateLayer() {
    const std::shared_ptr<DisplayLayer> self = as<DisplayLayer>();
    if (map_ && !isHidden()) {
        dispatch_ui([this] {
            updateSize();
            placed_();
        });
    }
    BitmapLayer::validateLayer();
}

}  // namespace orvane::display::native
