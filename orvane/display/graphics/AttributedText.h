#pragma once

#include "orvane/display/graphics/Text.h"

namespace orvane::display::graphics {

// A text in which each segment has a style of its own. DisplayFactory::createAttributedText makes
// one.
//
// The segments are laid out as one text. Its lines wrap at the width that setWidth sets; without a
// width, lines end only at the line breaks of the content. A segment with an x or a y begins a new
// block at that position; a segment without either continues where the previous segment ended. The
// positions of blocks are relative to the position of the text (setX, setY), which moves all
// blocks.
//
// The first segment of each paragraph of a block aligns the paragraph's lines: within the width if
// there is one, otherwise at the block's x, like a text of one line. The baseline alignment of the
// first segment of a block says what lies at the block's y: the baseline of its first line, the
// middle of its first line, or its top.
//
// A segment without a font, or with a size of 0, takes that of the text; everything else is the
// segment's own. The setters of the text's own style apply to content that is set as a plain
// string, and to these two cases. Gradients, patterns and italics throw a character string ("...
// not implemented").
class ORVANE_EXPORT AttributedText : public virtual Text {
public:
    using Text::setContent;
    // Sets the content and its styles, segment by segment.
    void setContent(const std::vector<Segment>& segments) override = 0;

    // Returns the index of the character (a Unicode code point, not a byte) whose cell contains
    // `point`, counted through all segments. For a point left or right of the text it is the
    // nearest character of that line; for a point above or below, it is in the nearest line. 0 for
    // an empty text. `point` is in object coordinates.
    unsigned long getIndexByPoint(const geometry::Point<double>& point) override = 0;
};

}  // namespace orvane::display::graphics
