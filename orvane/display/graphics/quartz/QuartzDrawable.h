#pragma once

#include "orvane/commons/Export.h"
#include "orvane/display/graphics/Drawable.h"

namespace orvane::platform {
class CGContext;
}

namespace orvane::display::graphics::quartz {

// Implements the bracket of Drawable on the current canvas. Objects do not store the canvas: each
// operation gets the current one, and does nothing outside a paint pass.
class ORVANE_EXPORT QuartzDrawable : public virtual Drawable {
protected:
    // Paints the object as a group, or draws the picture that was kept of it.
    void paintWithEffects(const geometry::Rect<double>& rect) override;
    void storeState() override;
    void applyTransform() override;
    void restoreState() override;

    // The current canvas; null outside a paint pass.
    static platform::CGContext* getCanvas();
};

}  // namespace orvane::display::graphics::quartz
