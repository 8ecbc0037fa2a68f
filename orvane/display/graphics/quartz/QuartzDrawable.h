#pragma once

#include "orvane/display/graphics/Drawable.h"

namespace orvane::platform {
class CGContext;
}

namespace orvane::display::graphics::quartz {

// The bracket of Drawable, carried out on the current canvas. No object keeps a canvas: each
// operation asks for it afresh, and does nothing outside a paint pass.
class QuartzDrawable : public virtual Drawable {
protected:
    void storeState() override;
    void applyTransform() override;
    void restoreState() override;

    // Null outside a paint pass.
    static platform::CGContext* getCanvas();
};

}  // namespace orvane::display::graphics::quartz
