#pragma once

#include "orvane/display/graphics/Shape.h"

namespace orvane::display::graphics {

// An ellipse in the box whose top left corner is cx, cy and whose sides are rx and ry. That these
// are a corner and whole sides, not a centre and radii, is the rule that applications lay out by.
class ORVANE_EXPORT Ellipse : public virtual Shape {
public:
    virtual void set(float cx, float cy, float rx, float ry) = 0;
    virtual void setCx(float cx) = 0;
    virtual void setCy(float cy) = 0;
    virtual void setRx(float rx) = 0;
    virtual void setRy(float ry) = 0;
};

}  // namespace orvane::display::graphics
