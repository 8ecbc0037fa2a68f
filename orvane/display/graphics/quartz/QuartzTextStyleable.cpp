#include "orvane/display/graphics/quartz/QuartzTextStyleable.h"

#include "orvane/display/graphics/quartz/TextWrapper.h"

namespace orvane::display::graphics::quartz {

void QuartzTextStyleable::setTextAlign(TextAlign align) {
    getTextWrapper().setTextAlign(align);
    update();
}

void QuartzTextStyleable::setAlignmentBaseline(AlignmentBaseline baseline) {
    getTextWrapper().setAlignmentBaseline(baseline);
    update();
}

void QuartzTextStyleable::setTextSize(float size) {
    getTextWrapper().setFontSize(size);
    update();
}

void QuartzTextStyleable::setFontWeight(int) {}

void QuartzTextStyleable::setItalicStyle(bool) {
    throw "QuartzTextStyleable::setItalicStyle not implemented";
}

void QuartzTextStyleable::setDecoration(bool underline, bool strikethrough) {
    getTextWrapper().setDecoration(underline, strikethrough);
    update();
}

const std::string& QuartzTextStyleable::getFont() {
    return getTextWrapper().getFontName();
}

float QuartzTextStyleable::getTextSize() {
    return getTextWrapper().getFontSize();
}

void QuartzTextStyleable::setFont(const std::string& name) {
    getTextWrapper().setFontName(name);
    update();
}

}  // namespace orvane::display::graphics::quartz
