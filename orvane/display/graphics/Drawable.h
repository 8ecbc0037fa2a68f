#pragma once

#include "orvane/display/tree/DisplayObject.h"

namespace orvane::display::graphics {

// A display object that draws itself on a canvas. The paint pass of a layer reaches it through
// validate, on the thread of that pass; validate turns the one call into a fixed bracket of canvas
// operations around the object's own painting. What the operations of the bracket do to a canvas is
// left to the canvas-bound kinds; the model names none.
class ORVANE_EXPORT Drawable : public virtual DisplayObject {
public:
    Drawable();

    // Paints what of the object lies in `rect`, the dirty rectangle of the pass in screen
    // coordinates. An object that is hidden, or whose frame does not touch the rectangle, is
    // skipped before any canvas operation. Each storeState is matched by exactly one restoreState.
    void validate(const geometry::Rect<double>& rect) override;

protected:
    virtual void storeState() = 0;
    // Narrows the clip, in the coordinates of the parent: it comes before applyTransform. The
    // argument is the dirty part of the object's frame, in screen coordinates.
    virtual void clipRect(const geometry::Rect<double>& rect);
    virtual void applyTransform() = 0;
    // The object's own painting, in its own coordinates. The brackets of a group's children nest
    // here.
    virtual void doValidate(const geometry::Rect<double>& rect);
    virtual void restoreState() = 0;
};

}  // namespace orvane::display::graphics
