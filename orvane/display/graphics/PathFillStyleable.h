#pragma once

#include "orvane/display/graphics/FillStyleable.h"

namespace orvane::display::graphics {

// What can be filled and has an outline that may cross itself.
class ORVANE_EXPORT PathFillStyleable : public virtual FillStyleable {
public:
    // Which points are inside of an outline that crosses itself.
    enum class FillRule { NonZero = 0, EvenOdd = 1 };

    // Takes effect with the next repaint and asks for none: set it before the outline.
    virtual void setFillRule(FillRule rule) = 0;
};

}  // namespace orvane::display::graphics
