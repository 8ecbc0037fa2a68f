#pragma once

#include "orvane/display/graphics/BoundedObject.h"

namespace orvane::display::graphics {

// A bounded object whose rectangle is stored, and set by the application. All zero at first.
template <typename T>
class ORVANE_EXPORT SizedObject : public virtual BoundedObject<T> {
public:
    geometry::Rect<double> getBounds() override { return bounds_; }

    void setBounds(const geometry::Rect<double>& bounds) {
        bounds_ = bounds;
        this->invalidate(true);
    }

private:
    geometry::Rect<double> bounds_;
};

}  // namespace orvane::display::graphics
