#include "orvane/display/graphics/quartz/QuartzDrawable.h"

#include "orvane/display/native/CurrentCanvas.h"
#include "platform/coregraphics/CGContext.h"

namespace orvane::display::graphics::quartz {

void QuartzDrawable::storeState() {
    if (platform::CGContext* const canvas = getCanvas(); canvas != nullptr) {
        canvas->saveGState();
    }
}

void QuartzDrawable::applyTransform() {
    if (platform::CGContext* const canvas = getCanvas(); canvas != nullptr) {
        canvas->concatCTM(static_cast<platform::CGAffineTransform>(getTransformation()));
    }
}

void QuartzDrawable::restoreState() {
    if (platform::CGContext* const canvas = getCanvas(); canvas != nullptr) {
        canvas->restoreGState();
    }
}

platform::CGContext* QuartzDrawable::getCanvas() {
    return GetCurrentCanvas();
}

}  // namespace orvane::display::graphics::quartz
