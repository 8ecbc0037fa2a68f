#include "orvane/display/native/DrawableLayer.h"

#include <utility>

#include "orvane/display/tree/ContainerObject.h"

namespace orvane::display::native {

void DrawableLayer::markDirty(const std::shared_ptr<DisplayObject>& object) {
    if (object->getLayer().get() == this || !isShown()) {
        dirtyBorrowed_.insert(object);
    } else {
        dirtyObjects_.insert(object);
    }
    setDirty();
}

void DrawableLayer::validateLayer() {
    NativeLayer::validateLayer();
    if (getLayerFrame().isEmpty()) {
        releaseDirtyObjects();  // the content of an empty layer is not validated
    }
}

void DrawableLayer::validateContent(bool force) {
    // Releasing an object may call a destructor of the application, which may mark other objects.
    auto borrowed = std::exchange(dirtyBorrowed_, {});
    auto owned = std::move(damaged_);
    owned.swap(dirtyObjects_);
    if (force) {
        validateFrame(getLayerFrame());
    } else {
        for (const std::weak_ptr<DisplayObject>& entry : borrowed) {
            if (const std::shared_ptr<DisplayObject> object = entry.lock()) {
                damage(*object);
            }
        }
        for (const std::shared_ptr<DisplayObject>& object : owned) {
            damage(*object);
        }
    }
    owned.clear();
    damaged_ = std::move(owned);
}

void DrawableLayer::onRemoveFromSuperlayer() {
    NativeLayer::onRemoveFromSuperlayer();
    releaseDirtyObjects();
}

void DrawableLayer::releaseDirtyObjects() {
    dirtyBorrowed_.insert(dirtyObjects_.begin(), dirtyObjects_.end());
    const auto released = std::exchange(dirtyObjects_, {});
    for (const std::shared_ptr<DisplayLayer>& sublayer : getSublayers()) {
        if (const auto drawable = std::dynamic_pointer_cast<DrawableLayer>(sublayer)) {
            drawable->releaseDirtyObjects();
        }
    }
}

void DrawableLayer::damage(DisplayObject& object) {
    if (const Rect old = object.getValidInk(); !old.isEmpty()) {
        validateFrame(old);
    }
    // An object that has left the tree only has an old area.
    if (object.getParent()) {
        if (const Rect now = object.getSpreadInk(); !now.isEmpty()) {
            validateFrame(now);
        }
    }
}

auto DrawableLayer::computeDirtyRect(const std::shared_ptr<DisplayObject>& object, const Rect& rect)
    -> Rect {
    return object->getInk().intersection(rect);
}

}  // namespace orvane::display::native
