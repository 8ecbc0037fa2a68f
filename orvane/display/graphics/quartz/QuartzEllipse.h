#pragma once

#include "orvane/display/graphics/Ellipse.h"
#include "orvane/display/graphics/quartz/QuartzShape.h"

namespace orvane::display::graphics::quartz {

// An ellipse on the canvas.
class QuartzEllipse : public virtual Ellipse, public virtual QuartzShape {
public:
    std::string getDescription() const override { return "QuartzEllipse"; }

    void set(float cx, float cy, float rx, float ry) override;
    void setCx(float cx) override;
    void setCy(float cy) override;
    void setRx(float rx) override;
    void setRy(float ry) override;

    // Rebuilds the outline and invalidates the object. Every setter calls it.
    void update();

private:
    float cx_ = 0;
    float cy_ = 0;
    float rx_ = 0;
    float ry_ = 0;
};

}  // namespace orvane::display::graphics::quartz
