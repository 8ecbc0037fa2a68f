#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include "platform/coregraphics/CGGeometry.h"
#include "platform/coretext/CFRange.h"

namespace orvane::platform {

class CGContext;
class CTLine;
struct NSTextFieldStyle;

// Where the characters of a text field are. Positions are bytes of the field's text, and places are
// in points, with the first line's top left corner at the origin and y pointing down; a line that
// is aligned may begin elsewhere. Immutable.
class NSTextLayout {
public:
    enum class Kind {
        Line,
        Wrapped,
        Dots,  // a line with a dot for each character
    };

    // `width` is that of the field, for wrapping and aligning.
    NSTextLayout(Kind kind, const std::string& text, const NSTextFieldStyle& style, bool isEnabled,
                 double width);
    ~NSTextLayout();

    // Of the lines, at least one.
    CGSize size() const { return size_; }
    // A rectangle without width.
    CGRect caretAt(std::size_t position) const;
    // The position between two characters that is nearest to a point.
    std::size_t positionAt(CGPoint point) const;
    // The part of the text in the line that contains a position, without its line break.
    CFRange lineAt(std::size_t position) const;
    // The rectangles that a part of the text covers.
    std::vector<CGRect> rectsOf(CFRange range) const;
    // Draws the lines that lie between two y coordinates.
    void draw(CGContext& canvas, double top, double bottom) const;

private:
    struct Line {
        std::shared_ptr<const CTLine> line;  // null for a text without characters
        CFRange range;                       // of the shown text
        CGPoint origin;
        double ascent;
        double height;
    };

    std::size_t lineIndexAt(std::size_t shown) const;
    // Between the bytes of the field's text and those of the shown text.
    std::size_t toShown(std::size_t position) const;
    std::size_t fromShown(std::size_t shown) const;

    std::string shown_;
    std::vector<std::size_t> ends_;  // for dots: the end of each character in the text
    std::vector<Line> lines_;
    CGSize size_;
};

}  // namespace orvane::platform
