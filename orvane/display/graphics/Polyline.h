#pragma once

#include <vector>

#include "orvane/display/graphics/PathFillStyleable.h"
#include "orvane/display/graphics/Shape.h"

namespace orvane::display::graphics {

// Straight lines through points in object coordinates: a polygon when it is closed. An open
// polyline is filled as if it were closed.
class ORVANE_EXPORT Polyline : public virtual Shape, public virtual PathFillStyleable {
public:
    // Sets the points as x, y, x, y ...; an odd last number is ignored. Repaints the polyline.
    virtual void set(const std::vector<float>& points, bool closed) = 0;
};

}  // namespace orvane::display::graphics
