#pragma once

#include "orvane/display/graphics/Drawable.h"
#include "orvane/display/tree/ContainerObject.h"

namespace orvane::display::graphics {

// A group with no extent of its own: its frame is the union of its children's.
class ORVANE_EXPORT Container : public virtual Drawable, public virtual ContainerObject {
public:
    // The bracket, not the bare walk over the children, which the bracket runs inside.
    void validate(const geometry::Rect<double>& rect) override;

protected:
    void doValidate(const geometry::Rect<double>& rect) override;
};

}  // namespace orvane::display::graphics
