#pragma once

#include <algorithm>

#include "orvane/commons/Export.h"
#include "orvane/display/geometry/Matrix.h"
#include "orvane/display/geometry/Rect.h"
#include "orvane/display/geometry/Size.h"

namespace orvane::display::graphics {

// An object that reports a rectangle, its bounds, from which its frame follows. T is Drawable or
// ContainerObject.
template <typename T>
class ORVANE_EXPORT BoundedObject : public virtual T {
public:
    // The rectangle that the object occupies, in object coordinates.
    virtual geometry::Rect<double> getBounds() = 0;

protected:
    // The bounds, seen through the object's transformation and those of its ancestors.
    geometry::Rect<double> computeFrame() override {
        const geometry::Matrix toScreen = this->getFullTransformation();
        this->setInkMargin(getInkMargin(), toScreen);
        return toScreen.mapRect(getBounds());
    }

    // How far painting reaches beyond the bounds to each side, in object coordinates.
    virtual geometry::Size<double> getInkMargin() { return {}; }

    // The margin of an object that paints inside `ink`.
    static geometry::Size<double> marginAround(const geometry::Rect<double>& bounds,
                                               const geometry::Rect<double>& ink) {
        return {std::max({0.0, bounds.x - ink.x, ink.x + ink.width - bounds.x - bounds.width}),
                std::max({0.0, bounds.y - ink.y, ink.y + ink.height - bounds.y - bounds.height})};
    }
};

}  // namespace orvane::display::graphics
