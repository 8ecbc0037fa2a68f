#pragma once

#include "orvane/display/graphics/CenteredGradient.h"

namespace orvane::display::graphics {

// Colors from a point to a circle around it. The last color continues outside the circle. In
// fractions of bounds that are not square the circle is an ellipse.
class RadialGradient : public CenteredGradient {
public:
    // Sets the radius of the circle. 0.5 at first, which reaches the edges of the bounds.
    void setRadius(double radius) { radius_ = radius; }
    // The radius of the circle.
    double getRadius() const { return radius_; }
    // Moves the point at which the colors begin away from the center, as a highlight on a ball. It
    // must be inside the circle.
    void setFocus(double x, double y) {
        hasFocus_ = true;
        focusX_ = x;
        focusY_ = y;
    }
    // The x of the point at which the colors begin.
    double getFocusX() const { return hasFocus_ ? focusX_ : getCenterX(); }
    // The y of the point at which the colors begin.
    double getFocusY() const { return hasFocus_ ? focusY_ : getCenterY(); }

private:
    double radius_ = 0.5;
    bool hasFocus_ = false;
    double focusX_ = 0;
    double focusY_ = 0;
};

}  // namespace orvane::display::graphics
