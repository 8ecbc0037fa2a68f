#pragma once

#include "orvane/display/graphics/GradientUnit.h"

namespace orvane::display::graphics {

// Two points: the ends of the axis of a gradient, or two opposite corners of the box of a pattern.
// They are all zero at first.
class GradientAxis {
public:
    // Sets both points.
    void set(GradientUnit x1, GradientUnit y1, GradientUnit x2, GradientUnit y2) {
        x1_ = x1;
        y1_ = y1;
        x2_ = x2;
        y2_ = y2;
    }
    // Sets the x of the first point.
    void setX1(GradientUnit unit) { x1_ = unit; }
    // Sets the y of the first point.
    void setY1(GradientUnit unit) { y1_ = unit; }
    // Sets the x of the second point.
    void setX2(GradientUnit unit) { x2_ = unit; }
    // Sets the y of the second point.
    void setY2(GradientUnit unit) { y2_ = unit; }
    // The x of the first point.
    GradientUnit getX1() const { return x1_; }
    // The y of the first point.
    GradientUnit getY1() const { return y1_; }
    // The x of the second point.
    GradientUnit getX2() const { return x2_; }
    // The y of the second point.
    GradientUnit getY2() const { return y2_; }

protected:
    GradientAxis() = default;

private:
    GradientUnit x1_;
    GradientUnit y1_;
    GradientUnit x2_;
    GradientUnit y2_;
};

}  // namespace orvane::display::graphics
