#include "orvane/display/graphics/quartz/QuartzFillStyleable.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <memory_resource>
#include <vector>

#include "orvane/display/geometry/isZero.h"
#include "platform/coregraphics/CGContext.h"
#include "platform/coregraphics/CGGradient.h"

namespace orvane::display::graphics::quartz {

namespace {

// Not inlined: g++ 12 combines the conversion of two coordinates to float and back to double, and
// omits both.
[[gnu::noinline]] float toFloat(double value) {
    return static_cast<float>(value);
}

}  // namespace

void QuartzFillStyleable::setFillColor(unsigned r, unsigned g, unsigned b, unsigned a) {
    releaseGradient();
    storeFillColor(r, g, b, a);
    onFillChanged();
}

void QuartzFillStyleable::setFillColor(unsigned argb) {
    releaseGradient();
    storeFillColor(argb);
    onFillChanged();
}

void QuartzFillStyleable::setFillColor(const LinearGradient& gradient) {
    // Copied first: the argument may be this object's own gradient.
    linearGradient_ = std::make_unique<const LinearGradient>(gradient);
    const std::vector<unsigned>& colors = linearGradient_->getColors();
    const std::vector<float>& positions = linearGradient_->getPositions();

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
    onFillChanged();
}

void QuartzFillStyleable::setPattern(const Pattern&) {}

bool QuartzFillStyleable::isFillVisible() const {
    return isGradientMode() || !geometry::isZero(color_.a);
}

void QuartzFillStyleable::storeFillColor(unsigned r, unsigned g, unsigned b, unsigned a) {
    color_ = Color::fromComponents(r, g, b, a);
}

void QuartzFillStyleable::storeFillColor(unsigned argb) {
    color_ = Color::fromArgb(argb);
}

const LinearGradient& QuartzFillStyleable::getFillLinearGradient() const {
    static const LinearGradient none;
    return linearGradient_ ? *linearGradient_ : none;
}

const Pattern& QuartzFillStyleable::getFillPattern() const {
    static const Pattern none;
    return none;
}

void QuartzFillStyleable::applyStyles(platform::CGContext& canvas,
                                      const geometry::Rect<double>& bounds) const {
    if (!gradient_) {
        canvas.setRGBFillColor(color_.r, color_.g, color_.b, color_.a);
        return;
    }
    const LinearGradient& axis = *linearGradient_;
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
    canvas.clip();
    canvas.drawLinearGradient(
        *gradient_, start, end,
        platform::kCGGradientDrawsBeforeStartLocation | platform::kCGGradientDrawsAfterEndLocation);
}

void QuartzFillStyleable::releaseGradient() {
    gradient_.reset();
}

}  // namespace orvane::display::graphics::quartz
