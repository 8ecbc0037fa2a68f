#pragma once

#include "orvane/display/graphics/quartz/QuartzText.h"

namespace orvane::display::graphics::quartz {

// A text that wraps at a width. Its position is the top left corner of its first line, whatever the
// alignments for texts of one line say. Until a width is set it shows nothing.
class QuartzMultilineText : public virtual Text, public virtual QuartzText {
public:
    QuartzMultilineText();

    // Measures anew and does not repaint: applications set the width before the content.
    void setWidth(float width) override;
    // Aligns the content as it is, and does not repaint: set it behind the content.
    void setAlignment(TextAlign align) override;
};

}  // namespace orvane::display::graphics::quartz
