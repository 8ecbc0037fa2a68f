#include "orvane/display/graphics/Drawable.h"

#include "orvane/display/tree/Effects.h"

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
    if (effects() != nullptr) {
        paintWithEffects(dirty);
    } else {
        paint(dirty);
    }
}

void Drawable::paint(const geometry::Rect<double>& rect) {
    const StateScope state(*this);
    clipRect(rect);
    applyTransform();
    doValidate(rect);
}

void Drawable::paintWithEffects(const geometry::Rect<double>& rect) {
    paint(rect);
}

void Drawable::setShadow(const Shadow& shadow) {
    changeEffects([&](Effects& effects) { effects.shadow = shadow; });
}

Shadow Drawable::getShadow() const {
    return effects() != nullptr ? effects()->shadow : Shadow();
}

void Drawable::setBlur(float radius) {
    changeEffects([&](Effects& effects) { effects.blur = radius; });
}

float Drawable::getBlur() const {
    return effects() != nullptr ? effects()->blur : 0;
}

void Drawable::clipRect(const geometry::Rect<double>&) {}

void Drawable::doValidate(const geometry::Rect<double>& rect) {
    DisplayObject::validate(rect);
}

}  // namespace orvane::display::graphics
