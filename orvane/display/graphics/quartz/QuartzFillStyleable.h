#pragma once

#include <memory>

#include "orvane/display/geometry/Rect.h"
#include "orvane/display/graphics/FillStyleable.h"
#include "orvane/display/graphics/Pattern.h"
#include "orvane/display/graphics/quartz/Color.h"
#include "orvane/display/graphics/quartz/QuartzGradient.h"

namespace orvane::platform {
class CGContext;
}

namespace orvane::display::graphics::quartz {

// A fill on the canvas: a color or, once one is set, a gradient.
class ORVANE_EXPORT QuartzFillStyleable : public virtual FillStyleable {
public:
    void setFillColor(unsigned r, unsigned g, unsigned b, unsigned a) override;
    void setFillColor(unsigned argb) override;
    void setFillColor(const LinearGradient& gradient) override;
    void setFillGradient(const RadialGradient& gradient) override;
    void setFillGradient(const ConicGradient& gradient) override;
    // Does nothing and does not repaint: shapes cannot paint patterns. Applications that set one
    // keep the fill they had.
    void setPattern(const Pattern& pattern) override;

    // Whether the object is in gradient mode or the alpha of its color is not zero.
    bool isFillVisible() const override;

    // Stores the color without leaving gradient mode and without a repaint.
    void storeFillColor(unsigned r, unsigned g, unsigned b, unsigned a);
    void storeFillColor(unsigned argb);

    const Color& getFillColor() const { return color_; }
    // The last linear gradient that was set, even if another fill has replaced it.
    const LinearGradient& getFillLinearGradient() const;
    const Pattern& getFillPattern() const;
    bool isGradientMode() const { return gradient_ != nullptr; }

protected:
    // Sets the fill color of the canvas. In gradient mode it clips to the path of the canvas and
    // paints the gradient; the clip remains until the graphics state is restored. An axis in
    // fractions refers to `bounds`.
    void applyStyles(platform::CGContext& canvas, const geometry::Rect<double>& bounds) const;

    // Leaves gradient mode.
    void releaseGradient();

private:
    Color color_;
    // Null until the first gradient is set: most objects never have one, and a gradient is larger
    // than the rest of their style.
    std::shared_ptr<const QuartzGradient> linearGradient_;
    std::shared_ptr<const QuartzGradient> gradient_;
};

}  // namespace orvane::display::graphics::quartz
