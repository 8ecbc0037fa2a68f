#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "orvane/commons/Export.h"
#include "orvane/display/animation/Animatable.h"
#include "orvane/display/geometry/Point.h"
#include "orvane/display/geometry/Rect.h"
#include "orvane/display/tree/DisplayContainer.h"

namespace orvane::display {

class ContainerObject;
class Display;
class DisplayObject;

// A node of the layer tree: one surface of the platform. A layer lists the objects that it shows
// and has sublayers in drawing order, a cached frame (the union of the frames of both, in screen
// coordinates), a dirty flag, and a lock count that defers validation. NativeLayer binds it to a
// platform view.
//
// An object is on a layer either as a guest, which the layer holds weakly, or as its owner, which
// holds the layer. A layer that loses its last object and sublayer removes itself from its
// superlayer.
//
// A change marks the layer dirty and, unless the layer is locked, its superlayers up to the root. A
// root layer that is shown by a display then validates: it synchronizes the platform with the dirty
// layers. All operations run on the application's thread. The lock count excludes no other thread.
class ORVANE_EXPORT DisplayLayer : public animation::Animatable,
                                   public virtual DisplayContainer<DisplayLayer, DisplayLayer> {
public:
    using Rect = geometry::Rect<double>;
    using Point = geometry::Point<double>;
    using Objects = std::vector<std::weak_ptr<DisplayObject>>;
    using Position = DisplayContainer<DisplayLayer, DisplayLayer>::Position;

    DisplayLayer();
    ~DisplayLayer() override;
    DisplayLayer(const DisplayLayer&) = delete;
    DisplayLayer& operator=(const DisplayLayer&) = delete;

    // `object`, which draws on this layer, has changed: marks the layer dirty. Drawing layers also
    // record the object for repainting.
    virtual void markDirty(const std::shared_ptr<DisplayObject>& object);
    // Inserts `sublayer` before `position`, passes this layer's display on to it, and marks this
    // layer dirty. Returns the position of the sublayer. A layer that is a sublayer already keeps
    // its place; one of another layer is erased there first. A layer that cannot be stored here
    // (null, this layer, one of its superlayers) is refused: one line is logged and `position` is
    // returned.
    Position store(Position position, const std::shared_ptr<DisplayLayer>& sublayer) override;
    // Removes the sublayer at `position`, which becomes dirty, so that it validates when it is
    // stored again. Returns the position after it. A layer that this leaves without objects and
    // sublayers removes itself from its superlayer.
    Position erase(Position position) override;

    // In drawing order, the last one on top.
    const Children& getSublayers() const { return children(); }
    // Null for a root layer.
    std::shared_ptr<DisplayLayer> getSuperlayer() const { return getParent(); }
    // The objects listed on this layer, in painting order. Entries of destroyed objects stay in the
    // list for a while: skip them.
    const Objects& getObjects() const { return objects_; }

    // The display that shows this layer; null while no display does. Display::attachLayer sets it
    // on a root layer, store and erase on a sublayer.
    const std::shared_ptr<Display>& getDisplay() const { return display_; }
    void setDisplay(const std::shared_ptr<Display>& display) { display_ = display; }

    // True when a display shows the root of this layer, so that changes lead to validation.
    bool isShown() const;

    // True when the layer's own flag is set, or when none of its objects and sublayers is visible.
    bool isHidden() const;
    // Sets the layer's own flag.
    void setHidden(bool hidden);

    // Whether this layer is a wrapper around the layer of a clip container, which keeps the clip in
    // force while the wrapped layer is animated. ClipContainer::extractAnimationLayer creates it.
    void setFake(bool fake) { fake_ = fake; }
    bool isFake() const { return fake_; }
    // Whether this layer's frame is part of the superlayer's frame. True unless set otherwise.
    void setAffectsParentFrame(bool affects) { affectsParentFrame_ = affects; }
    bool affectsParentFrame() const { return affectsParentFrame_; }

    // Lists `object` on this layer and makes the layers of its subtree sublayers of this layer. An
    // object of this layer stays as it is; an object of another layer is removed from that first.
    // Null is refused with a line in the log.
    void addObject(const std::shared_ptr<DisplayObject>& object);
    // Takes `object` off this layer, together with the layers of its subtree. A layer that this
    // leaves empty removes itself from its superlayer. Does nothing when it is not listed here.
    void removeObject(const std::shared_ptr<DisplayObject>& object);
    // Removes all objects; costs one layer update.
    void clearObjects();

    // Defers the updates of this layer until every lockValidation has been paired with an
    // unlockValidation; ValidationLock pairs them. Unlocking an unlocked layer does nothing.
    void lockValidation() { ++validationLock_; }
    void unlockValidation();
    // Whether an unlockValidation is missing.
    bool isValidationLocked() const { return validationLock_ != 0; }

    // Marks the layer dirty without recording an object.
    void setDirty();
    // True when the layer needs validation.
    bool isDirty() const { return dirty_; }
    // Marks the superlayers of a dirty, unlocked layer dirty, up to the root, and validates a root
    // that is shown by a display.
    void updateState();
    // Synchronizes the platform with this layer, its content and its sublayers. Does nothing for a
    // clean layer unless `force` is set.
    void validate(bool force);

    // The union of the frames of the objects and of those sublayers that affect it, in screen
    // coordinates, in points. Computed on demand.
    const Rect& getLayerFrame();
    // Resets the cached frames of this layer and its superlayers. The superlayers are included
    // because a dirty superlayer is not marked again: it would keep a frame that it has computed
    // since it became dirty.
    void resetLayerFrame();
    // The layer frame at the last validation.
    const Rect& getValidFrame() const { return validFrame_; }

    // The object that owns this layer, if it is the only one listed; otherwise null.
    std::shared_ptr<DisplayObject> getOwner() const;
    // The parent of the first live object listed, or null.
    std::shared_ptr<ContainerObject> getObjectsParent() const;

    // Convert between screen coordinates and layer coordinates, whose origin is the origin of the
    // layer frame. A resulting rectangle has a non-negative width and height:
    Point convertPointToScreen(const Point& point);
    Point convertPointFromScreen(const Point& point);
    Rect convertRectToScreen(const Rect& rect);
    Rect convertRectFromScreen(const Rect& rect);

protected:
    friend class DisplayObject;
    friend class FrameCache;
    friend class LayerPlacement;

    // Computes the frame that getLayerFrame caches.
    virtual Rect computeLayerFrame();
    // Synchronizes the platform's side of this layer itself: its place, stacking order, visibility.
    virtual void validateLayer() = 0;
    // Synchronizes what the layer shows. With `force` the layer frame has changed and everything on
    // the layer must be repainted.
    virtual void validateContent(bool force) = 0;
    // Called when this layer has entered or left the sublayers of another layer:
    virtual void onAddToSuperlayer() {}
    virtual void onRemoveFromSuperlayer() {}
    // Called when an object has started or stopped drawing on this layer, either listed or inside a
    // listed container:
    virtual void onAddObjectIntoRenderingTree(const std::shared_ptr<DisplayObject>& object);
    virtual void onRemoveObjectFromRenderingTree(const std::shared_ptr<DisplayObject>& object);

private:
    bool canStore(const std::shared_ptr<DisplayLayer>& sublayer);
    Objects::const_iterator entryOf(const std::shared_ptr<DisplayObject>& object) const;
    void listObject(const std::shared_ptr<DisplayObject>& object);
    void forgetSublayers();
    void raiseDirty();
    // The objects on this layer have new places: marks the layer dirty and forces its content.
    void resetContent();

    std::shared_ptr<Display> display_;
    Objects objects_;
    bool objectsSorted_ = true;  // no index has changed and no entry expired since the last sort
    bool hidden_ = false;
    bool dirty_ = true;
    bool layerFrameDirty_ = true;
    bool contentReset_ = false;  // the next validation forces the content
    bool fake_ = false;
    bool affectsParentFrame_ = true;
    std::uint64_t validationLock_ = 0;
    Rect layerFrame_;
    Rect validFrame_;
};

// Defers the updates of a layer for a scope. It holds the layer; the layer may be null.
class ValidationLock {
public:
    // Locks the layer; the destructor unlocks it.
    explicit ValidationLock(std::shared_ptr<DisplayLayer> layer) : layer_(std::move(layer)) {
        if (layer_) {
            layer_->lockValidation();
        }
    }
    ~ValidationLock() {
        if (layer_) {
            layer_->unlockValidation();
        }
    }
    ValidationLock(const ValidationLock&) = delete;
    ValidationLock& operator=(const ValidationLock&) = delete;

private:
    std::shared_ptr<DisplayLayer> layer_;
};

}  // namespace orvane::display
