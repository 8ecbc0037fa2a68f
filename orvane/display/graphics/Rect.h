#pragma once

#include "orvane/display/graphics/Shape.h"

namespace orvane::display::graphics {

// A rectangle, with corners rounded by rx and ry; plain only when both are 0.
class ORVANE_EXPORT Rect : public virtual Shape {
public:
    virtual void set(float x, float y, float width, float height) = 0;
    virtual void setX(float x) = 0;
    virtual void setY(float y) = 0;
    virtual void setWidth(float width) = 0;
    virtual void setHeight(float height) = 0;
    virtual void setRx(float rx) = 0;
    virtual void setRy(float ry) = 0;
};

}  // namespace orvane::display::graphics
