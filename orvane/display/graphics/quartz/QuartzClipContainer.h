#pragma once

#include "orvane/display/graphics/ClipContainer.h"
#include "orvane/display/graphics/quartz/QuartzDrawable.h"
#include "platform/coregraphics/CGPath.h"

namespace orvane::display::graphics::quartz {

// A clipping group on the canvas.
class QuartzClipContainer : public virtual ClipContainer, public virtual QuartzDrawable {
public:
    std::string getDescription() const override { return "QuartzClipContainer"; }

protected:
    // Clips to the bounds, which are in the parent's coordinates. The dirty rectangle is not used.
    void clipRect(const geometry::Rect<double>& rect) override;

private:
    // The outline of the clip with rounded corners, for these bounds and this radius. Kept, so that
    // the canvas finds its coverage again.
    platform::CGPath outline_;
    geometry::Rect<double> outlined_;
    double outlinedRadius_ = 0;
};

}  // namespace orvane::display::graphics::quartz
