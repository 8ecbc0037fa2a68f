#include "orvane/display/graphics/quartz/QuartzClipContainer.h"

#include "platform/coregraphics/CGContext.h"

namespace orvane::display::graphics::quartz {

void QuartzClipContainer::clipRect(const geometry::Rect<double>&) {
    if (platform::CGContext* const canvas = getCanvas(); canvas != nullptr) {
        canvas->clipToRect(static_cast<platform::CGRect>(getBounds()));
    }
}

}  // namespace orvane::display::graphics::quartz
