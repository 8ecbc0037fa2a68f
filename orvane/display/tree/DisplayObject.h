#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "orvane/commons/Export.h"
#include "orvane/display/geometry/Matrix.h"
#include "orvane/display/geometry/Rect.h"
#include "orvane/display/tree/DisplayNode.h"
#include "orvane/notification/Notifier.h"

namespace orvane::display {

class AccessibilityElement;
class ContainerObject;
class DisplayLayer;

using LayerList = std::vector<std::shared_ptr<DisplayLayer>>;

// Where a search among siblings goes. Any value but Backward counts as forward.
enum class SearchDirection { Backward = 0, Forward = 1 };

// A node of the object tree: anything on screen. It holds a transformation relative to its parent,
// a cached frame, a visibility flag and its attachment to a layer. It paints nothing itself: it
// finds the layer that it lives on and tells that layer when it has changed.
//
// Frames are in root (screen) coordinates, in points. Objects are made, changed and destroyed on
// one thread, the application's; nothing here locks. No operation throws or reports: a missing
// layer or parent is answered with null, an empty list or silence.
class ORVANE_EXPORT DisplayObject : public virtual DisplayNode<DisplayObject, ContainerObject>,
                                    public virtual notification::Notifier<DisplayObject> {
public:
    using Rect = geometry::Rect<double>;

    DisplayObject();
    ~DisplayObject() override;
    DisplayObject(const DisplayObject&) = delete;
    DisplayObject& operator=(const DisplayObject&) = delete;

    virtual std::string getDescription() const { return "DisplayObject"; }

    // The layer this object draws on: its own, or the nearest ancestor's.
    virtual std::shared_ptr<DisplayLayer> getAscendingLayer() const;

    // The layers that stand for this object's subtree under the layer it draws on, in drawing
    // order.
    virtual LayerList getDescendingLayers() const;

    // Moves the object to a layer of its own and gives the layer to animate.
    virtual std::shared_ptr<DisplayLayer> extractAnimationLayer();

    // Own flag and all ancestors'.
    virtual bool isVisible() const;

    // Called on the paint path with the dirty rectangle in screen coordinates. Here it only
    // refreshes the frame and remembers it as the valid one.
    virtual void validate(const Rect& rect);

    // The object has changed: resets the cached frames upward and tells the layer. With `mark`, a
    // drawing layer records this object for repainting; without, the layer is only flagged.
    virtual void invalidate(bool mark);

    // From coordinates relative to the frame's origin to screen coordinates; the result has
    // non-negative extents.
    virtual Rect convertRectToFrame(const Rect& rect);

    virtual void onTransformChanged();

    std::uint64_t getId() const { return id_; }

    // The transformation, by composition (scale, translate, applyMatrix) or replaced whole
    // (setScale, setTranslate, setMatrix). The six numbers are in the order of Matrix's fields.
    void scale(float sx, float sy);
    void translate(float tx, float ty);
    void setScale(float sx, float sy);
    void setTranslate(float tx, float ty);
    void setMatrix(float a, float b, float c, float d, float e, float f);
    void applyMatrix(float a, float b, float c, float d, float e, float f);
    const geometry::Matrix& getTransformation() const { return transformation_; }
    // From this object's coordinates to the screen's.
    geometry::Matrix getFullTransformation() const;
    Rect applyTransformToRect(const Rect& rect) const;

    // The area on screen, computed when it is asked for after a change.
    const Rect& getFrame();
    // The frame at the last validate: what must be repainted to erase the object.
    const Rect& getValidFrame() const { return validFrame_; }
    // Forgets the frame, and those of the ancestors. Stops at the first that is forgotten already.
    void resetFrame();

    std::shared_ptr<DisplayLayer> getLayer() const { return layer_.lock(); }
    // Moving off an owned layer drops the ownership, which may destroy the layer.
    void setLayer(const std::shared_ptr<DisplayLayer>& layer);
    bool ownsLayer() const;
    void ownLayer();
    void removeFromLayer();

    // Gives this object a layer of its own, `layer` or a fresh bitmap layer, keeping its place
    // among its siblings. Gives the layer it has when it owns one already.
    std::shared_ptr<DisplayLayer> extractIntoLayer(const std::shared_ptr<DisplayLayer>& layer);

    std::shared_ptr<DisplayObject> getSibling(SearchDirection direction) const;

    // Among the sublayers of the layer this object draws on, the nearest to this object in drawing
    // order. With `ascend` the search goes on among the ancestors' siblings; it never leaves the
    // layer.
    std::shared_ptr<DisplayLayer> findNearestSublayer(SearchDirection direction, bool ascend) const;

    // The next sibling, else the next sibling of the nearest ancestor that has one. Never descends.
    std::shared_ptr<DisplayObject> findNextInPreOrderTraversal() const;

    void setVisible(bool visible);

    // Holds back and lets go the layer's updates, so that many changes cost one. Pair them while
    // the object stays attached; UpdateLock does.
    void lockUpdate();
    void unlockUpdate();

    // This object as a container, borrowed, or null when it is none. Constant time, unlike a cast.
    ContainerObject* asContainer() const { return container_; }

    std::shared_ptr<AccessibilityElement> getAccessibilityElement() const;
    std::shared_ptr<AccessibilityElement> getOrCreateAccessibilityElement();

protected:
    // The area on screen, from the object's present state.
    virtual Rect computeFrame() = 0;

    // Set by kinds whose validate does nothing for a rectangle that does not touch their frame: a
    // container then need not call it.
    void setCulledByFrame() { culledByFrame_ = true; }

    // While it lives, the children of one container need not ask all their ancestors whether they
    // can be seen. For loops over children, in which no visibility changes.
    class ParentVisibilityScope;

private:
    friend class ChildFrames;
    friend class ContainerObject;

    static std::uint64_t s_idCounter;

    std::uint64_t id_;
    bool visible_ = true;
    bool frameDirty_ = true;
    bool culledByFrame_ = false;
    std::uint32_t frameSlot_ = 0;  // the parent's ChildFrames entry
    ContainerObject* container_ = nullptr;
    std::weak_ptr<DisplayLayer> layer_;
    std::shared_ptr<DisplayLayer> ownedLayer_;
    Rect frame_;
    Rect validFrame_;
    geometry::Matrix transformation_;
    std::shared_ptr<AccessibilityElement> accessibilityElement_;
};

// Holds back the updates of an object's layer for a scope: the changes made in it cost one update.
// It holds on to the layer, so the count stays balanced when the object moves meanwhile.
class ORVANE_EXPORT UpdateLock {
public:
    explicit UpdateLock(const std::shared_ptr<DisplayObject>& object);
    ~UpdateLock();
    UpdateLock(const UpdateLock&) = delete;
    UpdateLock& operator=(const UpdateLock&) = delete;

private:
    std::shared_ptr<DisplayLayer> layer_;
};

}  // namespace orvane::display
