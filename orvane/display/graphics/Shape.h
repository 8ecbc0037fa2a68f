#pragma once

#include "orvane/display/graphics/BoundedObject.h"
#include "orvane/display/graphics/Drawable.h"
#include "orvane/display/graphics/FillStyleable.h"
#include "orvane/display/graphics/StrokeStyleable.h"

namespace orvane::display::graphics {

// An outline that is filled and stroked. Its setters change it at once and repaint it: nothing
// batches but an update lock.
class ORVANE_EXPORT Shape : public virtual BoundedObject<Drawable>,
                            public virtual FillStyleable,
                            public virtual StrokeStyleable {
public:
    // The outline's box with room for the stroke, in whole numbers.
    geometry::Rect<double> getBounds() override;
    // The outline's box alone.
    virtual geometry::Rect<double> getInnerBounds() = 0;

    // Also asks for a fill or a stroke that can be seen.
    bool isVisible() const override;

    void onFillChanged() override;
    void onStrokeChanged() override;
    void onStrokeWidthChanged() override;
};

}  // namespace orvane::display::graphics
