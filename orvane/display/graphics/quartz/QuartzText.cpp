#include "orvane/display/graphics/quartz/QuartzText.h"

namespace orvane::display::graphics::quartz {

void QuartzText::setX(float x) {
    textWrapper_.setX(x);
    update();
}

void QuartzText::setY(float y) {
    textWrapper_.setY(y);
    update();
}

void QuartzText::setContent(const std::string& content) {
    textWrapper_.setText(content);
    update();
}

void QuartzText::setFillColor(unsigned r, unsigned g, unsigned b, unsigned a) {
    storeFillColor(r, g, b, a);
    textWrapper_.setFill(getFillColor());
    onFillChanged();
}

void QuartzText::setFillColor(unsigned argb) {
    storeFillColor(argb);
    textWrapper_.setFill(getFillColor());
    onFillChanged();
}

void QuartzText::setFillColor(const LinearGradient&) {
    throw "QuartzText::setFillColor(const LinearGradient& gradient) not implemented";
}

void QuartzText::setPattern(const Pattern&) {
    throw "QuartzText::setPattern not implemented";
}

void QuartzText::setStrokeColor(int r, int g, int b, int a) {
    storeStrokeColor(r, g, b, a);
    textWrapper_.setStroke(getStrokeColor());
    onStrokeChanged();
}

void QuartzText::setStrokeColor(unsigned argb) {
    storeStrokeColor(argb);
    textWrapper_.setStroke(getStrokeColor());
    onStrokeChanged();
}

void QuartzText::setStrokeColor(const LinearGradient&) {
    throw "QuartzText::setStrokeColor(const LinearGradient& gradient) not implemented";
}

void QuartzText::setStrokeWidth(float) {}

geometry::Rect<double> QuartzText::getBounds() {
    return textWrapper_.getBounds();
}

geometry::Size<double> QuartzText::getTextBounds() {
    return textWrapper_.getBounds().size();
}

void QuartzText::doValidate(const geometry::Rect<double>&) {
    if (platform::CGContext* const canvas = getCanvas(); canvas != nullptr) {
        textWrapper_.draw(*canvas);
    }
}

}  // namespace orvane::display::graphics::quartz
