#pragma once

#include <memory>
#include <set>
#include <unordered_set>

#include "orvane/display/native/NativeLayer.h"

namespace orvane::display::native {

// A native layer that paints objects. It keeps the set of those that changed since the last
// validation and turns it into dirty rectangles.
class ORVANE_EXPORT DrawableLayer : public NativeLayer {
public:
    void markDirty(const std::shared_ptr<DisplayObject>& object) override;

protected:
    void validateContent(bool force) override;

    // An area to be painted anew, in screen coordinates.
    virtual void validateFrame(const Rect& rect) = 0;
    // What of an object's frame lies in `rect`, both in screen coordinates: zero when they do not
    // touch.
    virtual Rect computeDirtyRect(const std::shared_ptr<DisplayObject>& object, const Rect& rect);

private:
    void damage(DisplayObject& object);

    // Strong until the next validation, so that an object removed meanwhile is still painted away.
    std::unordered_set<std::shared_ptr<DisplayObject>> dirtyObjects_;
    // Those that this layer lists. One of them may own the layer: a strong hold would keep both
    // alive for ever when no validation comes. One that is taken off the list is marked again.
    std::set<std::weak_ptr<DisplayObject>, std::owner_less<>> dirtyListed_;
};

}  // namespace orvane::display::native
