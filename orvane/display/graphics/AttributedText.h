#pragma once

#include "orvane/display/graphics/Text.h"

namespace orvane::display::graphics {

// A text whose segments each keep their own style. See createAttributedText of DisplayFactory.
//
// The segments are laid out as one text. It wraps at the width that setWidth gives; without one
// only line breaks in the content end a line. A segment with an x or a y begins a new block there;
// one without goes on where the segment before it ended. Positions are relative to that of the text
// (setX, setY), which moves all blocks alike.
//
// In a block, the alignment of the first segment of each paragraph aligns its lines: in the width,
// if there is one, and otherwise at the block's x, as with a text of one line. The baseline
// alignment of a block's first segment says what stands at the block's y: the baseline of its first
// line, the middle of its first line, or its top.
//
// A segment without a font, or of size 0, takes the text's own. Everything else is the segment's.
// The setters of the text's own style serve content set as a plain string, and these two cases.
class ORVANE_EXPORT AttributedText : public virtual Text {
public:
    using Text::setContent;
    void setContent(const std::vector<Segment>& segments) override = 0;

    // The number of the character (of Unicode, not of bytes) whose cell the point lies in, counted
    // through all segments; for a point beside the text, of the nearest in its line, and for one
    // above or below, in the nearest line. 0 for an empty text. `point` is in the object's
    // coordinates.
    unsigned long getIndexByPoint(const geometry::Point<double>& point) override = 0;
};

}  // namespace orvane::display::graphics
