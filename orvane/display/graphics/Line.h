#pragma once

#include "orvane/display/graphics/BoundedObject.h"
#include "orvane/display/graphics/Drawable.h"
#include "orvane/display/graphics/StrokeStyleable.h"

namespace orvane::display::graphics {

// A straight line between two points in object coordinates. A line has no fill and therefore is not
// a Shape. A new line has a black stroke of width 0, which paints nothing: set a width. Each setter
// repaints the line.
class ORVANE_EXPORT Line : public virtual BoundedObject<Drawable>, public virtual StrokeStyleable {
public:
    // Whether the line is shown and has a visible stroke.
    bool isVisible() const override;

    void onStrokeChanged() override;
    void onStrokeWidthChanged() override;

    // Sets both end points.
    virtual void set(float x1, float y1, float x2, float y2) = 0;
    // Sets the x of the first end point.
    virtual void setX1(float x1) = 0;
    // Sets the y of the first end point.
    virtual void setY1(float y1) = 0;
    // Sets the x of the second end point.
    virtual void setX2(float x2) = 0;
    // Sets the y of the second end point.
    virtual void setY2(float y2) = 0;
};

}  // namespace orvane::display::graphics
