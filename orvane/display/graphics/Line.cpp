#include "orvane/display/graphics/Line.h"

namespace orvane::display::graphics {

bool Line::isVisible() const {
    return DisplayObject::isVisible() && isStrokeVisible();
}

void Line::onStrokeChanged() {
    invalidate(true);
}

void Line::onStrokeWidthChanged() {
    invalidate(true);
}

}  // namespace orvane::display::graphics
