#pragma once

#include <memory>
#include <variant>
#include <vector>

#include "orvane/display/geometry/Rect.h"
#include "orvane/display/graphics/ConicGradient.h"
#include "orvane/display/graphics/LinearGradient.h"
#include "orvane/display/graphics/RadialGradient.h"

namespace orvane::platform {
class CGContext;
class CGGradient;
}  // namespace orvane::platform

namespace orvane::display::graphics::quartz {

// A gradient of any kind, ready to be painted. Immutable.
class QuartzGradient {
public:
    // Copies the gradient:
    explicit QuartzGradient(const LinearGradient& gradient);
    explicit QuartzGradient(const RadialGradient& gradient);
    explicit QuartzGradient(const ConicGradient& gradient);

    // Fills the clip of the canvas. What is in fractions refers to `bounds`. The transformation of
    // the canvas is changed until the graphics state is restored.
    void draw(platform::CGContext& canvas, const geometry::Rect<double>& bounds) const;

    // Null for another kind.
    const LinearGradient* getLinear() const { return std::get_if<LinearGradient>(&form_); }

private:
    void takeColors(const std::vector<unsigned>& colors, const std::vector<float>& positions);
    void drawLinear(platform::CGContext& canvas, const LinearGradient& axis,
                    const geometry::Rect<double>& bounds) const;

    std::variant<LinearGradient, RadialGradient, ConicGradient> form_;
    std::shared_ptr<const platform::CGGradient> gradient_;
};

}  // namespace orvane::display::graphics::quartz
