#pragma once

#include <memory>
#include <set>
#include <unordered_set>

#include "orvane/display/native/NativeLayer.h"

namespace orvane::display::native {

// The base of native layers that paint objects. It records the objects that changed since the last
// validation, and at the next one turns their old and new ink into damage of the view.
class ORVANE_EXPORT DrawableLayer : public NativeLayer {
public:
    // Records `object` for repainting and marks the layer dirty.
    void markDirty(const std::shared_ptr<DisplayObject>& object) override;

    // Makes this layer and its sublayers hold their dirty objects weakly. Called when no validation
    // will release these, because the layer is not shown any more.
    void releaseDirtyObjects();

protected:
    void validateLayer() override;
    void validateContent(bool force) override;
    void onRemoveFromSuperlayer() override;

    // Adds `rect`, in screen coordinates, to the damage of the view.
    virtual void validateFrame(const Rect& rect) = 0;
    // The part of the object's ink that is in `rect`, in screen coordinates: the area to paint.
    // The zero rectangle when they do not touch.
    virtual Rect computeDirtyRect(const std::shared_ptr<DisplayObject>& object, const Rect& rect);

private:
    void damage(DisplayObject& object);

    // Held strongly until the next validation, so that the area of an object that was removed
    // meanwhile is repainted.
    std::unordered_set<std::shared_ptr<DisplayObject>> dirtyObjects_;
    // Held weakly: objects that this layer lists, one of which may own the layer, and all objects
    // while no display shows the layer. A strong reference would keep the layer and the object
    // alive forever if no validation comes. An object that is removed from the layer is marked
    // again.
    std::set<std::weak_ptr<DisplayObject>, std::owner_less<>> dirtyBorrowed_;
    // An empty set that keeps the memory of the one before.
    std::unordered_set<std::shared_ptr<DisplayObject>> damaged_;
};

}  // namespace orvane::display::native
