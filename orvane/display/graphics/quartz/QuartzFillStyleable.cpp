#include "orvane/display/graphics/quartz/QuartzFillStyleable.h"

#include "orvane/display/geometry/isZero.h"
#include "platform/coregraphics/CGContext.h"

namespace orvane::display::graphics::quartz {

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
    gradient_ = std::make_shared<const QuartzGradient>(gradient);
    linearGradient_ = gradient_;
    onFillChanged();
}

void QuartzFillStyleable::setFillGradient(const RadialGradient& gradient) {
    gradient_ = std::make_shared<const QuartzGradient>(gradient);
    onFillChanged();
}

void QuartzFillStyleable::setFillGradient(const ConicGradient& gradient) {
    gradient_ = std::make_shared<const QuartzGradient>(gradient);
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
    return linearGradient_ ? *linearGradient_->getLinear() : none;
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
    canvas.clip();
    gradient_->draw(canvas, bounds);
}

void QuartzFillStyleable::releaseGradient() {
    gradient_.reset();
}

}  // namespace orvane::display::graphics::quartz
