#pragma once

#include <array>
#include <optional>
#include <string>
#include <vector>

#include "orvane/display/geometry/Size.h"
#include "orvane/display/graphics/Shape.h"
#include "orvane/display/graphics/TextStyleable.h"

namespace orvane::display::graphics {

// What happens to the line breaks in the content of a wrapped text.
enum class LineBreaks {
    // They are removed, and the words around them are joined.
    Drop,
    // They end lines.
    Keep,
};

// A text at a point, of one line or of lines that wrap at a width; DisplayFactory::createText makes
// either. The content is UTF-8; invalid bytes show as replacement characters. A new text is black,
// 12 units large, in a default font. Gradients, patterns and italics throw a character string ("...
// not implemented").
//
// Line breaks in the content are dropped, unless setLineBreaks makes a wrapped text keep them. An
// AttributedText always keeps them.
class ORVANE_EXPORT Text : public virtual Shape, public virtual TextStyleable {
public:
    // A piece of content with a style of its own.
    struct Segment {
        // The name of a font; see setFont.
        std::string font;
        // UTF-8.
        std::string content;
        // In object coordinates.
        float textSize = 12;
        // The position; an absent coordinate counts as 0.
        std::optional<float> x;
        std::optional<float> y;
        // Red, green, blue, alpha. The stroke color of a text is never painted.
        std::array<unsigned char, 4> fillColor{0, 0, 0, 255};
        std::array<unsigned char, 4> strokeColor{0, 0, 0, 255};
        TextAlign textAlign = TextAlign::Start;
        AlignmentBaseline alignmentBaseline = AlignmentBaseline::Baseline;
        // 1 underlines, 2 strikes through, 3 does both, any other value does neither.
        int decoration = 0;

        // Whether `decoration` underlines.
        bool isUnderlined() const { return decoration == 1 || decoration == 3; }
        // Whether `decoration` strikes through.
        bool isStruckThrough() const { return decoration == 2 || decoration == 3; }
        // The fill color with alpha in bits 24 to 31, then red, green and blue.
        unsigned fillArgb() const { return toArgb(fillColor); }
        // The stroke color in the same form.
        unsigned strokeArgb() const { return toArgb(strokeColor); }

    private:
        static unsigned toArgb(const std::array<unsigned char, 4>& rgba);
    };

    Text() { setAccessibleKind(); }

    // Sets the x of the text's position, in object coordinates; setTextAlign says which part of the
    // text lies there.
    virtual void setX(float x) = 0;
    // Sets the y of the text's position, in object coordinates; setAlignmentBaseline says which
    // part of the text lies there. In a wrapped text it is always the top.
    virtual void setY(float y) = 0;
    // Sets the text. It ends at the first zero byte.
    virtual void setContent(const std::string& content) = 0;
    // Returns the content as it was set; the contents of segments follow one another.
    virtual std::string getContent() const = 0;
    // Returns the size of the laid out text, in object coordinates. It is current after every
    // setter.
    virtual geometry::Size<double> getTextBounds() = 0;

    // Ignored: createText decides whether a text wraps.
    virtual void setMultiline(bool) {}
    // Sets the width at which lines wrap, in object coordinates. Ignored by a text of one line.
    virtual void setWidth(float) {}

    // Sets the content of all segments in the style and at the position of the first one. An empty
    // vector empties the text and keeps its style.
    virtual void setContent(const std::vector<Segment>& segments);

    // Returns the index of the character at a point, for AttributedText; other texts return 0.
    virtual unsigned long getIndexByPoint(const geometry::Point<double>&) { return 0; }

    // Sets whether a wrapped text keeps the line breaks of its content. They are dropped at first.
    // Call it before setContent and setAlignment. Ignored by a text of one line and by an
    // attributed text.
    virtual void setLineBreaks(LineBreaks) {}

    geometry::Rect<double> getInnerBounds() override { return {}; }
};

}  // namespace orvane::display::graphics
