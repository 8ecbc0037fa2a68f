#pragma once

#include "orvane/display/graphics/Shape.h"

namespace orvane::display::graphics {

// An ellipse in the box whose top left corner is cx, cy and whose width and height are rx and ry.
// They are a corner and the whole sides, not a center and radii: applications lay out by this rule.
// All lengths are in object coordinates; each setter repaints the ellipse.
class ORVANE_EXPORT Ellipse : public virtual Shape {
public:
    // Sets the ellipse's box: left, top, width and height.
    virtual void set(float cx, float cy, float rx, float ry) = 0;
    // Sets the left edge of the box.
    virtual void setCx(float cx) = 0;
    // Sets the top edge of the box.
    virtual void setCy(float cy) = 0;
    // Sets the width of the box.
    virtual void setRx(float rx) = 0;
    // Sets the height of the box.
    virtual void setRy(float ry) = 0;
};

}  // namespace orvane::display::graphics
