#pragma once

#include "orvane/display/graphics/BoundedObject.h"
#include "orvane/display/graphics/Drawable.h"
#include "orvane/display/graphics/FillStyleable.h"
#include "orvane/display/graphics/StrokeStyleable.h"

namespace orvane::display::graphics {

// An outline that is filled and stroked. A new shape has a black fill and a black stroke of width
// 0, which paints nothing. Every setter changes the shape and repaints it at once; an UpdateLock
// combines the repaints of several setters.
class ORVANE_EXPORT Shape : public virtual BoundedObject<Drawable>,
                            public virtual FillStyleable,
                            public virtual StrokeStyleable {
public:
    // The box of the outline, widened for the stroke and rounded to integers, in object
    // coordinates.
    geometry::Rect<double> getBounds() override;
    // The box of the outline alone, in object coordinates.
    virtual geometry::Rect<double> getInnerBounds() = 0;

    // Whether the shape is shown and has a visible fill or stroke.
    bool isVisible() const override;

    void onFillChanged() override;
    void onStrokeChanged() override;
    void onStrokeWidthChanged() override;
};

}  // namespace orvane::display::graphics
