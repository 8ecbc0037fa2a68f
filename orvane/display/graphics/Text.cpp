#include "orvane/display/graphics/Text.h"

#include <sstream>

namespace orvane::display::graphics {

unsigned Text::Segment::toArgb(const std::array<unsigned char, 4>& rgba) {
    const auto [r, g, b, a] = rgba;
    return unsigned{a} << 24 | unsigned{r} << 16 | unsigned{g} << 8 | unsigned{b};
}

void Text::setContent(const std::vector<Segment>& segments) {
    if (segments.empty()) {
        setContent(std::string());
        return;
    }
    const Segment& first = segments.front();
    if (segments.size() == 1) {
        setContent(first.content);
    } else {
        std::ostringstream whole;
        for (const Segment& segment : segments) {
            whole << segment.content;
        }
        setContent(whole.str());
    }
    setX(first.x.value_or(0));
    setY(first.y.value_or(0));
    setFillColor(first.fillArgb());
    setStrokeColor(first.strokeArgb());
    setFont(first.font);
    setTextSize(first.textSize);
    setDecoration(first.isUnderlined(), first.isStruckThrough());
    setAlignmentBaseline(first.alignmentBaseline);
    setTextAlign(first.textAlign);
}

}  // namespace orvane::display::graphics
