#pragma once

#include <array>
#include <optional>
#include <string>
#include <vector>

#include "orvane/display/geometry/Size.h"
#include "orvane/display/graphics/Shape.h"
#include "orvane/display/graphics/TextStyleable.h"

namespace orvane::display::graphics {

// A run of text at a point. Content is UTF-8; what is not valid shows as replacement characters.
class ORVANE_EXPORT Text : public virtual Shape, public virtual TextStyleable {
public:
    // A piece of content with a style of its own.
    struct Segment {
        std::string font;
        std::string content;
        float textSize = 12;
        // Absent counts as 0.
        std::optional<float> x;
        std::optional<float> y;
        // Red, green, blue, alpha.
        std::array<unsigned char, 4> fillColor{0, 0, 0, 255};
        std::array<unsigned char, 4> strokeColor{0, 0, 0, 255};
        TextAlign textAlign = TextAlign::Start;
        AlignmentBaseline alignmentBaseline = AlignmentBaseline::Baseline;
        // 1 underlines, 2 strikes through, 3 does both, any other value neither.
        int decoration = 0;

        bool isUnderlined() const { return decoration == 1 || decoration == 3; }
        bool isStruckThrough() const { return decoration == 2 || decoration == 3; }
        unsigned fillArgb() const { return toArgb(fillColor); }
        unsigned strokeArgb() const { return toArgb(strokeColor); }

    private:
        static unsigned toArgb(const std::array<unsigned char, 4>& rgba);
    };

    virtual void setX(float x) = 0;
    virtual void setY(float y) = 0;
    virtual void setContent(const std::string& content) = 0;
    // The size of the text as it was last measured, in user units.
    virtual geometry::Size<double> getTextBounds() = 0;

    // For kinds that wrap; the others ignore both.
    virtual void setMultiline(bool) {}
    virtual void setWidth(float) {}

    // The content of all segments in the style of the first. Nothing at all empties the text and
    // keeps its style.
    virtual void setContent(const std::vector<Segment>& segments);

    // The number of the character under a point, for kinds that know their characters; 0 elsewhere.
    virtual unsigned long getIndexByPoint(const geometry::Point<double>&) { return 0; }

    geometry::Rect<double> getInnerBounds() override { return {}; }
};

}  // namespace orvane::display::graphics
