#pragma once

#include <functional>
#include <memory>

#include "orvane/display/tree/DisplayContainer.h"
#include "orvane/display/tree/DisplayObject.h"

namespace orvane::display {

class ChildFrames;

// A display object with children, drawn in their order. It is the seam between the two trees: every
// insertion and removal works out where the layers of the child's subtree belong, so that the
// layers stay in the drawing order of the objects.
class ORVANE_EXPORT ContainerObject
    : public virtual DisplayObject,
      public virtual DisplayContainer<DisplayObject, ContainerObject> {
public:
    using Position = DisplayContainer<DisplayObject, ContainerObject>::Position;

    ContainerObject();
    ~ContainerObject() override;

    const Children& getChildren() const { return children(); }

    LayerList getDescendingLayers() const override;
    // The layers that the children bring: those that hang under this container's layer, or nowhere.
    LayerList getLayersFromSubtree() const;

    // Validates the children that have no layer of their own, then this object.
    void validate(const Rect& rect) override;
    void invalidate(bool mark) override;

    void clear() override;
    // Inserts `element` before `position`. Erase it from its former parent first. An element that
    // cannot go here (null, this container, one of its ancestors) is refused with a line in the
    // log, and the position comes back.
    Position store(Position position, const std::shared_ptr<DisplayObject>& element) override;
    Position erase(Position position) override;

    // The everyday forms of store and erase: on top of the other children, and out.
    void add(const std::shared_ptr<DisplayObject>& child) { store(children().end(), child); }
    void remove(const std::shared_ptr<DisplayObject>& child) { erase(find(child)); }

    // Calls `visit` on this container, then on every descendant in pre-order, until one answers
    // true; true when one did. An empty function raises std::bad_function_call.
    bool traverse(const std::function<bool(const std::shared_ptr<DisplayObject>&)>& visit);

protected:
    // The union of the visible children's frames; the container's own transformation is in them
    // already, since frames are in screen coordinates.
    Rect computeFrame() override;

private:
    friend class DisplayObject;

    bool canStore(const std::shared_ptr<DisplayObject>& element) const;

    // Null for a container with few children.
    std::unique_ptr<ChildFrames> childFrames_;
};

}  // namespace orvane::display
