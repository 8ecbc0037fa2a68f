#pragma once

#include "orvane/display/graphics/Shape.h"

namespace orvane::display::graphics {

// A circle in the box whose top left corner is cx, cy and whose sides are 2 r. That the point is
// the corner and not the centre is the rule that applications lay out by.
class ORVANE_EXPORT Circle : public virtual Shape {
public:
    virtual void set(float cx, float cy, float r) = 0;
    virtual void setCx(float cx) = 0;
    virtual void setCy(float cy) = 0;
    virtual void setR(float r) = 0;
};

}  // namespace orvane::display::graphics
