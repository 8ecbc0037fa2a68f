#pragma once

#include "orvane/display/graphics/PathFillStyleable.h"
#include "orvane/display/graphics/quartz/QuartzFillStyleable.h"

namespace orvane::display::graphics::quartz {

class PathWrapper;

// A fill on the canvas with a rule for outlines that cross themselves. The outline stores the rule.
class QuartzPathFillStyleable : public virtual PathFillStyleable,
                                public virtual QuartzFillStyleable {
public:
    void setFillRule(FillRule rule) override;

protected:
    virtual PathWrapper& getPathWrapper() = 0;
};

}  // namespace orvane::display::graphics::quartz
