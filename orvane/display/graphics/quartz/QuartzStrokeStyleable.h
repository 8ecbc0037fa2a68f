#pragma once

#include <memory>

#include "orvane/display/geometry/Rect.h"
#include "orvane/display/graphics/StrokeStyleable.h"
#include "orvane/display/graphics/quartz/Color.h"
#include "orvane/display/graphics/quartz/QuartzGradient.h"

namespace orvane::platform {
class CGContext;
}

namespace orvane::display::graphics::quartz {

class PathWrapper;

// A stroke on the canvas: a color or, once one is set, a gradient.
class ORVANE_EXPORT QuartzStrokeStyleable : public virtual StrokeStyleable {
public:
    void setStrokeColor(int r, int g, int b, int a) override;
    void setStrokeColor(unsigned argb) override;
    // Does nothing and does not repaint. Applications that set one keep the color they had.
    void setStrokeColor(const LinearGradient& gradient) override;
    void setStrokeGradient(const LinearGradient& gradient) override;
    void setStrokeGradient(const RadialGradient& gradient) override;
    void setStrokeGradient(const ConicGradient& gradient) override;

    // Whether there is a gradient or the alpha of the color is not zero. The width does not matter.
    bool isStrokeVisible() const override;

    // Store the color without leaving the gradient and without a repaint:
    void storeStrokeColor(int r, int g, int b, int a);
    void storeStrokeColor(unsigned argb);

    const Color& getStrokeColor() const { return color_; }
    const LinearGradient& getStrokeLinearGradient() const;

protected:
    // Sets the line width, the stroke color and, if there is one, the dash pattern of the canvas.
    void applyStyles(platform::CGContext& canvas) const;
    bool hasStrokeGradient() const { return gradient_ != nullptr; }
    // Paints the stroke of a path with the gradient. What is in fractions refers to `bounds`.
    void drawGradientStroke(platform::CGContext& canvas, const PathWrapper& path,
                            const geometry::Rect<double>& bounds) const;

private:
    template <typename G>
    void takeGradient(const G& gradient) {
        gradient_ = std::make_unique<const QuartzGradient>(gradient);
        onStrokeChanged();
    }

    Color color_;
    std::unique_ptr<const QuartzGradient> gradient_;
};

}  // namespace orvane::display::graphics::quartz
