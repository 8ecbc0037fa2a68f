#pragma once

#include "orvane/display/graphics/quartz/QuartzText.h"

namespace orvane::display::graphics::quartz {

// A text that wraps at a width. Its position is the top left corner of its first line; the
// alignments of texts of one line have no effect. Until a width is set it shows nothing.
class QuartzMultilineText : public virtual Text, public virtual QuartzText {
public:
    QuartzMultilineText();

    // Measures the text again and does not repaint: applications set the width before the content.
    void setWidth(float width) override;
    void setLineBreaks(LineBreaks lineBreaks) override;
    // Aligns the current content and does not repaint: set it after the content.
    void setAlignment(TextAlign align) override;
};

}  // namespace orvane::display::graphics::quartz
