#include "orvane/display/graphics/quartz/QuartzClipContainer.h"

#include "orvane/display/geometry/isInRoundedRect.h"
#include "platform/coregraphics/CGContext.h"

namespace orvane::display::graphics::quartz {

void QuartzClipContainer::clipRect(const geometry::Rect<double>&) {
    if (platform::CGContext* const canvas = getCanvas(); canvas != nullptr) {
        const geometry::Rect<double> bounds = getBounds();
        if (!(getCornerRadius() > 0)) {
            canvas->clipToRect(static_cast<platform::CGRect>(bounds));
            return;
        }
        const double radius = geometry::cornerRadius(bounds.normalized(), getCornerRadius());
        if (outlined_ != bounds || outlinedRadius_ != radius) {
            outlined_ = bounds;
            outlinedRadius_ = radius;
            outline_ = platform::CGPath();
            outline_.addRoundedRect(static_cast<platform::CGRect>(bounds.normalized()), radius,
                                    radius);
        }
        canvas->addPath(outline_);
        canvas->clip();
    }
}

}  // namespace orvane::display::graphics::quartz
