#pragma once

#include <memory>
#include <utility>

#include "orvane/display/graphics/GradientUnit.h"

namespace orvane::display::graphics {

class Drawable;

// A drawable to fill with, repeated over a box. A plain value that shares the drawable; no fill
// paints one yet.
class Pattern {
public:
    void set(GradientUnit x1, GradientUnit y1, GradientUnit x2, GradientUnit y2) {
        x1_ = x1;
        y1_ = y1;
        x2_ = x2;
        y2_ = y2;
    }
    void setX1(GradientUnit unit) { x1_ = unit; }
    void setY1(GradientUnit unit) { y1_ = unit; }
    void setX2(GradientUnit unit) { x2_ = unit; }
    void setY2(GradientUnit unit) { y2_ = unit; }
    GradientUnit getX1() const { return x1_; }
    GradientUnit getY1() const { return y1_; }
    GradientUnit getX2() const { return x2_; }
    GradientUnit getY2() const { return y2_; }

    void setDrawable(std::shared_ptr<Drawable> drawable) { drawable_ = std::move(drawable); }
    const std::shared_ptr<Drawable>& getDrawable() const { return drawable_; }

    void setUserSpace(bool userSpace) { userSpace_ = userSpace; }
    bool isUserSpace() const { return userSpace_; }

private:
    GradientUnit x1_;
    GradientUnit y1_;
    GradientUnit x2_;
    GradientUnit y2_;
    std::shared_ptr<Drawable> drawable_;
    bool userSpace_ = true;
};

}  // namespace orvane::display::graphics
