#pragma once

#include "orvane/display/graphics/LinearGradient.h"
#include "orvane/display/graphics/StrokeStyleable.h"
#include "orvane/display/graphics/quartz/Color.h"

namespace orvane::platform {
class CGContext;
}

namespace orvane::display::graphics::quartz {

// A stroke on the canvas, which always has one color.
class ORVANE_EXPORT QuartzStrokeStyleable : public virtual StrokeStyleable {
public:
    void setStrokeColor(int r, int g, int b, int a) override;
    void setStrokeColor(unsigned argb) override;
    // Does nothing and does not repaint: a stroke cannot have a gradient. Applications that set one
    // keep the color they had.
    void setStrokeColor(const LinearGradient& gradient) override;

    // Whether the alpha of the color is not zero. The width does not matter.
    bool isStrokeVisible() const override;

    // Stores the color without a repaint.
    void storeStrokeColor(int r, int g, int b, int a);
    void storeStrokeColor(unsigned argb);

    const Color& getStrokeColor() const { return color_; }
    const LinearGradient& getStrokeLinearGradient() const;

protected:
    // Sets the line width, the stroke color and, if there is one, the dash pattern of the canvas.
    void applyStyles(platform::CGContext& canvas) const;

private:
    Color color_;
};

}  // namespace orvane::display::graphics::quartz
