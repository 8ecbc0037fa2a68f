#pragma once

#include "orvane/display/graphics/CenteredGradient.h"

namespace orvane::display::graphics {

// Colors around a point, clockwise, like the hand of a clock. For a transition without an edge, the
// last color is the first one again.
class ConicGradient : public CenteredGradient {
public:
    // Sets where the colors begin, in radians clockwise from the right. 0 at first.
    void setAngle(double radians) { angle_ = radians; }
    // Where the colors begin.
    double getAngle() const { return angle_; }

private:
    double angle_ = 0;
};

}  // namespace orvane::display::graphics
