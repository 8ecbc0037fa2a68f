#pragma once

#include "orvane/display/graphics/TextStyleable.h"

namespace orvane::display::graphics::quartz {

class TextWrapper;

// Passes every style to a text wrapper and repaints. Weights and italics are fonts of their own:
// set the font "DejaVu Sans Bold".
class ORVANE_EXPORT QuartzTextStyleable : public virtual TextStyleable {
public:
    void setTextAlign(TextAlign align) override;
    void setAlignmentBaseline(AlignmentBaseline baseline) override;
    void setTextSize(float size) override;
    // Does nothing: applications that set a weight keep the font they had.
    void setFontWeight(int weight) override;
    // Throws a character string.
    void setItalicStyle(bool italic) override;
    void setDecoration(bool underline, bool strikethrough) override;
    void setFont(const std::string& name) override;

    // What was set; the name is empty for the default font.
    const std::string& getFont();
    float getTextSize();

protected:
    virtual TextWrapper& getTextWrapper() = 0;
    virtual void update() = 0;
};

}  // namespace orvane::display::graphics::quartz
