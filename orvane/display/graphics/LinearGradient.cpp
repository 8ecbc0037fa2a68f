#include "orvane/display/graphics/LinearGradient.h"

#include "orvane/display/geometry/isZero.h"

namespace orvane::display::graphics {

void LinearGradient::addColor(unsigned argb, float position) {
    colors_.push_back(argb);
    positions_.push_back(position);
}

bool LinearGradient::isDefaultBounds() const {
    using geometry::isZero;
    return isZero(getX1().value) && isZero(getY1().value) && isZero(getX2().value - 1) &&
           isZero(getY2().value);
}

}  // namespace orvane::display::graphics
