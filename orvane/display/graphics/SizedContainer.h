#pragma once

#include "orvane/display/graphics/Drawable.h"
#include "orvane/display/graphics/SizedObject.h"
#include "orvane/display/tree/ContainerObject.h"

namespace orvane::display::graphics {

// A group whose extent is the bounds that the application sets, independent of its children.
class ORVANE_EXPORT SizedContainer : public virtual Drawable,
                                     public virtual SizedObject<ContainerObject> {
public:
    // Paints the children inside the group's own bracket of canvas operations; see Drawable.
    void validate(const geometry::Rect<double>& rect) override;

protected:
    void doValidate(const geometry::Rect<double>& rect) override;
};

}  // namespace orvane::display::graphics
