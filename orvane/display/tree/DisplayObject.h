#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "orvane/commons/Export.h"
#include "orvane/display/geometry/Matrix.h"
#include "orvane/display/geometry/Rect.h"
#include "orvane/display/geometry/Size.h"
#include "orvane/display/tree/Cursor.h"
#include "orvane/display/tree/DisplayNode.h"
#include "orvane/notification/Notifier.h"

namespace orvane::display {

class AccessibilityElement;
class ContainerObject;
class DisplayLayer;
struct Effects;

// Layers in drawing order.
using LayerList = std::vector<std::shared_ptr<DisplayLayer>>;

// The direction of a search among siblings. Any value but Backward counts as forward.
enum class SearchDirection { Backward = 0, Forward = 1 };

// A node of the object tree: anything on screen. It holds a transformation relative to its parent,
// a cached frame, a visibility flag and its attachment to a layer. It paints nothing: it finds the
// layer that it draws on and notifies that layer of its changes. Applications create the concrete
// kinds through DisplayFactory and show them by adding them to a container or to the display.
//
// Frames are in screen coordinates, in points. Objects are created, changed and destroyed on one
// thread, the application's; nothing here is synchronized. No operation throws or reports a
// failure: without a layer or a parent it returns null or an empty list, or does nothing.
class ORVANE_EXPORT DisplayObject : public virtual DisplayNode<DisplayObject, ContainerObject>,
                                    public virtual notification::Notifier<DisplayObject> {
public:
    using Rect = geometry::Rect<double>;

    DisplayObject();
    ~DisplayObject() override;
    DisplayObject(const DisplayObject&) = delete;
    DisplayObject& operator=(const DisplayObject&) = delete;

    // The name of the object's kind, for logs.
    virtual std::string getDescription() const { return "DisplayObject"; }

    // The layer that this object draws on: its own, or that of the nearest ancestor that has one;
    // null when neither exists.
    virtual std::shared_ptr<DisplayLayer> getAscendingLayer() const;

    // The layers that show this object's subtree, as far as they are direct sublayers of the layer
    // that the object draws on or have no superlayer: the own layer alone when there is one.
    virtual LayerList getDescendingLayers() const;

    // Moves the object to a layer of its own, if it does not own one yet, and returns the layer to
    // animate. Null when there is none to animate.
    virtual std::shared_ptr<DisplayLayer> extractAnimationLayer();

    // True when this object and all its ancestors have their visibility flag set.
    virtual bool isVisible() const;

    // Paints the part of the object that is in `rect`, in screen coordinates, on the current
    // canvas. Called by the layer or the container in a paint pass, on the main thread. This base
    // only records the frame as the valid frame.
    virtual void validate(const Rect& rect);

    // Must be called after every change of what the object shows: resets the frames of the object
    // and its ancestors, and marks the layer that it draws on dirty. With `mark`, a drawing layer
    // also records this object for repainting.
    virtual void invalidate(bool mark);

    // Converts `rect` from coordinates relative to the frame's origin to screen coordinates. The
    // result has a non-negative width and height.
    virtual Rect convertRectToFrame(const Rect& rect);

    // Called after every change of the transformation.
    virtual void onTransformChanged();

    // Unique within the process.
    std::uint64_t getId() const { return id_; }

    // Change the transformation: scale, translate and applyMatrix compose with the present one (the
    // argument is applied first), setMatrix replaces it, and setScale and setTranslate call the
    // functions of Matrix with these names. The six numbers are in the order of Matrix's fields:
    void scale(float sx, float sy);
    void translate(float tx, float ty);
    void setScale(float sx, float sy);
    void setTranslate(float tx, float ty);
    void setMatrix(float a, float b, float c, float d, float e, float f);
    void applyMatrix(float a, float b, float c, float d, float e, float f);
    // From this object's coordinates to its parent's.
    const geometry::Matrix& getTransformation() const { return transformation_; }
    // From this object's coordinates to screen coordinates.
    geometry::Matrix getFullTransformation() const;
    // The bounding box, in screen coordinates, of a rectangle in this object's coordinates.
    Rect applyTransformToRect(const Rect& rect) const;

    // The area on screen, in screen coordinates. Computed on demand after a change.
    const Rect& getFrame();
    // Where the visible part of the object is on the screen: the frame, moved by the offsets of the
    // scroll containers around the object and cut off at their frames. Without one, the frame.
    Rect getFrameOnScreen();
    // The innermost container around the object that scrolls; null for none.
    std::shared_ptr<ContainerObject> getScrollContainer() const;
    // The frame at the last validate: the area to repaint to erase the object.
    const Rect& getValidFrame() const { return validFrame_; }
    // Resets the cached frames of this object and its ancestors; see FrameCache.
    void resetFrame();

    // The area that painting the object can touch, in screen coordinates: the frame, and what is
    // painted beyond it, such as accents and the tips of sharp corners. Empty if the frame is.
    Rect getInk() { return withMargin(getFrame(), inkMargin_); }
    // The area that changes on the screen if the object changes: the ink, and how far the effects
    // of the containers around the object spread it.
    Rect getSpreadInk();
    // That area at the last validate.
    Rect getValidInk() const { return withMargin(validFrame_, validInkMargin_); }
    // The frame, and how far the effects of the object and of what is in it reach. The object's
    // layer is as large as this.
    Rect getFrameWithEffects();

    // The layer that lists this object, or null: most objects draw on an ancestor's.
    std::shared_ptr<DisplayLayer> getLayer() const { return layer_.lock(); }
    // Called by DisplayLayer::addObject and removeObject. Leaving an owned layer ends the
    // ownership, which may destroy the layer.
    void setLayer(const std::shared_ptr<DisplayLayer>& layer);
    // Whether this object keeps the layer that lists it alive.
    bool ownsLayer() const;
    // Makes this object the owner of the layer that lists it.
    void ownLayer();
    // Takes this object off the layer that lists it, if there is one.
    void removeFromLayer();

    // Moves this object to a layer of its own, `layer` or, for null, a new bitmap layer; it keeps
    // its place among its siblings. Returns the layer. An object that owns its layer keeps it, and
    // that layer is returned. A layer on which an ancestor draws, directly or in a sublayer, is
    // refused: one line is logged and null is returned.
    std::shared_ptr<DisplayLayer> extractIntoLayer(const std::shared_ptr<DisplayLayer>& layer);

    // The next or the previous sibling, or null.
    std::shared_ptr<DisplayObject> getSibling(SearchDirection direction) const;

    // The sublayer of the layer that this object draws on that is nearest to this object in drawing
    // order, searched among the siblings in `direction`, and, with `ascend`, also among those of
    // the ancestors that draw on the same layer. Null when there is none.
    std::shared_ptr<DisplayLayer> findNearestSublayer(SearchDirection direction, bool ascend) const;

    // The next sibling, or the next sibling of the nearest ancestor that has one, or null. It does
    // not descend into children.
    std::shared_ptr<DisplayObject> findNextInPreOrderTraversal() const;

    // Sets the opacity of the object and what is in it, drawn as one group: from 0, invisible but
    // still touched, to 1, which is the value at first. A container with native controls or other
    // objects on layers of their own is moved to a layer of its own. Others stay on their layer. A
    // value outside the range is limited to it, and a NaN is 1.
    void setOpacity(double opacity);
    // The opacity that was set; see ValueAnimation for animations of it.
    double getOpacity() const;

    // Sets the visibility flag. A hidden container hides everything in it.
    void setVisible(bool visible);

    // Defer the updates of the layer that this object draws on, so that many changes cost one.
    // Every lockUpdate must be paired with an unlockUpdate while the object draws on the same
    // layer; UpdateLock is the safe form.
    void lockUpdate();
    void unlockUpdate();

    // Sets the shape of the pointer while it is over this object and what is in it. A window shows
    // the new shape when the pointer moves.
    void setCursor(Cursor cursor) { cursor_ = cursor; }
    // Inherit at first.
    Cursor getCursor() const { return cursor_; }

    // This object as a container, borrowed, or null when it is none. Constant time, unlike a cast.
    ContainerObject* asContainer() const { return container_; }

    // Caches the visibility of one container while its children are visited.
    class ParentVisibilityScope;

    // What assistive technology learns about this object: null until it was created here.
    std::shared_ptr<AccessibilityElement> getAccessibilityElement() const;
    // Creates the element at the first call.
    std::shared_ptr<AccessibilityElement> getOrCreateAccessibilityElement();
    // Whether assistive technology may find this object: true for every text and control, and for
    // what has an accessibility element.
    bool mayBeAccessible() const { return accessibleKind_ || accessibilityElement_ != nullptr; }
    // Whether assistive technology may find this object or one in it. It stays true when the last
    // such object has left.
    bool leadsToAccessible() const { return leadsToAccessible_; }

protected:
    // Computes the frame that getFrame caches.
    virtual Rect computeFrame() = 0;

    // Called by computeFrame: painting reaches beyond the frame, by no more than `margin` (in the
    // coordinates that `toScreen` maps) to each side. Without a call it does not.
    void setInkMargin(const geometry::Size<double>& margin, const geometry::Matrix& toScreen);

    // Called in the constructors of kinds whose validate does nothing for a rectangle that does not
    // touch their ink. Containers then omit the call.
    void setCulledByFrame() { culledByFrame_ = true; }
    // Called in the constructors of kinds that assistive technology finds without being told.
    void setAccessibleKind() { accessibleKind_ = leadsToAccessible_ = true; }

    // Null for an object that never had an effect.
    Effects* effects() const { return effects_.get(); }
    // Changes the effects by a function, and repaints the object.
    template <typename Change>
    void changeEffects(const Change& change) {
        change(requireEffects());
        invalidate(true);
    }
    // What maps the lengths of effects to the parent's coordinates: the object's transformation,
    // except for a clip container, which its own transformation does not move.
    geometry::Matrix getEffectTransformation() const;
    // How far the object's own effects reach, in screen coordinates.
    double getEffectReach() const;
    // While one of these exists, what is painted spreads so far, in screen coordinates.
    class EffectScope {
    public:
        // In points, in addition to that of scopes around this one.
        explicit EffectScope(double reach) : reach_(static_cast<float>(reach)) {
            s_paintedReach += reach_;
        }
        ~EffectScope() { s_paintedReach -= reach_; }
        EffectScope(const EffectScope&) = delete;
        EffectScope& operator=(const EffectScope&) = delete;

    private:
        float reach_;
    };

private:
    friend class ChildFrames;
    friend class ContainerObject;
    friend class FrameCache;
    friend class LayerPlacement;

    // How far the ink reaches beyond the frame to each side, in screen coordinates.
    struct InkMargin {
        float x = 0;
        float y = 0;
        float effects = 0;  // the part of it that is due to effects

        void widen(const InkMargin& other) {
            x = x < other.x ? other.x : x;
            y = y < other.y ? other.y : y;
            effects = effects < other.effects ? other.effects : effects;
        }
    };
    static Rect withMargin(const Rect& frame, InkMargin margin) {
        return frame.isEmpty()
                   ? frame
                   : Rect(frame.x - double{margin.x}, frame.y - double{margin.y},
                          frame.width + 2 * double{margin.x}, frame.height + 2 * double{margin.y});
    }

    // Sets leadsToAccessible_ of this object and its ancestors.
    void leadToAccessible();
    // Whether this object or one in it is on a layer of its own.
    bool hasLayers() const;

    Effects& requireEffects();
    void widenInkByEffects();

    static std::uint64_t s_idCounter;
    static float s_paintedReach;

    std::uint64_t id_;
    bool visible_ = true;
    bool frameReset_ = true;
    bool frameKnownBelow_ = false;  // a frame of the subtree, this one included, may be known
    bool culledByFrame_ = false;
    bool accessibleKind_ = false;
    bool leadsToAccessible_ = false;  // true for the parent of every object for which it is true
    Cursor cursor_ = Cursor::Inherit;
    bool layered_ = false;         // setLayer has set a layer
    std::uint32_t frameSlot_ = 0;  // the parent's ChildFrames entry
    ContainerObject* container_ = nullptr;
    std::weak_ptr<DisplayLayer> layer_;
    std::shared_ptr<DisplayLayer> ownedLayer_;
    Rect frame_;
    Rect validFrame_;
    InkMargin inkMargin_;  // known when frame_ is
    InkMargin validInkMargin_;
    geometry::Matrix transformation_;
    std::shared_ptr<AccessibilityElement> accessibilityElement_;
    std::unique_ptr<Effects> effects_;
};

// Defers the updates of the layer that an object draws on for a scope: the changes in the scope
// cost one update. It holds the layer, so the lock stays balanced when the object moves to another
// layer meanwhile.
class ORVANE_EXPORT UpdateLock {
public:
    // `object` may be null.
    explicit UpdateLock(const std::shared_ptr<DisplayObject>& object);
    ~UpdateLock();
    UpdateLock(const UpdateLock&) = delete;
    UpdateLock& operator=(const UpdateLock&) = delete;

private:
    std::shared_ptr<DisplayLayer> layer_;
};

}  // namespace orvane::display
