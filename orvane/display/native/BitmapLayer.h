#pragma once

#include <memory>
#include <unordered_map>

#include "orvane/display/native/DrawableLayer.h"

namespace orvane::display {
class ContainerObject;
}

namespace orvane::display::native {

// A layer that paints its objects through one view, a BitmapView. A platform control has a view of
// its own, so painted objects in front of a control cannot share a view with those behind it.
// Therefore the layer splits: before a validation it moves each object that comes after a sublayer
// in drawing order to a new bitmap layer, directly above that sublayer. Neighbors are not merged,
// and the removal of a control does not undo a split.
class ORVANE_EXPORT BitmapLayer : public DrawableLayer {
public:
    ~BitmapLayer() override;

    // Makes the next validation check the split.
    Position store(Position position, const std::shared_ptr<DisplayLayer>& sublayer) override;

    // Paints what is in `rect`, in view coordinates, on the current canvas; see GetCurrentCanvas.
    // `buffer` is for derived layers that paint into memory of their own; this class ignores it.
    // Main thread.
    virtual void drawToBuffer(const Rect& rect, void* buffer);

protected:
    void validateLayer() override;
    void onAddObjectIntoRenderingTree(const std::shared_ptr<DisplayObject>& object) override;
    std::shared_ptr<platform::NSView> createLayerHandler() override;
    void validateFrame(const Rect& rect) override;

private:
    void validateRenderingTree();
    // Splits the children of a container that draws on this layer. Returns the last of the layers
    // from its subtree, or null. Visits no child that comes before the first one with a layer, and
    // no container without layers: almost all the others have a layer of their own already, and the
    // walk takes no longer than the walk over the sublayers of a validation.
    std::shared_ptr<DisplayLayer> splitChildren(const ContainerObject& container);
    void resolveOverlapping(const std::shared_ptr<DisplayLayer>& nearest,
                            const std::shared_ptr<DisplayObject>& object);
    void updateRect(const Rect& rect);

    bool renderingTreeValid_ = false;
    // The layers that a split created, by the object that it moved there. The keys are only
    // compared.
    std::unordered_map<const DisplayObject*, std::weak_ptr<BitmapLayer>> overlappingLayers_;
};

}  // namespace orvane::display::native
