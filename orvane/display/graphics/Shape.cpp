#include "orvane/display/graphics/Shape.h"

#include "orvane/display/geometry/rounding.h"

namespace orvane::display::graphics {

geometry::Rect<double> Shape::getBounds() {
    return geometry::toInt(calculateBoundsWithStroke(getInnerBounds()));
}

bool Shape::isVisible() const {
    return DisplayObject::isVisible() && (isFillVisible() || isStrokeVisible());
}

void Shape::onFillChanged() {
    invalidate(true);
}

void Shape::onStrokeChanged() {
    invalidate(true);
}

void Shape::onStrokeWidthChanged() {
    invalidate(true);
}

}  // namespace orvane::display::graphics
