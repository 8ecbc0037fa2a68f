#pragma once

#include "orvane/display/graphics/Container.h"
#include "orvane/display/graphics/quartz/QuartzDrawable.h"

namespace orvane::display::graphics::quartz {

// A group on the canvas.
class QuartzContainer : public virtual Container, public virtual QuartzDrawable {
public:
    std::string getDescription() const override { return "QuartzContainer"; }
};

}  // namespace orvane::display::graphics::quartz
