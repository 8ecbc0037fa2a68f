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
    // clip also applies to a stroke with a color, so such a shape shows only the inner half of its
    // stroke. A stroke with a gradient is painted as a whole.
    void doValidate(const geometry::Rect<double>& rect) override;

    PathWrapper path_;

private:
    // Paints only the fill, which is visible. A gradient leaves its clip.
    void paintFill(platform::CGContext& canvas);
};

}  // namespace orvane::display::graphics::quartz
