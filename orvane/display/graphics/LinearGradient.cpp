#include "orvane/display/graphics/LinearGradient.h"

#include <cmath>
#include <limits>

namespace orvane::display::graphics {

void LinearGradient::set(GradientUnit x1, GradientUnit y1, GradientUnit x2, GradientUnit y2) {
    x1_ = x1;
    y1_ = y1;
    x2_ = x2;
    y2_ = y2;
}

void LinearGradient::addColor(unsigned argb, float position) {
    colors_.push_back(argb);
    positions_.push_back(position);
}

bool LinearGradient::isDefaultBounds() const {
    const auto isZero = [](float v) { return std::abs(v) < std::numeric_limits<float>::min(); };
    return isZero(x1_.value) && isZero(y1_.value) && isZero(x2_.value - 1) && isZero(y2_.value);
}

}  // namespace orvane::display::graphics
