#pragma once

#include "orvane/commons/Export.h"
#include "orvane/display/geometry/Rect.h"

namespace orvane::display::graphics {

// An object whose frame follows from a rectangle that it reports. T is Drawable or ContainerObject.
template <typename T>
class ORVANE_EXPORT BoundedObject : public virtual T {
public:
    // In the object's own coordinates.
    virtual geometry::Rect<double> getBounds() = 0;

protected:
    geometry::Rect<double> computeFrame() override {
        return this->applyTransformToRect(getBounds());
    }
};

}  // namespace orvane::display::graphics
