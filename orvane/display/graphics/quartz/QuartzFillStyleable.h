#pragma once

#include <memory>

#include "orvane/display/geometry/Rect.h"
#include "orvane/display/graphics/FillStyleable.h"
#include "orvane/display/graphics/LinearGradient.h"
#include "orvane/display/graphics/Pattern.h"
#include "orvane/display/graphics/quartz/Color.h"

namespace orvane::platform {
class CGContext;
class CGGradient;
}  // namespace orvane::platform

namespace orvane::display::graphics::quartz {

// A fill on the canvas: a solid colour, or a linear gradient while one is set.
class QuartzFillStyleable : public virtual FillStyleable {
public:
    void setFillColor(unsigned r, unsigned g, unsigned b, unsigned a) override;
    void setFillColor(unsigned argb) override;
    void setFillColor(const LinearGradient& gradient) override;
    // Does nothing, and repaints nothing: patterns do not paint here, and applications that set one
    // keep the fill they had.
    void setPattern(const Pattern& pattern) override;

    // True in gradient mode, or when the colour's alpha is not zero.
    bool isFillVisible() const override;

    // Store the colour without leaving gradient mode and without a repaint.
    void storeFillColor(unsigned r, unsigned g, unsigned b, unsigned a);
    void storeFillColor(unsigned argb);

    const Color& getFillColor() const { return color_; }
    // The last gradient that was set, also when a colour has replaced it since.
    const LinearGradient& getFillLinearGradient() const;
    const Pattern& getFillPattern() const;
    bool isGradientMode() const { return gradient_ != nullptr; }

protected:
    // Sets the fill colour; in gradient mode, clips to the canvas's path and paints the gradient.
    // That clip stays in force until the graphics state is restored. `bounds` is what an axis in
    // fractions is resolved against.
    void applyStyles(platform::CGContext& canvas, const geometry::Rect<double>& bounds) const;

    // Leaves gradient mode.
    void releaseGradient();

private:
    Color color_;
    // Null until the first gradient: most objects never have one, and it outweighs all their other
    // style.
    std::unique_ptr<const LinearGradient> linearGradient_;
    std::shared_ptr<const platform::CGGradient> gradient_;
};

}  // namespace orvane::display::graphics::quartz
