#pragma once

#include <vector>

#include "orvane/display/graphics/PathFillStyleable.h"
#include "orvane/display/graphics/Shape.h"

namespace orvane::display::graphics {

// Straight lines through points; closed, a polygon. An open one is filled as if it were closed.
class ORVANE_EXPORT Polyline : public virtual Shape, public virtual PathFillStyleable {
public:
    // x, y, x, y; an odd last number is ignored.
    virtual void set(const std::vector<float>& points, bool closed) = 0;
};

}  // namespace orvane::display::graphics
