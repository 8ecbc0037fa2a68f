#pragma once

#include "orvane/display/graphics/ClipContainer.h"

namespace orvane::display::graphics {

// A clipping group on a layer of its own, made to have its content moved inside it.
class ORVANE_EXPORT ScrollContainer : public virtual ClipContainer {
public:
    // The directions that the content moves in.
    enum class Type { Both = 0, Horizontal = 1, Vertical = 2 };

    virtual Type getType() const = 0;
    // Whether the content comes to rest at whole pages.
    virtual bool isPaging() const = 0;
};

}  // namespace orvane::display::graphics
