#include "orvane/display/graphics/Container.h"

namespace orvane::display::graphics {

void Container::validate(const geometry::Rect<double>& rect) {
    Drawable::validate(rect);
}

void Container::doValidate(const geometry::Rect<double>& rect) {
    ContainerObject::validate(rect);
}

}  // namespace orvane::display::graphics
