#pragma once

#include "orvane/commons/Export.h"
#include "orvane/display/geometry/Rect.h"

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
        return this->applyTransformToRect(getBounds());
    }
};

}  // namespace orvane::display::graphics
