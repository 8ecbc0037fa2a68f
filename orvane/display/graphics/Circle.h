#pragma once

#include "orvane/display/graphics/Shape.h"

namespace orvane::display::graphics {

// A circle in the square whose top left corner is cx, cy and whose sides are 2 r. The point is the
// corner and not the center: applications lay out by this rule. All lengths are in object
// coordinates; each setter repaints the circle.
class ORVANE_EXPORT Circle : public virtual Shape {
public:
    // Sets the top left corner of the circle's box and the radius.
    virtual void set(float cx, float cy, float r) = 0;
    // Sets the left edge of the circle's box.
    virtual void setCx(float cx) = 0;
    // Sets the top edge of the circle's box.
    virtual void setCy(float cy) = 0;
    // Sets the radius; the box keeps its top left corner.
    virtual void setR(float r) = 0;
};

}  // namespace orvane::display::graphics
