#include "orvane/display/graphics/quartz/QuartzGradient.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <memory_resource>

#include "orvane/display/graphics/quartz/Color.h"
#include "platform/coregraphics/CGContext.h"
#include "platform/coregraphics/CGGradient.h"

namespace orvane::display::graphics::quartz {

namespace {

constexpr unsigned kBothEnds =
    platform::kCGGradientDrawsBeforeStartLocation | platform::kCGGradientDrawsAfterEndLocation;

// Not inlined: g++ 12 combines the conversion of two coordinates to float and back to double, and
// omits both.
[[gnu::noinline]] float toFloat(double value) {
    return static_cast<float>(value);
}

}  // namespace

QuartzGradient::QuartzGradient(const LinearGradient& gradient) : form_(gradient) {
    takeColors(gradient.getColors(), gradient.getPositions());
}

QuartzGradient::QuartzGradient(const RadialGradient& gradient) : form_(gradient) {
    takeColors(gradient.getColors(), gradient.getPositions());
}

QuartzGradient::QuartzGradient(const ConicGradient& gradient) : form_(gradient) {
    takeColors(gradient.getColors(), gradient.getPositions());
}

void QuartzGradient::takeColors(const std::vector<unsigned>& colors,
                                const std::vector<float>& positions) {
    // The usual few stops need no allocation.
    std::array<std::byte, 1024> stack;
    std::pmr::monotonic_buffer_resource arena(stack.data(), stack.size());
    std::pmr::vector<double> components(&arena);
    components.reserve(4 * colors.size());
    for (const unsigned argb : colors) {
        const Color color = Color::fromArgb(argb);
        components.insert(components.end(), {color.r, color.g, color.b, color.a});
    }
    const auto located = std::min(colors.size(), positions.size());
    const std::pmr::vector<double> locations(
        positions.begin(), positions.begin() + static_cast<std::ptrdiff_t>(located), &arena);
    gradient_ = platform::CGGradient::createWithColorComponents(components, locations);
}

void QuartzGradient::drawLinear(platform::CGContext& canvas, const LinearGradient& axis,
                                const geometry::Rect<double>& bounds) const {
    platform::CGPoint start{axis.getX1().value, axis.getY1().value};
    platform::CGPoint end{axis.getX2().value, axis.getY2().value};
    if (!axis.hasBounds()) {
        // The bounds include the stroke, so the axis runs across the widened box.
        const auto resolve = [&bounds](const platform::CGPoint& fraction) {
            return platform::CGPoint{toFloat(bounds.x + bounds.width * fraction.x),
                                     toFloat(bounds.y + bounds.height * fraction.y)};
        };
        start = resolve(start);
        end = resolve(end);
    }
    canvas.drawLinearGradient(*gradient_, start, end, kBothEnds);
}

void QuartzGradient::draw(platform::CGContext& canvas, const geometry::Rect<double>& bounds) const {
    const auto enterSpaceOf = [&](const CenteredGradient& gradient) {
        if (!gradient.isUserSpace()) {
            canvas.concatCTM({bounds.width, 0, 0, bounds.height, bounds.x, bounds.y});
        }
    };
    if (const auto* const linear = std::get_if<LinearGradient>(&form_)) {
        drawLinear(canvas, *linear, bounds);
    } else if (const auto* const radial = std::get_if<RadialGradient>(&form_)) {
        enterSpaceOf(*radial);
        canvas.drawRadialGradient(*gradient_, {radial->getFocusX(), radial->getFocusY()}, 0,
                                  {radial->getCenterX(), radial->getCenterY()}, radial->getRadius(),
                                  kBothEnds);
    } else if (const auto* const conic = std::get_if<ConicGradient>(&form_)) {
        enterSpaceOf(*conic);
        canvas.drawConicGradient(*gradient_, {conic->getCenterX(), conic->getCenterY()},
                                 conic->getAngle());
    }
}

}  // namespace orvane::display::graphics::quartz
