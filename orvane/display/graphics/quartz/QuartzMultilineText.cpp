#include "orvane/display/graphics/quartz/QuartzMultilineText.h"

namespace orvane::display::graphics::quartz {

QuartzMultilineText::QuartzMultilineText() {
    getTextWrapper().setMultiline(true);
}

void QuartzMultilineText::setWidth(float width) {
    getTextWrapper().setMultilineMaxWidth(width);
}

void QuartzMultilineText::setLineBreaks(LineBreaks lineBreaks) {
    getTextWrapper().setKeepsLineBreaks(lineBreaks == LineBreaks::Keep);
    update();
}

void QuartzMultilineText::setAlignment(TextAlign align) {
    getTextWrapper().setAlignment(align);
}

}  // namespace orvane::display::graphics::quartz
