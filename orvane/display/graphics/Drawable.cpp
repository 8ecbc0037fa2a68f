#include "orvane/display/graphics/Drawable.h"

namespace orvane::display::graphics {

namespace {

// Out of line: validate calls itself through the groups, and the temporaries of the arithmetic
// would stand on the stack once for every level of a deep tree.
[[gnu::noinline]] geometry::Rect<double> intersection(const geometry::Rect<double>& a,
                                                      const geometry::Rect<double>& b) {
    return a.intersection(b);
}

}  // namespace

Drawable::Drawable() {
    setCulledByFrame();
}

void Drawable::validate(const geometry::Rect<double>& rect) {
    const geometry::Rect<double> dirty = intersection(rect, getFrame());
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
