#pragma once

#include <functional>
#include <memory>
#include <vector>

#include "orvane/display/tree/DisplayContainer.h"
#include "orvane/display/tree/DisplayObject.h"

namespace orvane::display {

class ChildFrames;

// A display object with children, which are drawn in their order, the last one on top. Every
// insertion and removal also places the layers of the child's subtree in the layer tree, so that
// the layers stay in the drawing order of the objects; LayerPlacement has the rules.
//
// Application's thread. The container owns its children.
class ORVANE_EXPORT ContainerObject
    : public virtual DisplayObject,
      public virtual DisplayContainer<DisplayObject, ContainerObject> {
public:
    using Position = DisplayContainer<DisplayObject, ContainerObject>::Position;

    ContainerObject();
    ~ContainerObject() override;

    // In drawing order. The reference is valid while the container lives.
    const Children& getChildren() const { return children(); }

    // The own layer when there is one, otherwise the layers from the subtree.
    LayerList getDescendingLayers() const override;
    // The layers that show the children, in drawing order: those that are sublayers of the layer
    // that this container draws on, and those without a superlayer.
    LayerList getLayersFromSubtree() const;

    // Validates the children that have no layer of their own, then this object.
    void validate(const Rect& rect) override;
    // Invalidates this container, then every descendant; together they cost one layer update.
    void invalidate(bool mark) override;

    // Erases all children; costs one layer update.
    void clear() override;

protected:
    // The union of the frames of the visible children. Frames are in screen coordinates, so they
    // include the container's own transformation already.
    Rect computeFrame() override;

public:
    // Inserts `child` before `position` and returns its position. A child of a container, this one
    // included, is erased there first. A child that cannot be stored here (null, this container,
    // one of its ancestors) is refused: one line is logged and `position` is returned.
    Position store(Position position, const std::shared_ptr<DisplayObject>& child) override;
    // Removes the child at `position` and returns the position after it. A child that owns its
    // layer keeps it, ready to be stored again; any other child is taken off its layer. The end
    // position erases nothing.
    Position erase(Position position) override;

    // Stores `child` on top of the other children.
    void add(const std::shared_ptr<DisplayObject>& child) { store(children().end(), child); }
    // Erases `child`; does nothing when it is null or not a child of this container.
    void remove(const std::shared_ptr<DisplayObject>& child) { erase(find(child)); }

    // Whether this is a graphics::ClipContainer, which cuts off what its children show outside its
    // bounds. Constant time, unlike a cast.
    bool clipsChildren() const { return clipsChildren_; }
    // How far a graphics::ScrollContainer has scrolled its content, in points; null for any other
    // container. Frames of descendants do not include it.
    const geometry::Point<double>* getScrollOffset() const {
        return scrolls_ ? &scrollOffset_ : nullptr;
    }

    // Whether a pointer at a place inside the frame, in screen coordinates, is over the container
    // or what is in it. True except under the rounded corners of a clip. Touches do not depend on
    // it.
    virtual bool acceptsPointerAt(const geometry::Point<double>& location);

    // Returns the children whose frames may contain a point, in screen coordinates, in drawing
    // order; borrowed. The cost depends on what is near the point if there are many children.
    std::vector<DisplayObject*> childrenAt(const geometry::Point<double>& point) const;

    // Calls `visit` on this container, then on every descendant in pre-order, until a call returns
    // true. Returns whether one did. A call may erase the object that it visits. An empty function
    // raises std::bad_function_call.
    bool traverse(const std::function<bool(const std::shared_ptr<DisplayObject>&)>& visit);

protected:
    // Called in the constructor of clip containers.
    void setClipsChildren() { clipsChildren_ = true; }
    // Makes this a container with a scroll offset, or changes it.
    void setScrollOffset(const geometry::Point<double>& offset) {
        scrolls_ = true;
        scrollOffset_ = offset;
    }

private:
    friend class DisplayObject;
    friend class FrameCache;
    friend class LayerPlacement;

    bool canStore(const std::shared_ptr<DisplayObject>& element) const;
    // Returns `position`, adjusted to the removal.
    Position takeFromFormerParent(Position position, const std::shared_ptr<DisplayObject>& element);
    std::size_t indexAfter(const DisplayObject* before) const;
    // A child has got the first layer of its subtree, or has lost the last one. The containers
    // around this one are informed as far as the same is true for them.
    void countLayeredChild(const DisplayObject& child, bool layered);
    // The index of the first child with a layer in its subtree; the number of children if there is
    // none. Constant time on average.
    std::size_t firstLayeredChild() const;
    void validateChild(DisplayObject& child, const Rect& rect);

    std::size_t layeredChildren_ = 0;        // the number of children that have layers
    mutable std::size_t plainChildren_ = 0;  // so many of the first children have none
    bool clipsChildren_ = false;
    bool scrolls_ = false;
    geometry::Point<double> scrollOffset_;
    // Null while the container has always had few children.
    std::unique_ptr<ChildFrames> childFrames_;
};

}  // namespace orvane::display
