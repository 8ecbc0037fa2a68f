#pragma once

#include "orvane/display/graphics/Line.h"
#include "orvane/display/graphics/quartz/PathWrapper.h"
#include "orvane/display/graphics/quartz/QuartzDrawable.h"
#include "orvane/display/graphics/quartz/QuartzStrokeStyleable.h"

namespace orvane::display::graphics::quartz {

// A line on the canvas.
class QuartzLine : public virtual Line,
                   public virtual QuartzDrawable,
                   public virtual QuartzStrokeStyleable {
public:
    std::string getDescription() const override { return "QuartzLine"; }

    // The box of the line, widened for the stroke. Unlike the bounds of shapes it is not rounded.
    geometry::Rect<double> getBounds() override;

    void set(float x1, float y1, float x2, float y2) override;
    void setX1(float x1) override;
    void setY1(float y1) override;
    void setX2(float x2) override;
    void setY2(float y2) override;

    // Rebuilds the outline and invalidates the object. Every setter calls it.
    void update();

protected:
    void doValidate(const geometry::Rect<double>& rect) override;

private:
    PathWrapper path_;
    float x1_ = 0;
    float y1_ = 0;
    float x2_ = 0;
    float y2_ = 0;
};

}  // namespace orvane::display::graphics::quartz
