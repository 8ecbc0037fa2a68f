#include "orvane/display/native/DrawableLayer.h"

#include "orvane/display/tree/ContainerObject.h"

namespace orvane::display::native {

void DrawableLayer::markDirty(const std::shared_ptr<DisplayObject>& object) {
    if (object->getLayer().get() == this) {
        dirtyListed_.insert(object);
    } else {
        dirtyObjects_.insert(object);
    }
    setDirty();
}

void DrawableLayer::validateContent(bool force) {
    if (force) {
        validateFrame(getLayerFrame());
    } else {
        for (const std::weak_ptr<DisplayObject>& entry : dirtyListed_) {
            if (const std::shared_ptr<DisplayObject> object = entry.lock()) {
                damage(*object);
            }
        }
        for (const std::shared_ptr<DisplayObject>& object : dirtyObjects_) {
            damage(*object);
        }
    }
    dirtyListed_.clear();
    dirtyObjects_.clear();
}

void DrawableLayer::damage(DisplayObject& object) {
    if (const Rect& old = object.getValidFrame(); !old.isEmpty()) {
        validateFrame(old);
    }
    // An object that has left the tree only has an old area.
    if (object.getParent()) {
        if (const Rect& now = object.getFrame(); !now.isEmpty()) {
            validateFrame(now);
        }
    }
}

auto DrawableLayer::computeDirtyRect(const std::shared_ptr<DisplayObject>& object, const Rect& rect)
    -> Rect {
    return object->getFrame().intersection(rect);
}

}  // namespace orvane::display::native
