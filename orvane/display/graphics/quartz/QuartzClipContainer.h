#pragma once

#include "orvane/display/graphics/ClipContainer.h"
#include "orvane/display/graphics/quartz/QuartzDrawable.h"

namespace orvane::display::graphics::quartz {

// A clipping group on the canvas.
class QuartzClipContainer : public virtual ClipContainer, public virtual QuartzDrawable {
public:
    std::string getDescription() const override { return "QuartzClipContainer"; }

protected:
    // Clips to the bounds, which are in the parent's coordinates. The dirty rectangle is not used.
    void clipRect(const geometry::Rect<double>& rect) override;
};

}  // namespace orvane::display::graphics::quartz
