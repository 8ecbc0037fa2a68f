#pragma once

#include <string>

#include "orvane/commons/Export.h"

namespace orvane::display::graphics {

// Which part of a text lies at its x: its start, its middle or its end. As an alignment of
// paragraphs: the left side, the middle or the right side of the width.
enum class TextAlign { Start = 0, Center = 1, End = 2 };

// Which part of a text lies at its y: the baseline, the middle of the line, or the top of the font.
enum class AlignmentBaseline { Baseline = 0, Middle = 1, Top = 2 };

// The style of a text. Each setter measures the text again and repaints it.
class ORVANE_EXPORT TextStyleable {
public:
    virtual ~TextStyleable() = default;

    // Sets which part of the text lies at its x. Ignored by wrapped texts.
    virtual void setTextAlign(TextAlign align) = 0;
    // Sets which part of the text lies at its y. Ignored by wrapped texts.
    virtual void setAlignmentBaseline(AlignmentBaseline baseline) = 0;
    // Sets the size of the font, in object coordinates; 12 at first. 0, NaN and infinity are
    // ignored.
    virtual void setTextSize(float size) = 0;
    // Does nothing: a weight is part of a font's name ("DejaVu Sans Bold").
    virtual void setFontWeight(int weight) = 0;
    // Throws a character string ("... not implemented"): an italic style is part of a font's name.
    virtual void setItalicStyle(bool italic) = 0;
    // Underlines the text and strikes it through. A wrapped text is never struck through.
    virtual void setDecoration(bool underline, bool strikethrough) = 0;
    // Aligns the lines of a wrapped text within its width. Ignored by a text of one line.
    virtual void setAlignment(TextAlign) {}
    // Sets the font by its PostScript name, its full name or its family. A name that is not found
    // gives a default font.
    virtual void setFont(const std::string& name) = 0;
};

}  // namespace orvane::display::graphics
