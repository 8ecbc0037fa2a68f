#include "orvane/display/native/DrawableLayer.h"

#include "orvane/display/ContainerObject.h"

namespace orvane::display::native {

void DrawableLayer::markDirty(const std::shared_ptr<DisplayObject>& object) {
    dirtyObjects_.insert(object);
    setDirty();
}

void DrawableLayer::validateContent(bool force) {
    if (force) {
        validateFrame(getLayerFrame());
    } else {
        for (const std::shared_ptr<DisplayObject>& object : dirtyObjects_) {
            if (const Rect& old = object->getValidFrame(); !old.isEmpty()) {
                validateFrame(old);
            }
            // One that has left the tree only has a place where it was.
            if (object->getParent()) {
                if (const Rect& now = object->getFrame(); !now.isEmpty()) {
                    validateFrame(now);
                }
            }
        }
    }
    dirtyObjects_.clear();
}

auto DrawableLayer::computeDirtyRect(const std::shared_ptr<DisplayObject>& object, const Rect& rect)
    -> Rect {
    return object->getFrame().intersection(rect);
}

}  // namespace orvane::display::native
