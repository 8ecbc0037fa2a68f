#pragma once

#include <memory>
#include <vector>

#include "orvane/commons/Export.h"
#include "platform/coregraphics/CGGeometry.h"
#include "platform/coretext/CFMutableAttributedString.h"

namespace orvane::platform {

class CTFrame;
class CTLine;

// Breaks a text into lines of a given width. The constructor shapes the text unless another
// framesetter did so since the last change. The framesetter keeps the string as it was then, and
// the lines of the last requested width.
//
// Used on one thread at a time.
class ORVANE_EXPORT CTFramesetter {
public:
    explicit CTFramesetter(const CFMutableAttributedString& string);

    // The size of the whole text in lines of at most `width` user units: the width of the longest
    // line and the sum of ascents, descents and leadings. Zero for an empty text and unless the
    // width is positive.
    CGSize suggestFrameSize(double width) const;

    // The lines that fit into the rectangle, from its largest y down, each aligned by its
    // paragraph. Empty for a rectangle without width.
    std::shared_ptr<const CTFrame> createFrame(const CGRect& rect) const;

private:
    struct Line {
        std::shared_ptr<const CTLine> line;
        CTTextAlignment alignment;  // never Natural
    };

    const std::vector<Line>& linesOf(double width) const;

    CFMutableAttributedString string_;
    mutable double width_ = 0;
    mutable double longest_ = 0;  // of the lines
    mutable std::vector<Line> lines_;
};

}  // namespace orvane::platform
