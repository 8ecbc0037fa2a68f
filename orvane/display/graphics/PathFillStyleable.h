#pragma once

#include "orvane/display/graphics/FillStyleable.h"

namespace orvane::display::graphics {

// The fill of an object whose outline may cross itself.
class ORVANE_EXPORT PathFillStyleable : public virtual FillStyleable {
public:
    // Decides which points are inside an outline that crosses itself.
    enum class FillRule { NonZero = 0, EvenOdd = 1 };

    // Sets the rule, which is NonZero at first. It does not repaint the object: set it before the
    // outline.
    virtual void setFillRule(FillRule rule) = 0;
};

}  // namespace orvane::display::graphics
