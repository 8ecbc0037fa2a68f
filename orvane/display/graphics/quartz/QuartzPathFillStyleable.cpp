#include "orvane/display/graphics/quartz/QuartzPathFillStyleable.h"

#include "orvane/display/graphics/quartz/PathWrapper.h"

namespace orvane::display::graphics::quartz {

void QuartzPathFillStyleable::setFillRule(FillRule rule) {
    getPathWrapper().setIsEOFill(rule == FillRule::EvenOdd);
}

}  // namespace orvane::display::graphics::quartz
