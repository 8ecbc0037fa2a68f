#pragma once

#include "orvane/display/graphics/Rect.h"
#include "orvane/display/graphics/quartz/QuartzShape.h"

namespace orvane::display::graphics::quartz {

// A rectangle on the canvas.
class QuartzRect : public virtual Rect, public virtual QuartzShape {
public:
    std::string getDescription() const override { return "QuartzRect"; }

    void set(float x, float y, float width, float height) override;
    void setX(float x) override;
    void setY(float y) override;
    void setWidth(float width) override;
    void setHeight(float height) override;
    void setRx(float rx) override;
    void setRy(float ry) override;

    // Rebuilds the outline and invalidates the object. Every setter calls it.
    void update();

private:
    float x_ = 0;
    float y_ = 0;
    float width_ = 0;
    float height_ = 0;
    float rx_ = 0;
    float ry_ = 0;
};

}  // namespace orvane::display::graphics::quartz
