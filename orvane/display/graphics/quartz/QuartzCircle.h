#pragma once

#include "orvane/display/graphics/Circle.h"
#include "orvane/display/graphics/quartz/QuartzShape.h"

namespace orvane::display::graphics::quartz {

// A circle on the canvas.
class QuartzCircle : public virtual Circle, public virtual QuartzShape {
public:
    std::string getDescription() const override { return "QuartzCircle"; }

    void set(float cx, float cy, float r) override;
    void setCx(float cx) override;
    void setCy(float cy) override;
    void setR(float r) override;

    // Rebuilds the outline and invalidates the object. Every setter calls it.
    void update();

private:
    float cx_ = 0;
    float cy_ = 0;
    float r_ = 0;
};

}  // namespace orvane::display::graphics::quartz
