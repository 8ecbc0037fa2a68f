#include "orvane/display/graphics/quartz/QuartzStrokeStyleable.h"

#include "orvane/display/geometry/isZero.h"
#include "orvane/display/graphics/quartz/PathWrapper.h"
#include "platform/coregraphics/CGContext.h"

namespace orvane::display::graphics::quartz {

void QuartzStrokeStyleable::setStrokeColor(int r, int g, int b, int a) {
    gradient_.reset();
    storeStrokeColor(r, g, b, a);
    onStrokeChanged();
}

void QuartzStrokeStyleable::setStrokeColor(unsigned argb) {
    gradient_.reset();
    storeStrokeColor(argb);
    onStrokeChanged();
}

void QuartzStrokeStyleable::setStrokeColor(const LinearGradient&) {}

void QuartzStrokeStyleable::setStrokeGradient(const LinearGradient& gradient) {
    takeGradient(gradient);
}

void QuartzStrokeStyleable::setStrokeGradient(const RadialGradient& gradient) {
    takeGradient(gradient);
}

void QuartzStrokeStyleable::setStrokeGradient(const ConicGradient& gradient) {
    takeGradient(gradient);
}

bool QuartzStrokeStyleable::isStrokeVisible() const {
    return gradient_ || !geometry::isZero(color_.a);
}

void QuartzStrokeStyleable::storeStrokeColor(int r, int g, int b, int a) {
    color_ = Color::fromComponents(r, g, b, a);
}

void QuartzStrokeStyleable::storeStrokeColor(unsigned argb) {
    color_ = Color::fromArgb(argb);
}

const LinearGradient& QuartzStrokeStyleable::getStrokeLinearGradient() const {
    static const LinearGradient none;
    return none;
}

void QuartzStrokeStyleable::drawGradientStroke(platform::CGContext& canvas, const PathWrapper& path,
                                               const geometry::Rect<double>& bounds) const {
    canvas.saveGState();
    applyStyles(canvas);
    path.beforeDraw(canvas);
    canvas.replacePathWithStrokedPath();
    canvas.clip();
    gradient_->draw(canvas, bounds);
    canvas.restoreGState();
}

void QuartzStrokeStyleable::applyStyles(platform::CGContext& canvas) const {
    canvas.setLineWidth(getStrokeWidth());
    canvas.setRGBStrokeColor(color_.r, color_.g, color_.b, color_.a);
    if (!getStrokeDashArray().empty()) {
        canvas.setLineDash(getStrokeDashOffset(), getStrokeDashArray());
    }
}

}  // namespace orvane::display::graphics::quartz
