#pragma once

#include <memory>
#include <vector>

#include "orvane/display/native/DrawableLayer.h"

namespace orvane::display {
class ContainerObject;
}

namespace orvane::display::native {

// The layer that paints objects itself, through one view. A platform control lives in a view of its
// own, so painted objects in front of a control cannot share a view with those behind it: this
// layer moves each object that comes after a sublayer in drawing order to a new bitmap layer,
// stacked directly above that sublayer. The split does not merge neighbours.
class ORVANE_EXPORT BitmapLayer : public DrawableLayer {
public:
    ~BitmapLayer() override;

    Position store(Position position, const std::shared_ptr<DisplayLayer>& sublayer) override;

    // Paints what lies in `rect`, in the view's coordinates, on the current canvas. `buffer` is for
    // layers that paint into memory of their own; this one does not read it. Main thread.
    virtual void drawToBuffer(const Rect& rect, void* buffer);

protected:
    void validateLayer() override;
    void onAddObjectIntoRenderingTree(const std::shared_ptr<DisplayObject>& object) override;
    std::shared_ptr<platform::NSView> createLayerHandler() override;
    void validateFrame(const Rect& rect) override;

private:
    void validateRenderingTree();
    void validateRenderingTree(const ContainerObject& container);
    void resolveOverlapping(const std::shared_ptr<DisplayLayer>& nearest,
                            const std::shared_ptr<DisplayObject>& object);
    void updateRect(const Rect& rect);

    bool renderingTreeValid_ = false;
    std::vector<std::shared_ptr<DisplayLayer>> overlappingLayers_;
};

}  // namespace orvane::display::native
