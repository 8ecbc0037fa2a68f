#pragma once

#include "orvane/display/graphics/ClipContainer.h"

namespace orvane::display::graphics {

// A clipping group on a layer of its own, whose content is meant to be moved inside it. The
// application moves the content: nothing scrolls automatically.
class ORVANE_EXPORT ScrollContainer : public virtual ClipContainer {
public:
    // The directions in which the content is meant to move.
    enum class Type { Both = 0, Horizontal = 1, Vertical = 2 };

    // The directions that were given when it was created.
    virtual Type getType() const = 0;
    // Whether the content is meant to come to rest at whole pages.
    virtual bool isPaging() const = 0;
};

}  // namespace orvane::display::graphics
