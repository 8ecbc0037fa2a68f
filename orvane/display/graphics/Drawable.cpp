#include "orvane/display/graphics/Drawable.h"

namespace orvane::display::graphics {

Drawable::Drawable() {
    setCulledByFrame();
}

void Drawable::validate(const geometry::Rect<double>& rect) {
    const geometry::Rect<double> dirty = rect.intersection(getFrame());
    // Empty in one direction only goes on: the frame of a horizontal or vertical line has no width
    // or no height, and must be painted.
    if (dirty.isEmpty() || !isVisible()) {
        return;
    }
    DisplayObject::validate(dirty);

    storeState();
    clipRect(dirty);
    applyTransform();
    doValidate(dirty);
    restoreState();
}

void Drawable::clipRect(const geometry::Rect<double>&) {}

void Drawable::doValidate(const geometry::Rect<double>& rect) {
    DisplayObject::validate(rect);
}

}  // namespace orvane::display::graphics
