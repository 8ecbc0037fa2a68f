#pragma once

#include "orvane/display/graphics/Drawable.h"
#include "orvane/display/tree/ContainerObject.h"

namespace orvane::display::graphics {

// A group without an extent of its own: its frame is the union of its children's frames.
class ORVANE_EXPORT Container : public virtual Drawable, public virtual ContainerObject {
public:
    // Paints the children inside the group's own bracket of canvas operations; see Drawable.
    void validate(const geometry::Rect<double>& rect) override;

protected:
    void doValidate(const geometry::Rect<double>& rect) override;
};

}  // namespace orvane::display::graphics
