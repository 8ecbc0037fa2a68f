#include "orvane/display/graphics/SizedContainer.h"

namespace orvane::display::graphics {

void SizedContainer::validate(const geometry::Rect<double>& rect) {
    Drawable::validate(rect);
}

void SizedContainer::doValidate(const geometry::Rect<double>& rect) {
    ContainerObject::validate(rect);
}

}  // namespace orvane::display::graphics
