#pragma once

#include "orvane/display/graphics/Shape.h"
#include "orvane/display/graphics/quartz/PathWrapper.h"
#include "orvane/display/graphics/quartz/QuartzDrawable.h"
#include "orvane/display/graphics/quartz/QuartzFillStyleable.h"
#include "orvane/display/graphics/quartz/QuartzStrokeStyleable.h"

namespace orvane::display::graphics::quartz {

// A shape whose outline is always ready to paint: every setter of a concrete shape stores its
// field, rebuilds the outline and invalidates the object.
class QuartzShape : public virtual Shape,
                    public virtual QuartzDrawable,
                    public virtual QuartzFillStyleable,
                    public virtual QuartzStrokeStyleable {
public:
    geometry::Rect<double> getInnerBounds() override { return path_.getBounds(); }

protected:
    geometry::Size<double> getInkMargin() override;
    // Sets the fill, then the stroke, then draws the whole outline; the clip of the canvas
    // restricts it to the dirty rectangle. A gradient is painted by clipping to the outline. That
    // clip also applies to the stroke, so a gradient shape shows only the inner half of its stroke.
    void doValidate(const geometry::Rect<double>& rect) override;

    PathWrapper path_;
};

}  // namespace orvane::display::graphics::quartz
