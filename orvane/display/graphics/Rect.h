#pragma once

#include "orvane/display/graphics/Shape.h"

namespace orvane::display::graphics {

// A rectangle in object coordinates. It has rounded corners when rx or ry is not 0. Each setter
// repaints the rectangle.
class ORVANE_EXPORT Rect : public virtual Shape {
public:
    // Sets the top left corner and the size.
    virtual void set(float x, float y, float width, float height) = 0;
    // Sets the left edge.
    virtual void setX(float x) = 0;
    // Sets the top edge.
    virtual void setY(float y) = 0;
    // Sets the width.
    virtual void setWidth(float width) = 0;
    // Sets the height.
    virtual void setHeight(float height) = 0;
    // Sets the horizontal radius of the corners. 0 at first.
    virtual void setRx(float rx) = 0;
    // Sets the vertical radius of the corners. 0 at first.
    virtual void setRy(float ry) = 0;
};

}  // namespace orvane::display::graphics
