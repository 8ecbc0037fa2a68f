#pragma once

#include <string>

#include "orvane/commons/Export.h"

namespace orvane::display::graphics {

// What stands at the given x: the text's start, middle or end. As an alignment of paragraphs: the
// left side, the middle or the right side of the lines' width.
enum class TextAlign { Start = 0, Center = 1, End = 2 };

// What stands at the given y: the baseline, the middle of the line, or the top of the font.
enum class AlignmentBaseline { Baseline = 0, Middle = 1, Top = 2 };

// What can be set in type. Each setter measures anew and repaints.
class ORVANE_EXPORT TextStyleable {
public:
    virtual ~TextStyleable() = default;

    virtual void setTextAlign(TextAlign align) = 0;
    virtual void setAlignmentBaseline(AlignmentBaseline baseline) = 0;
    // In user units; 0 leaves the size as it was.
    virtual void setTextSize(float size) = 0;
    virtual void setFontWeight(int weight) = 0;
    virtual void setItalicStyle(bool italic) = 0;
    virtual void setDecoration(bool underline, bool strikethrough) = 0;
    // The alignment of lines in a width; texts of one line have none.
    virtual void setAlignment(TextAlign) {}
    // A PostScript name, a full name or a family. One that is not found gives another real font.
    virtual void setFont(const std::string& name) = 0;
};

}  // namespace orvane::display::graphics
