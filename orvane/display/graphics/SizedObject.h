#pragma once

#include "orvane/display/graphics/BoundedObject.h"

namespace orvane::display::graphics {

// An object whose bounds the application sets. They are all zero at first.
template <typename T>
class ORVANE_EXPORT SizedObject : public virtual BoundedObject<T> {
public:
    // The bounds that setBounds set.
    geometry::Rect<double> getBounds() override { return bounds_; }

    // Sets the bounds, in object coordinates (in the parent's coordinates for a ClipContainer), and
    // repaints the object.
    void setBounds(const geometry::Rect<double>& bounds) {
        bounds_ = bounds;
        this->invalidate(true);
    }

private:
    geometry::Rect<double> bounds_;
};

}  // namespace orvane::display::graphics
