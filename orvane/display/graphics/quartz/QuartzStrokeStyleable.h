#pragma once

#include "orvane/display/graphics/LinearGradient.h"
#include "orvane/display/graphics/StrokeStyleable.h"
#include "orvane/display/graphics/quartz/Color.h"

namespace orvane::platform {
class CGContext;
}

namespace orvane::display::graphics::quartz {

// A stroke on the canvas, always of one colour.
class QuartzStrokeStyleable : public virtual StrokeStyleable {
public:
    void setStrokeColor(int r, int g, int b, int a) override;
    void setStrokeColor(unsigned argb) override;
    // Does nothing, and repaints nothing: a stroke has only solid colour, and applications that set
    // a gradient keep the colour they had.
    void setStrokeColor(const LinearGradient& gradient) override;

    // True when the colour's alpha is not zero. The width does not enter.
    bool isStrokeVisible() const override;

    // Store the colour without a repaint.
    void storeStrokeColor(int r, int g, int b, int a);
    void storeStrokeColor(unsigned argb);

    const Color& getStrokeColor() const { return color_; }
    const LinearGradient& getStrokeLinearGradient() const;

protected:
    // Sets line width, stroke colour and, when there is one, the dash.
    void applyStyles(platform::CGContext& canvas) const;

private:
    Color color_;
};

}  // namespace orvane::display::graphics::quartz
