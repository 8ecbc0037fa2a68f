#include "orvane/display/graphics/quartz/QuartzPolyline.h"

namespace orvane::display::graphics::quartz {

void QuartzPolyline::set(const std::vector<float>& points, bool closed) {
    path_.setPolyline(points, closed);
    invalidate(true);
}

}  // namespace orvane::display::graphics::quartz
