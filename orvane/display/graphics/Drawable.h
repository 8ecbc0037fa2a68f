#pragma once

#include "orvane/display/tree/DisplayObject.h"
#include "orvane/display/tree/Shadow.h"

namespace orvane::display::graphics {

// A display object that paints itself on a canvas. The paint pass of a layer calls validate, on the
// thread of the pass; validate encloses the object's own painting in a fixed bracket of canvas
// operations. Subclasses that are bound to a canvas implement these operations; the model names no
// canvas.
class ORVANE_EXPORT Drawable : public virtual DisplayObject {
public:
    // An object that is painted only where its frame meets the dirty rectangle.
    Drawable();

    // Paints the part of the object that lies in `rect`, the dirty rectangle of the pass, in screen
    // coordinates. An object that is hidden or whose frame does not touch the rectangle is skipped
    // before any canvas operation. Every storeState is followed by exactly one restoreState.
    void validate(const geometry::Rect<double>& rect) override;

    // Draws a shadow behind the object and what is in it, as one silhouette. What is on a layer of
    // its own, such as a native control, has no part in it. Ignored by scroll containers.
    void setShadow(const Shadow& shadow);
    // The shadow that was set. Its color is transparent at first.
    Shadow getShadow() const;
    // Blurs the object and what is in it, as one picture, except for what is on a layer of its own.
    // The radius is twice the standard deviation of the Gaussian curve, in the object's
    // coordinates; 0, the value at first, is sharp, and so is a NaN. A shadow is that of the
    // blurred object. Ignored by scroll containers.
    void setBlur(float radius);
    // The radius that was set.
    float getBlur() const;

protected:
    // Saves the state of the canvas.
    virtual void storeState() = 0;
    // Restricts the clip. It is called before applyTransform, so the clip is in the parent's
    // coordinates. `rect` is the dirty part of the object's frame, in screen coordinates.
    virtual void clipRect(const geometry::Rect<double>& rect);
    // Applies the object's transformation to the canvas.
    virtual void applyTransform() = 0;
    // Paints the object itself, in object coordinates. The brackets of a group's children are
    // nested here.
    virtual void doValidate(const geometry::Rect<double>& rect);
    // Restores the state that storeState saved.
    virtual void restoreState() = 0;

    // Paints an object that has effects, of which paint() knows nothing. `rect` is the dirty part
    // of its ink, in screen coordinates.
    virtual void paintWithEffects(const geometry::Rect<double>& rect);
    // The bracket of canvas operations, for a rectangle that the object touches.
    void paint(const geometry::Rect<double>& rect);

    // Calls storeState, and restoreState at the end of the scope, also when painting throws: the
    // canvas of a view lives longer than the pass.
    class StateScope {
    public:
        // Borrows the object.
        explicit StateScope(Drawable& drawable) : drawable_(drawable) { drawable_.storeState(); }
        ~StateScope() { drawable_.restoreState(); }
        StateScope(const StateScope&) = delete;
        StateScope& operator=(const StateScope&) = delete;

    private:
        Drawable& drawable_;
    };
};

}  // namespace orvane::display::graphics
