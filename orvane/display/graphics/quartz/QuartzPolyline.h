#pragma once

#include "orvane/display/graphics/Polyline.h"
#include "orvane/display/graphics/quartz/QuartzPathFillStyleable.h"
#include "orvane/display/graphics/quartz/QuartzShape.h"

namespace orvane::display::graphics::quartz {

// A polyline on the canvas. The outline is the only record of the points.
class QuartzPolyline : public virtual Polyline,
                       public virtual QuartzShape,
                       public virtual QuartzPathFillStyleable {
public:
    std::string getDescription() const override { return "QuartzPolyline"; }

    void set(const std::vector<float>& points, bool closed) override;

protected:
    PathWrapper& getPathWrapper() override { return path_; }
};

}  // namespace orvane::display::graphics::quartz
