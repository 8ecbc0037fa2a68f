#pragma once

#include <memory>
#include <vector>

#include "orvane/commons/Export.h"
#include "platform/coregraphics/CGGeometry.h"
#include "platform/coretext/CFMutableAttributedString.h"

namespace orvane::platform {

class CTFrame;
class CTLine;

// Breaks a text into lines of a width. The text is shaped when the framesetter is made, unless
// another one has done so since the text last changed. It keeps the string as it stands at that
// time, and the lines of the width that was asked for last.
//
// Used on one thread at a time.
class ORVANE_EXPORT CTFramesetter {
public:
    explicit CTFramesetter(const CFMutableAttributedString& string);

    // The size of the whole text in lines of at most `width` user units: that of the longest line
    // and the sum of ascents, descents and leadings. Empty for a width that is not positive and for
    // an empty text.
    CGSize suggestFrameSize(double width) const;

    // The lines that fit into the rectangle, from its far y edge on, each aligned in it as its
    // paragraph says. Empty for a rectangle without width.
    std::shared_ptr<const CTFrame> createFrame(const CGRect& rect) const;

private:
    struct Line {
        std::shared_ptr<const CTLine> line;
        CTTextAlignment alignment;  // never natural
    };

    const std::vector<Line>& linesOf(double width) const;

    CFMutableAttributedString string_;
    mutable double width_ = 0;
    mutable std::vector<Line> lines_;
};

}  // namespace orvane::platform
