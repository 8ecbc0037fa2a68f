#pragma once

#include "orvane/display/graphics/BoundedObject.h"
#include "orvane/display/graphics/Drawable.h"
#include "orvane/display/graphics/StrokeStyleable.h"

namespace orvane::display::graphics {

// A straight line. It has no fill, and so is no Shape.
class ORVANE_EXPORT Line : public virtual BoundedObject<Drawable>, public virtual StrokeStyleable {
public:
    // Also asks for a stroke that can be seen.
    bool isVisible() const override;

    void onStrokeChanged() override;
    void onStrokeWidthChanged() override;

    virtual void set(float x1, float y1, float x2, float y2) = 0;
    virtual void setX1(float x1) = 0;
    virtual void setY1(float y1) = 0;
    virtual void setX2(float x2) = 0;
    virtual void setY2(float y2) = 0;
};

}  // namespace orvane::display::graphics
