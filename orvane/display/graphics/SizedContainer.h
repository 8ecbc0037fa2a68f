#pragma once

#include "orvane/display/graphics/Drawable.h"
#include "orvane/display/graphics/SizedObject.h"
#include "orvane/display/tree/ContainerObject.h"

namespace orvane::display::graphics {

// A group whose extent is its stored bounds, whatever its children are.
class ORVANE_EXPORT SizedContainer : public virtual Drawable,
                                     public virtual SizedObject<ContainerObject> {
public:
    // The bracket, not the bare walk over the children, which the bracket runs inside.
    void validate(const geometry::Rect<double>& rect) override;

protected:
    void doValidate(const geometry::Rect<double>& rect) override;
};

}  // namespace orvane::display::graphics
