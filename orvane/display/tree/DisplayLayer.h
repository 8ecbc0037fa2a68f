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

// A node of the layer tree: one surface of the platform. It lists the objects it shows, has
// sublayers in drawing order, a cached frame (the union of both, in screen coordinates), a dirty
// state, and a count of locks that hold validation back. NativeLayer gives it a platform view.
//
// An object is on a layer as a guest, held weakly here, or as its owner, which holds the layer. A
// layer with neither objects nor sublayers leaves its superlayer by itself.
//
// All operations run on the application's thread; the lock is a deferral count and excludes nobody.
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

    // An object of this layer has changed.
    virtual void markDirty(const std::shared_ptr<DisplayObject>& object);
    Position store(Position position, const std::shared_ptr<DisplayLayer>& sublayer) override;
    Position erase(Position position) override;

    const Children& getSublayers() const { return children(); }
    std::shared_ptr<DisplayLayer> getSuperlayer() const { return getParent(); }
    // In painting order. Expired entries stay until they are taken out; skip them.
    const Objects& getObjects() const { return objects_; }

    // The display this layer is shown by; null while it is not in the rendering tree.
    const std::shared_ptr<Display>& getDisplay() const { return display_; }
    void setDisplay(const std::shared_ptr<Display>& display) { display_ = display; }

    // True when the flag is set or nothing on the layer can be seen.
    bool isHidden() const;
    void setHidden(bool hidden);

    // A wrapper around an object's layer that keeps a clip in force while the layer animates.
    void setFake(bool fake) { fake_ = fake; }
    bool isFake() const { return fake_; }
    // Whether this layer's frame takes part in the superlayer's.
    void setAffectsParentFrame(bool affects) { affectsParentFrame_ = affects; }
    bool affectsParentFrame() const { return affectsParentFrame_; }

    void addObject(const std::shared_ptr<DisplayObject>& object);
    // The object must be listed here.
    void removeObject(const std::shared_ptr<DisplayObject>& object);
    void clearObjects();

    void lockValidation() { ++validationLock_; }
    void unlockValidation();
    bool isValidationLocked() const { return validationLock_ != 0; }

    void setDirty();
    bool isDirty() const { return dirty_; }
    // Carries dirtiness up to the root; a root that is on a display validates.
    void updateState();
    // Brings the platform in step: this layer, its content, its sublayers. Nothing for a clean
    // layer unless forced.
    void validate(bool force);

    const Rect& getLayerFrame();
    // Forgets the cached frame, and those of the superlayers.
    void resetLayerFrame();
    const Rect& getValidFrame() const { return validFrame_; }

    // The object that owns this layer, when it is the only one on it.
    std::shared_ptr<DisplayObject> getOwner() const;
    // The parent of the first live object.
    std::shared_ptr<ContainerObject> getObjectsParent() const;

    // Layer coordinates have their origin at the layer frame's. Rectangles come back with
    // non-negative extents.
    Point convertPointToScreen(const Point& point);
    Point convertPointFromScreen(const Point& point);
    Rect convertRectToScreen(const Rect& rect);
    Rect convertRectFromScreen(const Rect& rect);

protected:
    friend class LayerPlacement;

    virtual Rect computeLayerFrame();
    virtual void validateLayer() = 0;
    // `force`: the frame has changed and everything on the layer is to be painted anew.
    virtual void validateContent(bool force) = 0;
    virtual void onAddToSuperlayer() {}
    virtual void onRemoveFromSuperlayer() {}
    // An object has come under this layer, or left it: listed, or inside a listed container.
    virtual void onAddObjectIntoRenderingTree(const std::shared_ptr<DisplayObject>& object);
    virtual void onRemoveObjectFromRenderingTree(const std::shared_ptr<DisplayObject>& object);

private:
    void raiseDirty();

    std::shared_ptr<Display> display_;
    Objects objects_;
    bool hidden_ = false;
    bool dirty_ = true;
    bool layerFrameDirty_ = true;
    bool fake_ = false;
    bool affectsParentFrame_ = true;
    std::uint64_t validationLock_ = 0;
    Rect layerFrame_;
    Rect validFrame_;
};

// Holds a layer's validation back for a scope. A null layer is fine.
class ValidationLock {
public:
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
