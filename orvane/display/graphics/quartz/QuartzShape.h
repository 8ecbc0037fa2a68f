#pragma once

#include "orvane/display/graphics/Shape.h"
#include "orvane/display/graphics/quartz/PathWrapper.h"
#include "orvane/display/graphics/quartz/QuartzDrawable.h"
#include "orvane/display/graphics/quartz/QuartzFillStyleable.h"
#include "orvane/display/graphics/quartz/QuartzStrokeStyleable.h"

namespace orvane::display::graphics::quartz {

// A shape that holds its outline ready to paint: every setter of a concrete shape stores its field,
// rebuilds the outline at once and invalidates.
class QuartzShape : public virtual Shape,
                    public virtual QuartzDrawable,
                    public virtual QuartzFillStyleable,
                    public virtual QuartzStrokeStyleable {
public:
    geometry::Rect<double> getInnerBounds() override { return path_.getBounds(); }

protected:
    // Fill, then stroke, then the outline, whole: the canvas's clip keeps it to the dirty
    // rectangle. A gradient fills by clipping to the outline, and that clip holds for the stroke
    // too, of which a gradient shape therefore shows only the inner half.
    void doValidate(const geometry::Rect<double>& rect) override;

    PathWrapper path_;
};

}  // namespace orvane::display::graphics::quartz
