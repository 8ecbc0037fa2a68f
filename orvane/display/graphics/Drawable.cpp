#include "orvane/display/graphics/Drawable.h"

namespace orvane::display::graphics {

namespace {

// Not inlined: validate is called recursively through groups, and the temporaries of this
// computation would take stack space at every level of a deep tree.
[[gnu::noinline]] geometry::Rect<double> intersection(const geometry::Rect<double>& a,
                                                      const geometry::Rect<double>& b) {
    return a.intersection(b);
}

}  // namespace

Drawable::Drawable() {
    setCulledByFrame();
}

void Drawable::validate(const geometry::Rect<double>& rect) {
    const geometry::Rect<double> dirty = intersection(rect, getInk());
    // A rectangle that is empty in one direction only is painted: the frame of a horizontal or
    // vertical line has no width or no height.
    if (dirty.isEmpty() || !isVisible()) {
        return;
    }
    DisplayObject::validate(dirty);

    const StateScope state(*this);
    clipRect(dirty);
    applyTransform();
    doValidate(dirty);
}

void Drawable::clipRect(const geometry::Rect<double>&) {}

void Drawable::doValidate(const geometry::Rect<double>& rect) {
    DisplayObject::validate(rect);
}

}  // namespace orvane::display::graphics
